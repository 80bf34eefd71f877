#include "sampling/sampleranalysis.h"

#include "base/log.h"
#include "model/metasampler.h"
#include "sampling/imagesource.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <list>
#include <mutex>
#include <tuple>

namespace
{
constexpr size_t kCacheEntries = 8;
// Pictures above this many pixels are too large for Qt to decode whole.
constexpr qint64 kLargePixels = 32 * 1024 * 1024;

struct CacheKey
{
    QString path;
    QDateTime modified;
    qint64 bytes = 0;
    QSize output;
    float threshold = 0;
    bool useColor = false;

    bool operator==(const CacheKey& o) const
    {
        return path == o.path && modified == o.modified && bytes == o.bytes && output == o.output &&
               threshold == o.threshold && useColor == o.useColor;
    }
};

std::mutex s_cacheMutex;
std::list<std::pair<CacheKey, std::shared_ptr<const SamplerAnalysis>>> s_cache; // most recent first

float usableThreshold(float threshold)
{
    return std::isfinite(threshold) ? std::clamp(threshold, 0.0f, 1.0f) : 0.5f;
}

void trace(SamplerAnalysis& analysis)
{
    const SamplerPixels& pixels = *analysis.pixels;
    analysis.alphaRings = traceOutlines(pixels.alpha(), analysis.threshold);
    analysis.tracedRings =
        analysis.useColor ? traceOutlines(pixels.colorEdgeFill(analysis.threshold), 0.5f) : analysis.alphaRings;
}
} // namespace

Vec2 SamplerAnalysis::pixelSize(float height) const
{
    if (!pixels || fileSize.isEmpty())
        return {};
    const float aspect = float(fileSize.width()) / float(fileSize.height());
    return {height * aspect / float(pixels->width()), height / float(pixels->height())};
}

Vec2 SamplerAnalysis::toFrame(Vec2 pixel, float height) const
{
    if (!pixels)
        return {};
    const Vec2 size = pixelSize(height);
    return {(pixel.x - 0.5f * float(pixels->width())) * size.x, (0.5f * float(pixels->height()) - pixel.y) * size.y};
}

std::vector<SamplerOutline> SamplerAnalysis::toFrame(const std::vector<TracedRing>& rings, float height) const
{
    std::vector<SamplerOutline> outlines;
    outlines.reserve(rings.size());
    for (const TracedRing& ring : rings) {
        SamplerOutline outline;
        outline.hole = ring.hole;
        outline.parent = ring.parent;
        // Turning y up mirrors the ring; reversing keeps solid outlines counter-clockwise.
        outline.points.reserve(ring.points.size());
        for (auto it = ring.points.rbegin(); it != ring.points.rend(); ++it)
            outline.points.push_back(toFrame(*it, height));
        outlines.push_back(std::move(outline));
    }
    return outlines;
}

std::shared_ptr<const SamplerAnalysis> analyseImage(const QImage& image, QSize output, float threshold, bool useColor)
{
    auto analysis = std::make_shared<SamplerAnalysis>();
    analysis->threshold = usableThreshold(threshold);
    analysis->useColor = useColor;
    if (image.isNull()) {
        analysis->error = QStringLiteral("no image");
        return analysis;
    }
    analysis->fileSize = image.size();
    const QSize size = output.isValid() ? output : samplerOutputSize(image.size(), 0, 0);
    analysis->pixels = std::make_shared<SamplerPixels>(image, size);
    trace(*analysis);
    return analysis;
}

std::shared_ptr<const SamplerAnalysis> analyseSampler(const MetaSampler& sampler, const QString& sceneFilePath)
{
    auto failed = [&](const QString& path, const QString& why) {
        auto analysis = std::make_shared<SamplerAnalysis>();
        analysis->path = path;
        analysis->error = why;
        analysis->threshold = usableThreshold(sampler.alphaEdgeThreshold);
        analysis->useColor = sampler.useColor;
        plaxLog(LOG_WARNING, QStringLiteral("Sampler '%1' could not read image file '%2': %3").arg(sampler.name(), path, why));
        return analysis;
    };

    const QString path = resolveSceneFile(sampler.file, sceneFilePath);
    if (path.isEmpty())
        return failed(path, QStringLiteral("the sampler has no image file"));
    const QFileInfo info(path);
    if (!info.isFile())
        return failed(path, QStringLiteral("file not found"));
    QString error;
    const QSize fileSize = readImageSize(path, &error);
    if (!fileSize.isValid())
        return failed(path, error);

    CacheKey key{path, info.lastModified(), info.size(), samplerOutputSize(fileSize, sampler.outputWidth, sampler.outputHeight),
                 usableThreshold(sampler.alphaEdgeThreshold), sampler.useColor};
    {
        std::lock_guard<std::mutex> lock(s_cacheMutex);
        for (auto it = s_cache.begin(); it != s_cache.end(); ++it) {
            if (it->first == key) {
                s_cache.splice(s_cache.begin(), s_cache, it);
                return s_cache.front().second;
            }
        }
    }

    QImage sampled = readImageScaled(path, key.output, &error);
    if (sampled.isNull()) {
        if (qint64(fileSize.width()) * fileSize.height() > kLargePixels)
            error += QStringLiteral(" (%1 x %2 pixels: this file cannot be read at a smaller size and is too large to "
                                    "read whole)")
                         .arg(fileSize.width())
                         .arg(fileSize.height());
        return failed(path, error);
    }
    auto analysis = std::make_shared<SamplerAnalysis>();
    analysis->path = path;
    analysis->fileSize = fileSize;
    analysis->threshold = key.threshold;
    analysis->useColor = key.useColor;
    analysis->pixels = std::make_shared<SamplerPixels>(std::move(sampled));
    trace(*analysis);

    std::lock_guard<std::mutex> lock(s_cacheMutex);
    s_cache.emplace_front(key, analysis);
    if (s_cache.size() > kCacheEntries)
        s_cache.pop_back();
    return analysis;
}

void clearSamplerAnalysisCache()
{
    std::lock_guard<std::mutex> lock(s_cacheMutex);
    s_cache.clear();
}
