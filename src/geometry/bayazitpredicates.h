#pragma once

#include "geometry/dvec2.h"

#include <algorithm>
#include <cmath>

/// The orientation tests of Bayazit's decomposition, in double precision.
namespace BayazitPredicates
{
/// c lies strictly left of the directed line a -> b.
inline bool left(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) > 0;
}

/// c lies left of or on the directed line a -> b.
inline bool leftOn(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) >= 0;
}

/// c lies strictly right of the directed line a -> b.
inline bool right(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) < 0;
}

/// c lies right of or on the directed line a -> b.
inline bool rightOn(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) <= 0;
}

/// Point where the line through p1, p2 meets the line through q1, q2; false
/// for parallel lines or a result that is not finite.
inline bool lineIntersection(const DVec2& p1, const DVec2& p2, const DVec2& q1, const DVec2& q2, DVec2& out)
{
    const DVec2 r = p2 - p1;
    const DVec2 s = q2 - q1;
    const double denominator = cross(r, s);
    if (denominator == 0 || !std::isfinite(denominator))
        return false;
    const double t = cross(q1 - p1, s) / denominator;
    out = p1 + r * t;
    return std::isfinite(out.x) && std::isfinite(out.y);
}

/// p lies in the bounding box of a and b.
inline bool inBox(const DVec2& a, const DVec2& b, const DVec2& p)
{
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

/// Sign of a value: -1, 0 or 1.
inline int sign(double v)
{
    return (v > 0) - (v < 0);
}

/// The closed segments a-b and c-d share a point.
inline bool segmentsTouch(const DVec2& a, const DVec2& b, const DVec2& c, const DVec2& d)
{
    const int o1 = sign(orient2d(a, b, c));
    const int o2 = sign(orient2d(a, b, d));
    const int o3 = sign(orient2d(c, d, a));
    const int o4 = sign(orient2d(c, d, b));
    if (o1 != o2 && o3 != o4)
        return true;
    return (o1 == 0 && inBox(a, b, c)) || (o2 == 0 && inBox(a, b, d)) || (o3 == 0 && inBox(c, d, a)) ||
           (o4 == 0 && inBox(c, d, b));
}
} // namespace BayazitPredicates
