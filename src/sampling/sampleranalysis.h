#pragma once

#include "base/types.h"
#include "sampling/outlinetracer.h"
#include "sampling/samplerpixels.h"

#include <QImage>
#include <QString>

#include <memory>
#include <vector>

class MetaSampler;

/// An outline of a sampler's picture in the sampler's frame (world units,
/// see samplerframe.h): solid outlines counter-clockwise, holes clockwise.
struct SamplerOutline
{
    std::vector<Vec2> points;
    bool hole = false;
    int parent = -1; ///< index of the enclosing outline, or -1
};

/// What a sampler finds in its image: the sampled pixels, the outlines of
/// its alpha edge (alpha crossing "alphaEdgeThreshold") and the outlines it
/// traces into paths (the alpha edge, or with "useColor" what the colour
/// edges enclose). Empty, with `error` set, when the image cannot be read.
struct SamplerAnalysis
{
    QString path;               ///< the image file, absolute
    QString error;              ///< why nothing was found, or empty
    QSize fileSize;             ///< the file's own size in pixels
    std::shared_ptr<const SamplerPixels> pixels; ///< null on error
    std::vector<TracedRing> alphaRings;   ///< alpha edge, pixel coordinates
    std::vector<TracedRing> tracedRings;  ///< outlines for paths, pixel coordinates
    float threshold = 0.5f;
    bool useColor = false;

    /// Size of one output pixel in world units (x, y), for a sampler `height` high.
    Vec2 pixelSize(float height) const;
    /// A point in output pixel coordinates in the sampler's frame.
    Vec2 toFrame(Vec2 pixel, float height) const;
    /// Rings in the sampler's frame, in the same order.
    std::vector<SamplerOutline> toFrame(const std::vector<TracedRing>& rings, float height) const;
};

/// Analyses the sampler's image as it is now on disk: reads the file named
/// by the sampler (relative names from the folder of `sceneFilePath`) scaled
/// to the output size while decoding, and traces the outlines. Results are
/// kept in a small process-wide cache keyed by the file (with its time and
/// size) and the settings, so asking again is cheap and a changed file is
/// read again. A file that cannot be read logs one WARNING line and gives an
/// analysis without outlines.
std::shared_ptr<const SamplerAnalysis> analyseSampler(const MetaSampler& sampler, const QString& sceneFilePath);

/// The same for a picture already in memory (not cached, nothing logged).
std::shared_ptr<const SamplerAnalysis> analyseImage(const QImage& image, QSize output, float threshold, bool useColor);

/// Drops every cached analysis.
void clearSamplerAnalysisCache();
