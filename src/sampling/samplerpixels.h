#pragma once

#include "sampling/outlinetracer.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <mutex>
#include <vector>

/// The longest side of a sampler's output; larger settings are refused.
constexpr int kMaxSamplerOutputSide = 2048;

/// The output size for a sampler over an image of `fileSize` pixels: the
/// given width and height, where 0 takes the file's (0 for both: the file's
/// own size, reduced to kMaxSamplerOutputSide on its longer side; 0 for one:
/// that side follows the other in the file's proportions).
QSize samplerOutputSize(QSize fileSize, int outputWidth, int outputHeight);

/// An image sampled at a sampler's output resolution, with the maps the
/// sampler works from: the alpha map and, computed when first asked for,
/// the colour edge maps (Sobel magnitude and its local maxima).
/// The colour edge maps are computed once, by whichever thread asks first.
class SamplerPixels
{
public:
    /// Samples an image (any format) at `output` pixels.
    SamplerPixels(const QImage& image, QSize output);
    /// Takes an image already at the output size.
    explicit SamplerPixels(QImage sampled);
    SamplerPixels(const SamplerPixels&) = delete;
    SamplerPixels& operator=(const SamplerPixels&) = delete;

    /// The sampled image (ARGB32).
    const QImage& image() const { return m_image; }
    int width() const { return m_image.width(); }
    int height() const { return m_image.height(); }

    /// Alpha of each pixel, 0 to 1.
    const ScalarField& alpha() const { return m_alpha; }
    /// 1 for each solid pixel (alpha at or above `threshold`) next to a
    /// pixel that is not (the field's outside counts as not solid), else 0.
    std::vector<std::uint8_t> alphaEdge(float threshold) const;

    /// Sobel gradient magnitude of the colour (each channel weighted by
    /// alpha, the strongest channel counting), 0 to 1 of the largest possible.
    const ScalarField& sobel() const;
    /// The Sobel magnitude where it is a local maximum across the edge
    /// (non-maximum suppression along the gradient), 0 elsewhere.
    const ScalarField& localMaxima() const;
    /// Solid where colour edges enclose: every pixel that the field's border
    /// cannot reach, stepping between side neighbours, without crossing an
    /// edge pixel (a local maximum of at least `threshold` times the largest
    /// magnitude). 1 or 0 per pixel.
    ScalarField colorEdgeFill(float threshold) const;

    /// The maps as 8-bit grey pictures (colour edges scaled so that the
    /// strongest edge is white).
    QImage alphaImage() const;
    QImage alphaEdgeImage(float threshold) const;
    QImage sobelImage() const;
    QImage localMaximaImage() const;

private:
    void computeColorEdges() const;

    QImage m_image;
    ScalarField m_alpha;
    mutable std::once_flag m_colorEdgesOnce;
    mutable ScalarField m_sobel;
    mutable ScalarField m_localMaxima;
    mutable float m_strongest = 0;
};
