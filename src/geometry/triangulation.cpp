#include "geometry/triangulation.h"

#include "geometry/convexpiece.h"
#include "geometry/delaunayinsertion.h"
#include "geometry/earclipping.h"
#include "geometry/signedarea.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

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

// The two triangles on each side of an edge, by edge key: open addressing
// with linear probing in one flat array, as every flip looks up a handful of
// edges. Entries are never taken out; an edge that is flipped away keeps an
// entry with no triangles.
class EdgeSides
{
public:
    struct Sides
    {
        int t[2] = {-1, -1};
    };

    /// A table for about `expected` edges (it grows when needed).
    explicit EdgeSides(size_t expected)
    {
        size_t capacity = 16;
        while (4 * capacity < 5 * expected)
            capacity *= 2;
        m_keys.assign(capacity, kEmpty);
        m_sides.resize(capacity);
    }

    /// The entry of the key, made empty if it has none.
    Sides& operator[](std::uint64_t key)
    {
        size_t slot = find(key);
        if (m_keys[slot] != key) {
            if (4 * (m_used + 1) > 3 * m_keys.size()) {
                grow();
                slot = find(key);
            }
            m_keys[slot] = key;
            m_sides[slot] = Sides();
            ++m_used;
        }
        return m_sides[slot];
    }

    /// The entry of the key, or null.
    Sides* lookup(std::uint64_t key)
    {
        const size_t slot = find(key);
        return m_keys[slot] == key ? &m_sides[slot] : nullptr;
    }

private:
    static constexpr std::uint64_t kEmpty = ~std::uint64_t(0);

    // The key's slot, or the empty slot where it would go.
    size_t find(std::uint64_t key) const
    {
        const size_t mask = m_keys.size() - 1;
        size_t slot = size_t((key * 0x9E3779B97F4A7C15ull) >> 20) & mask;
        while (m_keys[slot] != key && m_keys[slot] != kEmpty)
            slot = (slot + 1) & mask;
        return slot;
    }

    void grow()
    {
        std::vector<std::uint64_t> keys(m_keys.size() * 2, kEmpty);
        std::vector<Sides> sides(keys.size());
        keys.swap(m_keys);
        sides.swap(m_sides);
        for (size_t k = 0; k < keys.size(); ++k) {
            if (keys[k] != kEmpty) {
                const size_t slot = find(keys[k]);
                m_keys[slot] = keys[k];
                m_sides[slot] = sides[k];
            }
        }
    }

    std::vector<std::uint64_t> m_keys;
    std::vector<Sides> m_sides;
    size_t m_used = 0;
};
} // namespace

void flipToDelaunay(const std::vector<DVec2>& pts, std::vector<TriangleIndices>& triangles)
{
    const int n = static_cast<int>(pts.size());
    using Sides = EdgeSides::Sides;
    // A triangulation of a ring has about one and a half edges per triangle.
    EdgeSides edges(triangles.size() * 3 / 2 + 16);
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
        const Sides* found = edges.lookup(edgeKey(a, b));
        if (!found || found->t[0] < 0 || found->t[1] < 0)
            continue;
        int t1 = found->t[0];
        int t2 = found->t[1];
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
        if (const Sides* other = edges.lookup(edgeKey(c, d)); other && other->t[0] >= 0)
            continue; // the other diagonal already exists elsewhere (ring not simple)
        detach(t1);
        detach(t2);
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
