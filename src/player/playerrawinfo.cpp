#include "player/playerrawinfo.h"

#include "document/editordocument.h"
#include "io/b2djson.h"
#include "io/exportfilter.h"
#include "io/jsontext.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "physics/worldbuild.h"
#include "script/exportfilterscript.h"

PlayerRawInfo writePlayerRawInfo(const EditorDocument& document)
{
    PlayerRawInfo result;
    const MetaWorld& scene = document.world();
    const std::unique_ptr<ExpandedWorld> expanded = buildExportWorld(document);
    const WorldBuild& build = expanded->build();

    // What plays is what exports: the scene's excluded properties and its
    // export filter script leave out what an export would. The script runs
    // in the document's engine; the scene itself is not changed.
    ExportPropertyFilter filter(scene.excludedJsonExportProperties);
    ExportFilterSession script(const_cast<EditorDocument&>(document));
    if (script.isActive())
        filter.setItemFilter(&script);
    const rapidjson::Document json = b2dJson(exportStyle(scene), filter).write(build, scene);

    // Body records in the order written: the filter's decisions are asked
    // once per item and export, so this repeats what the writer did.
    result.sceneBodyIds.reserve(build.bodies().size());
    for (const BuiltBody& body : build.bodies()) {
        if (filter.allowsItem(body.source))
            result.sceneBodyIds.push_back(body.source && body.source->world() == &scene ? body.source->id() : 0);
    }
    // Compact text: layout never changes what is read back.
    result.text = jsonToText(json, false);
    if (result.text.isEmpty())
        result.error = QStringLiteral("The scene could not be written as raw info (a value is not finite).");
    return result;
}
