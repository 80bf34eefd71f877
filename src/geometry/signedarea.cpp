#include "geometry/signedarea.h"

double signedArea(const std::vector<DVec2>& ring)
{
    const size_t n = ring.size();
    if (n < 3)
        return 0;
    // Relative to the first point, which keeps the sum accurate far from the origin.
    const DVec2 origin = ring[0];
    double twice = 0;
    for (size_t i = 1; i + 1 < n; ++i)
        twice += cross(ring[i] - origin, ring[i + 1] - origin);
    return 0.5 * twice;
}

double signedArea(const std::vector<Vec2>& ring)
{
    std::vector<DVec2> wide;
    wide.reserve(ring.size());
    for (const Vec2& v : ring)
        wide.push_back(DVec2::from(v));
    return signedArea(wide);
}
