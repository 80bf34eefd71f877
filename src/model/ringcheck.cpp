#include "model/ringcheck.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

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

// Closed segments a-b and c-d share a point.
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

bool lexLess(P a, P b)
{
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

// Shamos-Hoey sweep over the ring's edges from left to right (points ordered
// by x, then y, which tilts the sweep line so that vertical edges need no
// special case). Edges are kept in a set ordered from bottom to top; every
// pair that becomes neighbours in that order is tested, and the leftmost
// contact between two non-adjacent edges is always preceded by such a test.
// Expects distinct points and no adjacent edges folding back onto each other
// (both are settled before the sweep).
class Sweep
{
public:
    explicit Sweep(const std::vector<P>& pts) : m_pts(pts), m_n(pts.size()), m_rank(m_n), m_order(m_n)
    {
        std::iota(m_order.begin(), m_order.end(), size_t(0));
        std::sort(m_order.begin(), m_order.end(), [&](size_t a, size_t b) {
            return lexLess(m_pts[a], m_pts[b]) || (!lexLess(m_pts[b], m_pts[a]) && a < b);
        });
        for (size_t r = 0; r < m_n; ++r)
            m_rank[m_order[r]] = r;
    }

    // Indices of vertices in sweep order.
    const std::vector<size_t>& order() const { return m_order; }

    bool adjacent(size_t e, size_t f) const { return (e + 1) % m_n == f || (f + 1) % m_n == e; }

    // Edge e runs from vertex e to vertex e + 1.
    bool touch(size_t e, size_t f) const
    {
        return !adjacent(e, f) && segmentsIntersect(m_pts[e], m_pts[(e + 1) % m_n], m_pts[f], m_pts[(f + 1) % m_n]);
    }

    size_t leftVertex(size_t e) const
    {
        const size_t f = (e + 1) % m_n;
        return m_rank[e] < m_rank[f] ? e : f;
    }

    size_t rightVertex(size_t e) const
    {
        const size_t f = (e + 1) % m_n;
        return m_rank[e] < m_rank[f] ? f : e;
    }

    bool startsLater(size_t e, size_t f) const
    {
        const size_t re = m_rank[leftVertex(e)];
        const size_t rf = m_rank[leftVertex(f)];
        return re > rf || (re == rf && e > f);
    }

    // Side of edge `later` relative to edge `earlier`, which is active where
    // `later` starts: positive above, negative below. A start on the earlier
    // edge's line is decided by the far end; collinear edges by index.
    int side(size_t later, size_t earlier) const
    {
        const P a = m_pts[leftVertex(earlier)];
        const P b = m_pts[rightVertex(earlier)];
        int s = sign(orient(a, b, m_pts[leftVertex(later)]));
        if (s == 0)
            s = sign(orient(a, b, m_pts[rightVertex(later)]));
        if (s == 0)
            s = later < earlier ? -1 : 1;
        return s;
    }

    bool below(size_t e, size_t f) const
    {
        if (e == f)
            return false;
        return startsLater(e, f) ? side(e, f) < 0 : side(f, e) > 0;
    }

    bool findsContact()
    {
        auto less = [this](size_t e, size_t f) { return below(e, f); };
        std::set<size_t, decltype(less)> status(less);
        std::vector<decltype(status)::iterator> where(m_n, status.end());
        for (size_t v : m_order) {
            const size_t edges[2] = {(v + m_n - 1) % m_n, v};
            for (size_t e : edges) {
                if (rightVertex(e) != v)
                    continue;
                const auto it = where[e];
                const auto next = std::next(it);
                if (it != status.begin() && next != status.end() && touch(*std::prev(it), *next))
                    return true;
                status.erase(it);
            }
            for (size_t e : edges) {
                if (leftVertex(e) != v)
                    continue;
                const auto it = status.insert(e).first;
                where[e] = it;
                const auto next = std::next(it);
                if (next != status.end() && touch(e, *next))
                    return true;
                if (it != status.begin() && touch(e, *std::prev(it)))
                    return true;
            }
        }
        return false;
    }

private:
    const std::vector<P>& m_pts;
    size_t m_n;
    std::vector<size_t> m_rank;
    std::vector<size_t> m_order;
};
} // namespace

bool ringSelfIntersectsBySweep(const std::vector<Vec2>& ring)
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
    Sweep sweep(pts);

    // Two vertices at one point: their outgoing edges touch there (and a
    // repeated consecutive vertex makes the edges before and after it touch).
    const std::vector<size_t>& order = sweep.order();
    for (size_t r = 1; r < n; ++r) {
        const P a = pts[order[r - 1]];
        const P b = pts[order[r]];
        if (a.x == b.x && a.y == b.y)
            return true;
    }

    // Two adjacent edges folding back onto each other: the shorter one's far
    // end lies on the longer one, so an edge next to them touches it.
    for (size_t i = 0; i < n; ++i) {
        const size_t before = (i + n - 1) % n;
        const size_t after = (i + 1) % n;
        const P a = pts[before];
        const P b = pts[i];
        const P c = pts[after];
        if (orient(a, b, c) != 0 || (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y) >= 0)
            continue;
        if (sweep.touch(before, after) || sweep.touch((before + n - 1) % n, i))
            return true;
    }

    return sweep.findsContact();
}

namespace
{
// Rings up to this size test every pair of edges: cheaper than sorting and
// a sweep's ordered set for the few corners most fixtures have.
constexpr size_t kPairwiseRing = 16;

// The sweep's answer for a small ring: two vertices at one point, or any
// two non-adjacent edges touching (adjacent edges folding back make the
// edge after them touch the longer one, as the sweep's own check has it).
bool smallRingSelfIntersects(const std::vector<Vec2>& ring)
{
    const size_t n = ring.size();
    P pts[kPairwiseRing];
    for (size_t i = 0; i < n; ++i) {
        pts[i] = {ring[i].x, ring[i].y};
        if (!std::isfinite(pts[i].x) || !std::isfinite(pts[i].y))
            return false;
    }
    for (size_t i = 0; i < n; ++i) {
        for (size_t j = i + 1; j < n; ++j) {
            if (pts[i].x == pts[j].x && pts[i].y == pts[j].y)
                return true;
        }
    }
    const auto touch = [&](size_t e, size_t f) {
        const bool adjacent = (e + 1) % n == f || (f + 1) % n == e;
        return !adjacent && segmentsIntersect(pts[e], pts[(e + 1) % n], pts[f], pts[(f + 1) % n]);
    };
    for (size_t e = 0; e < n; ++e) {
        for (size_t f = e + 2; f < n; ++f) {
            if (touch(e, f))
                return true;
        }
    }
    return false;
}
} // namespace

bool ringSelfIntersects(const std::vector<Vec2>& ring)
{
    if (ring.size() < 4)
        return false;
    if (ring.size() <= kPairwiseRing)
        return smallRingSelfIntersects(ring);
    return ringSelfIntersectsBySweep(ring);
}

bool ringSelfIntersectsAfterEdit(const std::vector<Vec2>& before, const std::vector<Vec2>& after)
{
    // Past this many moved points the whole check is about as quick.
    constexpr size_t kMaxMoved = 16;
    const size_t n = after.size();
    if (n < 4 || before.size() != n)
        return ringSelfIntersects(after);
    // A ring with a point that is not finite counts as not crossing itself
    // whatever its edges do, so it says nothing about them.
    for (const Vec2& p : before) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return ringSelfIntersects(after);
    }
    std::vector<size_t> moved;
    for (size_t i = 0; i < n; ++i) {
        if (before[i].x == after[i].x && before[i].y == after[i].y)
            continue;
        if (moved.size() == kMaxMoved || !std::isfinite(after[i].x) || !std::isfinite(after[i].y))
            return ringSelfIntersects(after);
        moved.push_back(i);
    }
    if (moved.empty())
        return false;
    // Every pair of edges that touches now and did not before holds an edge
    // at a moved point: edge e runs from point e to point e + 1.
    std::vector<size_t> edges;
    for (size_t i : moved) {
        edges.push_back((i + n - 1) % n);
        edges.push_back(i);
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    auto point = [&after](size_t i) { return P{after[i].x, after[i].y}; };
    for (size_t e : edges) {
        const size_t next = e + 1 == n ? 0 : e + 1, previous = e == 0 ? n - 1 : e - 1;
        const P a = point(e);
        const P b = point(next);
        // Edges whose boxes lie apart from this one's share no point with it
        // (the test of the rest is exact), so most are passed over at once.
        const float left = std::min(after[e].x, after[next].x), right = std::max(after[e].x, after[next].x);
        const float bottom = std::min(after[e].y, after[next].y), top = std::max(after[e].y, after[next].y);
        for (size_t f = 0; f < n; ++f) {
            const size_t fNext = f + 1 == n ? 0 : f + 1;
            const Vec2 p = after[f], q = after[fNext];
            if ((p.x < left && q.x < left) || (p.x > right && q.x > right) || (p.y < bottom && q.y < bottom) ||
                (p.y > top && q.y > top))
                continue;
            if (f == e || f == next || f == previous)
                continue;
            if (segmentsIntersect(a, b, point(f), point(fNext)))
                return true;
        }
    }
    return false;
}
