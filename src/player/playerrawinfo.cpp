#include "player/playerrawinfo.h"

#include "document/editordocument.h"
#include "io/b2djson.h"
#include "io/exportfilter.h"
#include "io/jsontext.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "physics/worldbuild.h"

PlayerRawInfo writePlayerRawInfo(const EditorDocument& document)
{
    PlayerRawInfo result;
    const MetaWorld& scene = document.world();
    const std::unique_ptr<ExpandedWorld> expanded = buildExportWorld(document);
    const WorldBuild& build = expanded->build();

    result.sceneBodyIds.reserve(build.bodies().size());
    for (const BuiltBody& body : build.bodies())
        result.sceneBodyIds.push_back(body.source && body.source->world() == &scene ? body.source->id() : 0);

    const ExportPropertyFilter filter(scene.excludedJsonExportProperties);
    const rapidjson::Document json = b2dJson(exportStyle(scene), filter).write(build, scene);
    // Compact text: layout never changes what is read back.
    result.text = jsonToText(json, false);
    if (result.text.isEmpty())
        result.error = QStringLiteral("The scene could not be written as raw info (a value is not finite).");
    return result;
}
