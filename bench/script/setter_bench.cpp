// Recorded setter calls: one script making 100,000 changes on the large
// scene, then undoing and redoing them (alternately, five times each; the
// medians are printed, with the goal of a redo no slower than its undo).
#include "bench.h"
#include "largescene.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptlog.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <QTemporaryDir>

#include <cstdio>
#include <vector>

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
    std::vector<double> undos, redos;
    for (int i = 0; i < 5; ++i) {
        undos.push_back(timeSeconds([&] { document.undoStack().undo(); }));
        redos.push_back(timeSeconds([&] { document.undoStack().redo(); }));
    }
    const double undoSeconds = median(undos), redoSeconds = median(redos);
    std::printf("100,000 recorded setAngle calls on %d bodies: run %.2f s, undo %.3f s, redo %.3f s (medians of 5)  "
                "goal redo <= undo: %s%s\n",
                kLargeSceneBodies, runSeconds, undoSeconds, redoSeconds, redoSeconds <= undoSeconds ? "met" : "MISSED",
                ok ? "" : " (the script failed)");
    ScriptLog::setBackupsRoot(QString());
}

const bool registered = registerBench("script setters", run);
} // namespace
