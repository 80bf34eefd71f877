#include "geometry/edgequad.h"

#include "geometry/geometryconstants.h"

std::array<Vec2, 4> edgeQuad(const Vec2& a, const Vec2& b, float radius)
{
    Vec2 d = b - a;
    const float length = d.length();
    if (length >= GeometryConstants::kEdgeDirectionEpsilon)
        d = d * (1.0f / length);
    const Vec2 o = Vec2{-d.y, d.x} * radius;
    return {a - o, b - o, b + o, a + o};
}
