#include "edits/samplerpaths.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scriptpath.h"
#include "api/scripttransform.h"
#include "base/log.h"
#include "editing/scriptcommand.h"
#include "model/metaworld.h"
#include "sampling/sampleranalysis.h"
#include "sampling/tracedpaths.h"

#include <QCoreApplication>

namespace SamplerPaths
{
bool traceIntoPaths(ScriptDocument& document, ItemId samplerId, int maxPoints, int minAngle)
{
    MetaSampler* sampler = document.world().findSampler(samplerId);
    if (!sampler) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not find sampler of id %1 to trace").arg(samplerId));
        return false;
    }
    const std::shared_ptr<const SamplerAnalysis> analysis = analyseSampler(*sampler, document.filePath());
    if (!analysis->pixels)
        return false;
    const std::vector<MetaPath> paths =
        pathsFromOutlines(analysis->toFrame(analysis->tracedRings, sampler->height), maxPoints, minAngle);

    // The record of the sampler as it will be: the same with the new paths.
    std::vector<MetaPath> old = std::move(sampler->paths);
    sampler->paths = paths;
    const QString text = ItemOps::recordText(*sampler);
    sampler->paths = std::move(old);

    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), QCoreApplication::translate("SamplerPaths", "trace outline of sampler"));
    const bool selected = ScriptApi::isSelected(*sampler);
    ItemOps::deleteSampler(*sampler);
    MetaSampler* added = ItemOps::addSampler(samplerId, text);
    if (added && selected)
        ScriptApi::setSelected(*added, true);
    return added != nullptr;
}

PathFixtures fixturesFromPaths(ScriptDocument& document, const std::vector<ItemId>& samplerIds, ItemId fallbackBody)
{
    PathFixtures result;
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), QCoreApplication::translate("SamplerPaths", "fixtures from paths"));
    for (ItemId id : samplerIds) {
        const MetaSampler* sampler = document.world().findSampler(id);
        if (!sampler)
            continue;
        const MetaBody* body = sampler->body ? sampler->body
                               : fallbackBody ? document.world().findBody(fallbackBody)
                                              : nullptr;
        if (!body) {
            result.samplersWithoutBody.append(sampler->name());
            continue;
        }
        for (size_t p = 0; p < sampler->paths.size(); ++p) {
            const ScriptFixture fixture =
                TransformApi::createFixtureFromPath(ScriptApi::bodyHandle(body), PathApi::getPath(int(id), int(p)));
            result.made += fixture.valid ? 1 : 0;
        }
    }
    return result;
}
} // namespace SamplerPaths
