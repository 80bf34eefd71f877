#include "objects/documentexport.h"

#include "base/log.h"
#include "docscripts/exportfilterscript.h"
#include "document/editordocument.h"
#include "hooks/exporthooks.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "physics/worldbuild.h"

bool exportDocument(EditorDocument& document, ExportKind kind, const QString& path)
{
    ExportHooks::run(document, ExportHookStage::Before, path);
    bool written = false;
    {
        const std::unique_ptr<ExpandedWorld> expanded = buildExportWorld(document);
        if (document.leavesSceneToProcessExit())
            expanded->leaveWorldToProcessExit();
        WorldBuild& build = expanded->build();
        if (kind == ExportKind::RawInfo) {
            const MetaWorld& scene = document.world();
            ExportPropertyFilter filter(scene.excludedJsonExportProperties);
            // It holds the script engine while the writer asks it.
            ExportFilterSession script(document);
            if (script.isActive())
                filter.setItemFilter(&script);
            written = writeRawInfoFile(build, scene, filter, path);
        } else {
            written = writeSourceCodeFile(build, path);
        }
    }
    // Hooks after a failed write would act on a file that is not there.
    if (written)
        ExportHooks::run(document, ExportHookStage::After, path);
    return written;
}
