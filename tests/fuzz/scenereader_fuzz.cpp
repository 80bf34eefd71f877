// The scene reader on any bytes: it never crashes, and a scene that loads
// also resaves, and the resaved file loads to the same model (resaving it
// again gives the same bytes).
#include "fuzzsupport.h"

#include "io/sceneloader.h"
#include "model/metaworld.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path =
        writeScratchFile(QStringLiteral("input.json"), QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    std::unique_ptr<MetaWorld> scene = loadSceneFile(path);
    if (!scene)
        return 0;
    const QByteArray first = savedSceneBytes(*scene, QStringLiteral("first.plax"));
    if (first.isEmpty())
        fuzzFailure("a loaded scene could not be saved");
    std::unique_ptr<MetaWorld> again = loadSceneFile(QDir(fuzzScratchFolder()).filePath(QStringLiteral("first.plax")));
    if (!again)
        fuzzFailure("a resaved scene does not load");
    if (savedSceneBytes(*again, QStringLiteral("second.plax")) != first)
        fuzzFailure("the resaved scene loads to a different model");
    return 0;
}
