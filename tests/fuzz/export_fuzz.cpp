// Load then export: any scene that loads builds a world and exports raw info
// that parses, holds one record per built body and joint, and reads back.
#include "fuzzsupport.h"

#include "io/exportfilter.h"
#include "io/jsontext.h"
#include "io/rawinfoexport.h"
#include "io/rawinfoscene.h"
#include "io/sceneloader.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path =
        writeScratchFile(QStringLiteral("export.json"), QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    std::unique_ptr<MetaWorld> scene = loadSceneFile(path);
    if (!scene)
        return 0;
    WorldBuild build(*scene, DecompositionMethod::Bayazit);
    build.addScene(*scene);
    const QByteArray text = rawInfoText(build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties));
    if (text.isEmpty())
        fuzzFailure("a loaded scene could not be exported");
    rapidjson::Document raw;
    if (!parseJson(text, &raw, nullptr) || !raw.IsObject())
        fuzzFailure("the export is not JSON");
    const auto bodies = raw.FindMember("body");
    const auto joints = raw.FindMember("joint");
    if (bodies == raw.MemberEnd() || !bodies->value.IsArray() || bodies->value.Size() != build.bodies().size())
        fuzzFailure("the export does not hold one record per body");
    if (joints == raw.MemberEnd() || !joints->value.IsArray() || joints->value.Size() != build.joints().size())
        fuzzFailure("the export does not hold one record per joint");
    if (!createWorldFromRawInfo(raw, QStringLiteral("export.json")))
        fuzzFailure("the export cannot be read back");
    return 0;
}
