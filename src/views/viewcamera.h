#pragma once

#include "base/types.h"

#include <QPointF>
#include <QSize>

#include <array>

/// The mapping between a view's pixels and world coordinates: the world
/// point at the view's centre and the world height the view shows. World y
/// points up, pixel y down.
class ViewCamera
{
public:
    /// World point at the centre of the view.
    Vec2 center;
    /// World height shown by the view (always positive).
    float height = 20;
    /// Size of the view in pixels.
    QSize pixelSize{800, 600};

    /// World units per pixel.
    double worldPerPixel() const;
    /// World point under a pixel position.
    Vec2 toWorld(const QPointF& pixel) const;
    /// Pixel position of a world point.
    QPointF toPixel(const Vec2& world) const;
    /// Moves the view so that the world follows the mouse by `pixelDelta`.
    void panByPixels(const QPointF& pixelDelta);
    /// Zooms by `factor` (>1 shows more) keeping the world point under `pixel` in place.
    void zoomAt(const QPointF& pixel, double factor);
    /// Shows the box [lo, hi] with a margin; non-finite or empty boxes give the default view.
    void fit(const Vec2& lo, const Vec2& hi);
    /// Column-major 4x4 matrix taking world coordinates to clip space.
    std::array<float, 16> worldToClip() const;
    /// Smallest and largest shown world height; zooming stops there.
    static constexpr float kMinHeight = 1e-3f;
    static constexpr float kMaxHeight = 1e7f;
};
