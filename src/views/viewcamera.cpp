#include "views/viewcamera.h"

#include <algorithm>
#include <cmath>

double ViewCamera::worldPerPixel() const
{
    return double(height) / std::max(1, pixelSize.height());
}

Vec2 ViewCamera::toWorld(const QPointF& pixel) const
{
    const double s = worldPerPixel();
    return {float(center.x + (pixel.x() - pixelSize.width() / 2.0) * s),
            float(center.y - (pixel.y() - pixelSize.height() / 2.0) * s)};
}

QPointF ViewCamera::toPixel(const Vec2& world) const
{
    const double s = worldPerPixel();
    return {pixelSize.width() / 2.0 + (world.x - center.x) / s, pixelSize.height() / 2.0 - (world.y - center.y) / s};
}

void ViewCamera::panByPixels(const QPointF& pixelDelta)
{
    const double s = worldPerPixel();
    center.x = float(center.x - pixelDelta.x() * s);
    center.y = float(center.y + pixelDelta.y() * s);
}

void ViewCamera::zoomAt(const QPointF& pixel, double factor)
{
    const Vec2 before = toWorld(pixel);
    height = float(std::clamp(double(height) * factor, double(kMinHeight), double(kMaxHeight)));
    const Vec2 after = toWorld(pixel);
    center.x += before.x - after.x;
    center.y += before.y - after.y;
}

void ViewCamera::fit(const Vec2& lo, const Vec2& hi)
{
    const bool finite = std::isfinite(lo.x) && std::isfinite(lo.y) && std::isfinite(hi.x) && std::isfinite(hi.y);
    if (!finite || hi.x < lo.x || hi.y < lo.y) {
        center = {};
        height = 20;
        return;
    }
    center = {float((double(lo.x) + hi.x) / 2), float((double(lo.y) + hi.y) / 2)};
    const double aspect = double(std::max(1, pixelSize.width())) / std::max(1, pixelSize.height());
    const double needed = std::max(double(hi.y) - lo.y, (double(hi.x) - lo.x) / aspect) * 1.1;
    height = float(std::clamp(needed, 1.0, double(kMaxHeight)));
}

std::array<float, 16> ViewCamera::worldToClip() const
{
    const double sy = 2.0 / height;
    const double sx = sy * std::max(1, pixelSize.height()) / std::max(1, pixelSize.width());
    std::array<float, 16> m{};
    m[0] = float(sx);
    m[5] = float(sy);
    m[10] = 1;
    m[12] = float(-center.x * sx);
    m[13] = float(-center.y * sy);
    m[15] = 1;
    return m;
}
