// The self-intersection check as it was before the sweep: edges sorted by
// their left end, every pair with overlapping x ranges tested. Kept only as
// the reference the current one must agree with.
#include "referencealgorithms.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
struct P
{
    double x, y;
};

double orient(P a, P b, P c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

int sign(double v)
{
    return (v > 0) - (v < 0);
}

bool onSegment(P a, P b, P p)
{
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

bool segmentsIntersect(P a, P b, P c, P d)
{
    int o1 = sign(orient(a, b, c));
    int o2 = sign(orient(a, b, d));
    int o3 = sign(orient(c, d, a));
    int o4 = sign(orient(c, d, b));
    if (o1 != o2 && o3 != o4)
        return true;
    return (o1 == 0 && onSegment(a, b, c)) || (o2 == 0 && onSegment(a, b, d)) || (o3 == 0 && onSegment(c, d, a)) ||
           (o4 == 0 && onSegment(c, d, b));
}
} // namespace

bool Reference::ringSelfIntersects(const std::vector<Vec2>& ring)
{
    const size_t n = ring.size();
    if (n < 4)
        return false;
    std::vector<P> pts(n);
    for (size_t i = 0; i < n; ++i) {
        pts[i] = {ring[i].x, ring[i].y};
        if (!std::isfinite(pts[i].x) || !std::isfinite(pts[i].y))
            return false;
    }
    auto edgeMinX = [&](size_t e) { return std::min(pts[e].x, pts[(e + 1) % n].x); };
    auto edgeMaxX = [&](size_t e) { return std::max(pts[e].x, pts[(e + 1) % n].x); };

    // Sweep over edges sorted by their left end: only edges whose x ranges
    // overlap are tested against each other.
    std::vector<size_t> order(n);
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](size_t a, size_t b) { return edgeMinX(a) < edgeMinX(b); });
    for (size_t oi = 0; oi < n; ++oi) {
        const size_t i = order[oi];
        const double maxX = edgeMaxX(i);
        for (size_t oj = oi + 1; oj < n && edgeMinX(order[oj]) <= maxX; ++oj) {
            const size_t j = order[oj];
            const bool adjacent = (i + 1) % n == j || (j + 1) % n == i;
            if (adjacent)
                continue;
            if (segmentsIntersect(pts[i], pts[(i + 1) % n], pts[j], pts[(j + 1) % n]))
                return true;
        }
    }
    return false;
}
