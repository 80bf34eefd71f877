#include "geometry/triangulation.h"

#include "geometry/convexpiece.h"
#include "geometry/delaunayinsertion.h"
#include "geometry/earclipping.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace
{
std::uint64_t edgeKey(int a, int b)
{
    if (a > b)
        std::swap(a, b);
    return (static_cast<std::uint64_t>(a) << 32) | static_cast<std::uint32_t>(b);
}

// Positive when d lies inside the circumcircle of the counter-clockwise a, b, c,
// beyond a margin relative to the size of the terms.
bool insideCircumcircle(const DVec2& a, const DVec2& b, const DVec2& c, const DVec2& d)
{
    const DVec2 ad = a - d;
    const DVec2 bd = b - d;
    const DVec2 cd = c - d;
    const double al = ad.x * ad.x + ad.y * ad.y;
    const double bl = bd.x * bd.x + bd.y * bd.y;
    const double cl = cd.x * cd.x + cd.y * cd.y;
    const double t1 = al * cross(bd, cd);
    const double t2 = bl * cross(cd, ad);
    const double t3 = cl * cross(ad, bd);
    const double magnitude = al * (std::fabs(bd.x * cd.y) + std::fabs(bd.y * cd.x)) +
                             bl * (std::fabs(cd.x * ad.y) + std::fabs(cd.y * ad.x)) +
                             cl * (std::fabs(ad.x * bd.y) + std::fabs(ad.y * bd.x));
    return t1 + t2 + t3 > 1e-12 * magnitude;
}

} // namespace

void flipToDelaunay(const std::vector<DVec2>& pts, std::vector<TriangleIndices>& triangles)
{
    const int n = static_cast<int>(pts.size());
    struct Sides
    {
        int t[2] = {-1, -1};
    };
    std::unordered_map<std::uint64_t, Sides> edges;
    edges.reserve(triangles.size() * 3);
    auto isBoundary = [&](int a, int b) { return (a + 1) % n == b || (b + 1) % n == a; };
    auto attach = [&](int tri) {
        for (int e = 0; e < 3; ++e) {
            Sides& s = edges[edgeKey(triangles[tri][e], triangles[tri][(e + 1) % 3])];
            (s.t[0] < 0 ? s.t[0] : s.t[1]) = tri;
        }
    };
    auto detach = [&](int tri) {
        for (int e = 0; e < 3; ++e) {
            Sides& s = edges[edgeKey(triangles[tri][e], triangles[tri][(e + 1) % 3])];
            if (s.t[0] == tri)
                s.t[0] = s.t[1], s.t[1] = -1;
            else if (s.t[1] == tri)
                s.t[1] = -1;
        }
    };
    for (int t = 0; t < static_cast<int>(triangles.size()); ++t)
        attach(t);

    std::vector<std::pair<int, int>> stack;
    for (const TriangleIndices& t : triangles) {
        for (int e = 0; e < 3; ++e) {
            if (!isBoundary(t[e], t[(e + 1) % 3]) && t[e] < t[(e + 1) % 3])
                stack.emplace_back(t[e], t[(e + 1) % 3]);
        }
    }

    // Flips terminate in exact arithmetic; the budget guards rounding.
    long long budget = static_cast<long long>(n) * n + 1000;
    while (!stack.empty() && budget > 0) {
        const auto [a, b] = stack.back();
        stack.pop_back();
        if (isBoundary(a, b))
            continue;
        const auto found = edges.find(edgeKey(a, b));
        if (found == edges.end() || found->second.t[0] < 0 || found->second.t[1] < 0)
            continue;
        int t1 = found->second.t[0];
        int t2 = found->second.t[1];
        // Orient so that t1 holds the edge as a->b and t2 as b->a.
        auto opposite = [&](int tri, int from, int to) {
            const TriangleIndices& t = triangles[tri];
            for (int e = 0; e < 3; ++e) {
                if (t[e] == from && t[(e + 1) % 3] == to)
                    return t[(e + 2) % 3];
            }
            return -1;
        };
        int c = opposite(t1, a, b);
        int d = opposite(t2, b, a);
        int from = a;
        int to = b;
        if (c < 0 || d < 0) {
            std::swap(t1, t2);
            c = opposite(t1, a, b);
            d = opposite(t2, b, a);
        }
        if (c < 0 || d < 0) {
            c = opposite(t1, b, a);
            d = opposite(t2, a, b);
            from = b;
            to = a;
        }
        if (c < 0 || d < 0 || c == d)
            continue;
        const DVec2& pa = pts[from];
        const DVec2& pb = pts[to];
        const DVec2& pc = pts[c];
        const DVec2& pd = pts[d];
        if (!(orient2d(pa, pb, pc) > 0) || !(orient2d(pb, pa, pd) > 0))
            continue; // flat triangles are left alone
        if (!insideCircumcircle(pa, pb, pc, pd))
            continue;
        if (!(orient2d(pa, pd, pc) > 0) || !(orient2d(pd, pb, pc) > 0))
            continue; // the quad is not convex: no flip possible
        if (edges.count(edgeKey(c, d)) && edges[edgeKey(c, d)].t[0] >= 0)
            continue; // the other diagonal already exists elsewhere (ring not simple)
        detach(t1);
        detach(t2);
        edges.erase(edgeKey(from, to));
        triangles[t1] = {from, d, c};
        triangles[t2] = {d, to, c};
        attach(t1);
        attach(t2);
        --budget;
        for (auto [p, q] : {std::pair{from, d}, std::pair{d, to}, std::pair{to, c}, std::pair{c, from}})
            stack.emplace_back(p, q);
    }
}

std::vector<TriangleIndices> triangulateRing(const std::vector<DVec2>& ring)
{
    const int n = static_cast<int>(ring.size());
    if (n < 3)
        return {};
    for (const DVec2& p : ring) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return {};
    }
    std::vector<int> order(n);
    const bool clockwise = signedArea(ring) < 0;
    for (int k = 0; k < n; ++k)
        order[k] = clockwise ? n - 1 - k : k;
    std::vector<TriangleIndices> triangles;
    if (!delaunayByInsertion(ring, order, triangles))
        triangles = clipEars(ring, order);
    flipToDelaunay(ring, triangles);
    // Start every triangle at its lowest ring index (same orientation), which
    // keeps the output independent of the clipping order.
    for (TriangleIndices& t : triangles)
        std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
    return triangles;
}
