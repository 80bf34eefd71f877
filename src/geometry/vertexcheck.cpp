#include "geometry/vertexcheck.h"

#include "base/log.h"
#include "geometry/geometryconstants.h"

#include <cmath>

namespace
{
// Same single-precision expression as Box2D's own chain vertex test, so a list
// that passes here never trips that assertion.
float squaredDistance(const Vec2& a, const Vec2& b)
{
    const float dx = a.x - b.x;
    const float dy = a.y - b.y;
    return dx * dx + dy * dy;
}
} // namespace

int findCoincidentVertices(const std::vector<Vec2>& vertices)
{
    const size_t n = vertices.size();
    if (n <= 1)
        return -1;
    for (size_t i = 0; i < n; ++i) {
        if (squaredDistance(vertices[i], vertices[(i + 1) % n]) <= GeometryConstants::kCoincidentDistanceSquared)
            return static_cast<int>(i);
    }
    return -1;
}

bool passesCoincidenceCheck(const std::vector<Vec2>& vertices)
{
    const int i = findCoincidentVertices(vertices);
    if (i < 0)
        return true;
    const Vec2& a = vertices[i];
    const Vec2& b = vertices[(i + 1) % vertices.size()];
    plaxLog(LOG_DEBUG, "Vertices are too close at (%f,%f) (%f,%f)", a.x, a.y, b.x, b.y);
    return false;
}

bool verticesUsable(const std::vector<Vec2>& vertices)
{
    for (const Vec2& v : vertices) {
        if (!std::isfinite(v.x) || !std::isfinite(v.y))
            return false;
        if (std::fabs(v.x) > GeometryConstants::kMaxCoordinate || std::fabs(v.y) > GeometryConstants::kMaxCoordinate)
            return false;
    }
    return true;
}
