#include "physics/placement.h"

#include <cmath>

Placement Placement::then(const Placement& inner) const
{
    Placement result;
    result.position = applyToPoint(inner.position);
    result.angle = applyToAngle(inner.angle);
    result.scale = scale * inner.scale;
    result.flip = flip != inner.flip;
    return result;
}

Vec2 Placement::applyToVector(Vec2 v) const
{
    const Vec2 m = applyToLocalPoint(v);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    return {c * m.x - s * m.y, s * m.x + c * m.y};
}

Vec2 Placement::applyToPoint(Vec2 q) const
{
    return position + applyToVector(q);
}
