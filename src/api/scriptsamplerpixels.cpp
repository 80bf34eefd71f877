#include "api/scriptsamplerpixels.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "base/version.h"
#include "model/metaworld.h"
#include "sampling/imagesource.h"
#include "sampling/sampleranalysis.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

#include <algorithm>
#include <functional>

using namespace AngelScript;

namespace SamplerPixelApi
{
namespace
{
QString sceneFile()
{
    ScriptDocument* doc = ScriptApi::document();
    return doc ? doc->filePath() : QString();
}

std::shared_ptr<const SamplerAnalysis> analysisOf(ScriptSampler* self, MetaSampler** samplerOut = nullptr)
{
    MetaSampler* sampler = ScriptApi::use(*self);
    if (!sampler)
        return nullptr;
    if (samplerOut)
        *samplerOut = sampler;
    return analyseSampler(*sampler, sceneFile());
}

QString targetFile(const MetaSampler& sampler, const std::string& given, const char* map)
{
    if (!given.empty())
        return resolveSceneFile(QString::fromStdString(given), sceneFile());
    const QString base = sampler.name().isEmpty() ? QStringLiteral("sampler%1").arg(sampler.id()) : sampler.name();
    const QString folder = sceneFile().isEmpty() ? QDir::currentPath() : QFileInfo(sceneFile()).absolutePath();
    return QDir(folder).filePath(QStringLiteral("%1-%2.png").arg(base, QLatin1String(map)));
}

void write(ScriptSampler* self, const std::string& given, const char* map,
           const std::function<QImage(const SamplerAnalysis&)>& picture)
{
    if (Version::kTrial) {
        plaxLog(LOG_ERROR, "Writing files in plaxscript is disabled in the trial version.");
        return;
    }
    MetaSampler* sampler = nullptr;
    std::shared_ptr<const SamplerAnalysis> analysis = analysisOf(self, &sampler);
    if (!analysis || !analysis->pixels)
        return;
    const QString file = targetFile(*sampler, given, map);
    QImageWriter writer(file, "png");
    if (!writer.write(picture(*analysis)))
        plaxLog(LOG_WARNING, QStringLiteral("Could not write file '%1': %2").arg(file, writer.errorString()));
}
} // namespace

void writeToFile(ScriptSampler* self) { writeToFileNamed(self, {}); }
void writeToFileNamed(ScriptSampler* self, const std::string& file)
{
    write(self, file, "sampled", [](const SamplerAnalysis& a) { return a.pixels->image(); });
}
void writeAlpha(ScriptSampler* self) { writeAlphaNamed(self, {}); }
void writeAlphaNamed(ScriptSampler* self, const std::string& file)
{
    write(self, file, "alpha", [](const SamplerAnalysis& a) { return a.pixels->alphaImage(); });
}
void writeAlphaEdge(ScriptSampler* self) { writeAlphaEdgeNamed(self, {}); }
void writeAlphaEdgeNamed(ScriptSampler* self, const std::string& file)
{
    write(self, file, "alphaEdge", [](const SamplerAnalysis& a) { return a.pixels->alphaEdgeImage(a.threshold); });
}
void writeColorEdgeSobel(ScriptSampler* self) { writeColorEdgeSobelNamed(self, {}); }
void writeColorEdgeSobelNamed(ScriptSampler* self, const std::string& file)
{
    write(self, file, "colorEdgeSobel", [](const SamplerAnalysis& a) { return a.pixels->sobelImage(); });
}
void writeColorEdgeLocalMaxima(ScriptSampler* self) { writeColorEdgeLocalMaximaNamed(self, {}); }
void writeColorEdgeLocalMaximaNamed(ScriptSampler* self, const std::string& file)
{
    write(self, file, "colorEdgeLocalMaxima", [](const SamplerAnalysis& a) { return a.pixels->localMaximaImage(); });
}

ScriptAabb getAlphaEdgeAABB(ScriptSampler* self)
{
    MetaSampler* sampler = nullptr;
    std::shared_ptr<const SamplerAnalysis> analysis = analysisOf(self, &sampler);
    ScriptAabb box;
    bool any = false;
    if (!analysis)
        return box;
    for (const SamplerOutline& outline : analysis->toFrame(analysis->alphaRings, sampler->height)) {
        for (const Vec2& p : outline.points) {
            if (!any) {
                box = {p.x, p.x, p.y, p.y};
                any = true;
            }
            box.lx = std::min(box.lx, p.x);
            box.ux = std::max(box.ux, p.x);
            box.ly = std::min(box.ly, p.y);
            box.uy = std::max(box.uy, p.y);
        }
    }
    return box;
}

CScriptArray* getAlphaEdgePathSeedPoints(ScriptSampler* self)
{
    CScriptArray* points = ScriptApi::newArray("array<vec2>");
    MetaSampler* sampler = nullptr;
    std::shared_ptr<const SamplerAnalysis> analysis = analysisOf(self, &sampler);
    if (!points || !analysis)
        return points;
    for (const TracedRing& ring : analysis->alphaRings) {
        if (ring.points.empty())
            continue;
        ScriptVec2 p = ScriptApi::toScript(analysis->toFrame(ring.points.front(), sampler->height));
        ScriptApi::appendToArray(*points, &p);
    }
    return points;
}
} // namespace SamplerPixelApi
