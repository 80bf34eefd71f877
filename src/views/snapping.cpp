#include "views/snapping.h"

#include "base/settings.h"

#include <cmath>

SnapSettings SnapSettings::fromSettings()
{
    SnapSettings s;
    auto settings = openAppSettings();
    const auto positive = [&settings](const char* key, float fallback) {
        bool ok = false;
        const float value = settings->value(QLatin1String(key)).toFloat(&ok);
        return ok && std::isfinite(value) && value > 0 ? value : fallback;
    };
    // The keys the preferences dialog writes.
    s.gridStep = positive("editing/snaptranslatestep", s.gridStep);
    s.angleStepDegrees = positive("editing/snaprotatestep", s.angleStepDegrees);
    s.scaleStep = positive("editing/snapscalestep", s.scaleStep);
    s.vertexPixels = int(positive("editing/snapvertexpixels", float(s.vertexPixels)));
    return s;
}

namespace Snapping
{
float toStep(float value, float step)
{
    if (!(step > 0) || !std::isfinite(value))
        return value;
    return float(std::round(double(value) / step) * step);
}

Vec2 toGrid(Vec2 point, float step)
{
    return {toStep(point.x, step), toStep(point.y, step)};
}
} // namespace Snapping
