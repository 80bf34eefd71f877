// The raw-info reader on any JSON: a world it builds saves as a scene that
// loads to the same model.
#include "fuzzsupport.h"

#include "io/jsontext.h"
#include "io/rawinfoscene.h"
#include "io/sceneloader.h"
#include "model/metaworld.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzScratchFolder();
    rapidjson::Document document;
    if (!parseJson(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), &document, nullptr) ||
        !document.IsObject())
        return 0;
    std::unique_ptr<MetaWorld> scene = createWorldFromRawInfo(document, QStringLiteral("input.json"));
    if (!scene)
        return 0;
    const QByteArray first = savedSceneBytes(*scene, QStringLiteral("raw-first.plax"));
    if (first.isEmpty())
        fuzzFailure("a world read from raw info could not be saved");
    std::unique_ptr<MetaWorld> again =
        loadSceneFile(QDir(fuzzScratchFolder()).filePath(QStringLiteral("raw-first.plax")));
    if (!again)
        fuzzFailure("the scene saved from raw info does not load");
    if (savedSceneBytes(*again, QStringLiteral("raw-second.plax")) != first)
        fuzzFailure("the scene saved from raw info loads to a different model");
    return 0;
}
