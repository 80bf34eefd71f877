// Recorded setter calls: one script making 100,000 changes on the large
// scene, then undoing and redoing them.
#include "bench.h"
#include "largescene.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptlog.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <QTemporaryDir>

#include <cstdio>

namespace
{
const char* const kScript = R"(
body[] bodies = ab();
for (int round = 0; round < 10; round++)
    for (uint i = 0; i < bodies.length(); i++)
        bodies[i].setAngle(round + i * 0.001);
)";

void run()
{
    QTemporaryDir dir;
    ScriptLog::setBackupsRoot(dir.filePath("backups"));
    const QString path = dir.filePath("large.plax");
    if (!saveSceneFile(*makeLargeScene(false), path))
        return;
    EditorDocument document;
    if (!document.load(path))
        return;
    bool ok = false;
    const double runSeconds = timeSeconds([&] { ok = document.scripting().runOneShot(kScript, QString()); });
    const double undoSeconds = timeSeconds([&] { document.undoStack().undo(); });
    const double redoSeconds = timeSeconds([&] { document.undoStack().redo(); });
    std::printf("100,000 recorded setAngle calls on %d bodies: run %.2f s, undo %.2f s, redo %.2f s%s\n",
                kLargeSceneBodies, runSeconds, undoSeconds, redoSeconds, ok ? "" : " (the script failed)");
    ScriptLog::setBackupsRoot(QString());
}

const bool registered = registerBench("script setters", run);
} // namespace
