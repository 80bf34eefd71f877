#include "views/ringfill.h"

#include "geometry/signedarea.h"
#include "model/ringcheck.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace
{
// Rings kept at once (a few huge outlines being edited).
constexpr size_t kKept = 8;
// Corners of one hole left by the moved corners' triangles, at most.
constexpr size_t kMostHoleCorners = 4096;

double orient(const Vec2& a, const Vec2& b, const Vec2& c)
{
    return (double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x);
}

std::vector<TriangleIndices> triangulate(const std::vector<Vec2>& ring)
{
    std::vector<DVec2> points;
    points.reserve(ring.size());
    for (const Vec2& p : ring)
        points.push_back({p.x, p.y});
    return triangulateRing(points);
}

// Ear clipping of a small counter-clockwise polygon of ring indices: every
// ear must turn counter-clockwise and hold no other corner; false when no
// ear is left (the polygon is not simple in the new places).
bool clip(const std::vector<Vec2>& at, std::vector<int> polygon, std::vector<TriangleIndices>& out)
{
    while (polygon.size() > 3) {
        const size_t n = polygon.size();
        bool found = false;
        for (size_t i = 0; i < n && !found; ++i) {
            const int a = polygon[(i + n - 1) % n], b = polygon[i], c = polygon[(i + 1) % n];
            if (!(orient(at[a], at[b], at[c]) > 0))
                continue;
            bool empty = true;
            for (size_t k = 0; k < n && empty; ++k) {
                const int p = polygon[k];
                if (p == a || p == b || p == c)
                    continue;
                // Inside or on the ear's edges.
                empty = !(orient(at[a], at[b], at[p]) >= 0 && orient(at[b], at[c], at[p]) >= 0 &&
                          orient(at[c], at[a], at[p]) >= 0);
            }
            if (!empty)
                continue;
            out.push_back({a, b, c});
            polygon.erase(polygon.begin() + long(i));
            found = true;
        }
        if (!found)
            return false;
    }
    if (!(orient(at[polygon[0]], at[polygon[1]], at[polygon[2]]) > 0))
        return false;
    out.push_back({polygon[0], polygon[1], polygon[2]});
    return true;
}
} // namespace

RingFill& RingFill::shared()
{
    static RingFill store;
    return store;
}

void RingFill::clear()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.clear();
}

namespace
{
bool segmentsMeet(Vec2 p1, Vec2 p2, Vec2 q1, Vec2 q2)
{
    const double d1 = orient(q1, q2, p1), d2 = orient(q1, q2, p2);
    const double d3 = orient(p1, p2, q1), d4 = orient(p1, p2, q2);
    return ((d1 >= 0 && d2 <= 0) || (d1 <= 0 && d2 >= 0)) && ((d3 >= 0 && d4 <= 0) || (d3 <= 0 && d4 >= 0));
}

// True when the segment from the ring corner `from` (at p) to q shares a
// point with the counter-clockwise triangle `tri` other than p itself.
bool segmentMeetsTriangle(int from, Vec2 p, Vec2 q, const TriangleIndices& tri, const std::vector<Vec2>& at)
{
    const Vec2 a = at[size_t(tri[0])], b = at[size_t(tri[1])], c = at[size_t(tri[2])];
    if (std::max(p.x, q.x) < std::min({a.x, b.x, c.x}) || std::min(p.x, q.x) > std::max({a.x, b.x, c.x}) ||
        std::max(p.y, q.y) < std::min({a.y, b.y, c.y}) || std::min(p.y, q.y) > std::max({a.y, b.y, c.y}))
        return false;
    const auto inside = [&](Vec2 x) { return orient(a, b, x) >= 0 && orient(b, c, x) >= 0 && orient(c, a, x) >= 0; };
    if (inside(q))
        return true;
    for (size_t k = 0; k < 3; ++k) {
        if (tri[k] != from)
            continue;
        // p is this corner: the segment leaves it through the opposite edge,
        // or runs along one of the corner's own edges.
        const Vec2 u = at[size_t(tri[(k + 1) % 3])], w = at[size_t(tri[(k + 2) % 3])];
        const auto along = [&](Vec2 x) {
            return orient(p, x, q) == 0 && (double(x.x) - p.x) * (double(q.x) - p.x) + (double(x.y) - p.y) * (double(q.y) - p.y) > 0;
        };
        return segmentsMeet(p, q, u, w) || along(u) || along(w);
    }
    return inside(p) || segmentsMeet(p, q, a, b) || segmentsMeet(p, q, b, c) || segmentsMeet(p, q, c, a);
}

std::uint64_t edgeKey(int a, int b)
{
    return (std::uint64_t(std::uint32_t(a)) << 32) | std::uint32_t(b);
}

// The triangles of the hole made again from its boundary: false when the
// boundary is not one counter-clockwise loop per piece or ear clipping
// leaves a triangle turning the wrong way.
bool refill(const std::vector<Vec2>& at, const std::vector<TriangleIndices>& triangles,
            const std::vector<size_t>& hole, std::vector<TriangleIndices>& made,
            std::vector<std::uint64_t>& boundary)
{
    std::unordered_map<std::uint64_t, unsigned char> edges;
    for (size_t t : hole) {
        const TriangleIndices& tri = triangles[t];
        for (size_t k = 0; k < 3; ++k)
            edges[edgeKey(tri[k], tri[(k + 1) % 3])] = 1;
    }
    // Edges whose reverse is not in the hole bound it; each corner starts one at most.
    std::unordered_map<int, int> outgoing;
    boundary.clear();
    bool manifold = true;
    for (const auto& [edge, unused] : edges) {
        const int a = int(edge >> 32), b = int(edge & 0xffffffffu);
        if (edges.count(edgeKey(b, a)))
            continue;
        boundary.push_back(edge);
        manifold = outgoing.emplace(a, b).second && manifold;
    }
    if (!manifold)
        return false;
    made.clear();
    while (!outgoing.empty()) {
        std::vector<int> loop;
        const int start = outgoing.begin()->first;
        int corner = start;
        do {
            const auto it = outgoing.find(corner);
            if (it == outgoing.end() || loop.size() > kMostHoleCorners)
                return false;
            loop.push_back(corner);
            corner = it->second;
            outgoing.erase(it);
        } while (corner != start);
        std::vector<Vec2> corners;
        corners.reserve(loop.size());
        for (int c : loop)
            corners.push_back(at[size_t(c)]);
        if (loop.size() < 3 || !(signedArea(corners) > 0) || !clip(at, loop, made))
            return false;
    }
    // As many triangles as were taken out: each loop bounds a disc of ring corners.
    return made.size() == hole.size();
}
} // namespace

bool RingFill::patch(const std::vector<Vec2>& after, const std::vector<int>& moved,
                     std::vector<TriangleIndices>& triangles)
{
    const size_t n = after.size();
    std::vector<unsigned char> isMoved(n, 0);
    for (int i : moved)
        isMoved[size_t(i)] = 1;
    // The hole: the triangles with a moved corner. A corner moved past the
    // far side of its own triangles needs their neighbours too: the hole
    // grows by the triangles across its edges, a few times at most.
    std::vector<unsigned char> inHole(triangles.size(), 0);
    std::vector<size_t> hole;
    for (size_t t = 0; t < triangles.size(); ++t) {
        const TriangleIndices& tri = triangles[t];
        if (isMoved[size_t(tri[0])] || isMoved[size_t(tri[1])] || isMoved[size_t(tri[2])]) {
            inHole[t] = 1;
            hole.push_back(t);
        }
    }
    if (hole.empty())
        return true;
    // A corner moved past the far side of its triangles: the triangles its
    // new edges cross, or that hold it now, join the hole.
    // Each new edge of a moved corner, from its neighbour.
    std::vector<std::pair<int, int>> reach;
    for (int i : moved) {
        reach.emplace_back(int((size_t(i) + n - 1) % n), i);
        reach.emplace_back(int((size_t(i) + 1) % n), i);
    }
    for (size_t t = 0; t < triangles.size(); ++t) {
        if (inHole[t])
            continue;
        const TriangleIndices& tri = triangles[t];
        for (const auto& [from, to] : reach) {
            if (segmentMeetsTriangle(from, after[size_t(from)], after[size_t(to)], tri, after)) {
                inHole[t] = 1;
                hole.push_back(t);
                break;
            }
        }
    }
    std::vector<TriangleIndices> made;
    std::vector<std::uint64_t> boundary;
    constexpr int kGrowths = 6;
    for (int growth = 0;; ++growth) {
        if (refill(after, triangles, hole, made, boundary))
            break;
        if (growth == kGrowths || boundary.empty())
            return false;
        std::unordered_map<std::uint64_t, unsigned char> across;
        for (std::uint64_t edge : boundary)
            across.emplace(edgeKey(int(edge & 0xffffffffu), int(edge >> 32)), 1);
        const size_t before = hole.size();
        for (size_t t = 0; t < triangles.size(); ++t) {
            if (inHole[t])
                continue;
            const TriangleIndices& tri = triangles[t];
            for (size_t k = 0; k < 3; ++k) {
                if (across.count(edgeKey(tri[k], tri[(k + 1) % 3]))) {
                    inHole[t] = 1;
                    hole.push_back(t);
                    break;
                }
            }
        }
        if (hole.size() == before)
            return false;
    }
    std::sort(hole.begin(), hole.end());
    for (size_t i = 0; i < hole.size(); ++i) {
        TriangleIndices t = made[i];
        std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
        triangles[hole[i]] = t;
    }
    return true;
}

std::vector<TriangleIndices> RingFill::triangles(const std::vector<Vec2>& ring)
{
    if (ring.size() < kSmallestKept)
        return triangulate(ring);
    std::lock_guard<std::mutex> lock(m_mutex);
    ++m_clock;
    // The kept ring of the same size with the fewest corners elsewhere.
    Entry* best = nullptr;
    std::vector<int> bestMoved;
    for (Entry& entry : m_entries) {
        if (entry.ring.size() != ring.size())
            continue;
        std::vector<int> moved;
        for (size_t i = 0; i < ring.size() && moved.size() <= kMostMoved; ++i) {
            if (!(entry.ring[i] == ring[i]))
                moved.push_back(int(i));
        }
        if (moved.size() <= kMostMoved && (!best || moved.size() < bestMoved.size())) {
            best = &entry;
            bestMoved = std::move(moved);
        }
    }
    if (best && bestMoved.empty()) {
        best->used = m_clock;
        m_lastSource = Source::Kept;
        return best->triangles;
    }
    if (best) {
        // The moved corners' triangles made again, when the ring stays simple.
        if (best->simple < 0)
            best->simple = ringSelfIntersects(best->ring) ? 0 : 1;
        std::vector<TriangleIndices> patched = best->triangles;
        const bool simple = best->simple == 1 && !ringSelfIntersectsAfterEdit(best->ring, ring);
        if (simple && patch(ring, bestMoved, patched)) {
            best->ring = ring;
            best->triangles = std::move(patched);
            best->simple = 1;
            best->used = m_clock;
            m_lastSource = Source::Patched;
            return best->triangles;
        }
    }
    m_lastSource = Source::Triangulated;
    std::vector<TriangleIndices> made = triangulate(ring);
    Entry* slot = nullptr;
    if (m_entries.size() < kKept) {
        m_entries.emplace_back();
        slot = &m_entries.back();
    } else {
        slot = &*std::min_element(m_entries.begin(), m_entries.end(),
                                  [](const Entry& a, const Entry& b) { return a.used < b.used; });
    }
    slot->ring = ring;
    slot->triangles = made;
    slot->simple = -1;
    slot->used = m_clock;
    return made;
}
