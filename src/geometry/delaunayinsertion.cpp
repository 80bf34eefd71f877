#include "geometry/delaunayinsertion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <random>

namespace
{
// A triangle: counter-clockwise corners, and the neighbour across the edge
// opposite each corner (-1 for none).
struct Tri
{
    std::array<int, 3> v;
    std::array<int, 3> n;
};

int nextOf(int k)
{
    return k == 2 ? 0 : k + 1;
}

int prevOf(int k)
{
    return k == 0 ? 2 : k - 1;
}

// Positive when d lies inside the circle through the counter-clockwise a, b, c.
double inCircle(const DVec2& a, const DVec2& b, const DVec2& c, const DVec2& d)
{
    const DVec2 ad = a - d, bd = b - d, cd = c - d;
    const double al = ad.x * ad.x + ad.y * ad.y;
    const double bl = bd.x * bd.x + bd.y * bd.y;
    const double cl = cd.x * cd.x + cd.y * cd.y;
    return al * cross(bd, cd) + bl * cross(cd, ad) + cl * cross(ad, bd);
}

// Position along a Hilbert curve over a 65536 x 65536 grid.
std::uint64_t hilbertIndex(std::uint32_t x, std::uint32_t y)
{
    constexpr std::uint32_t side = 1u << 16;
    std::uint64_t d = 0;
    for (std::uint32_t s = side / 2; s > 0; s /= 2) {
        const std::uint32_t rx = (x & s) ? 1 : 0;
        const std::uint32_t ry = (y & s) ? 1 : 0;
        d += static_cast<std::uint64_t>(s) * s * ((3 * rx) ^ ry);
        if (ry == 0) {
            if (rx == 1) {
                x = side - 1 - x;
                y = side - 1 - y;
            }
            std::swap(x, y);
        }
    }
    return d;
}

class Mesh
{
public:
    Mesh(const std::vector<DVec2>& points, long long budget) : m_p(points), m_budget(budget) {}

    // Starts with one triangle holding every point well inside.
    bool start()
    {
        const size_t n = m_p.size();
        double minX = m_p[0].x, maxX = minX, minY = m_p[0].y, maxY = minY;
        for (const DVec2& p : m_p) {
            minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
            minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
        }
        const double d = std::max(maxX - minX, maxY - minY);
        if (!(d > 0) || !std::isfinite(d))
            return false;
        const double cx = (minX + maxX) / 2, cy = (minY + maxY) / 2;
        m_firstSuper = int(n);
        m_p.push_back({cx - 40 * d, cy - 30 * d});
        m_p.push_back({cx + 40 * d, cy - 30 * d});
        m_p.push_back({cx, cy + 40 * d});
        m_vertTri.assign(m_p.size(), -1);
        // Each point inserted adds two triangles.
        m_t.reserve(2 * n + 1);
        add({int(n), int(n) + 1, int(n) + 2}, {-1, -1, -1});
        return true;
    }

    bool insert(int p)
    {
        const DVec2 q = m_p[size_t(p)];
        const int t = locate(q);
        if (t < 0)
            return false;
        const Tri tri = m_t[size_t(t)];
        int zeros = 0, onEdge = -1;
        for (int k = 0; k < 3; ++k) {
            if (m_p[size_t(tri.v[size_t(k)])] == q)
                return false;
            if (orient2d(m_p[size_t(tri.v[size_t(nextOf(k))])], m_p[size_t(tri.v[size_t(prevOf(k))])], q) == 0) {
                ++zeros;
                onEdge = k;
            }
        }
        if (zeros > 1)
            return false;
        if (zeros == 1)
            return splitEdge(t, onEdge, p);
        splitTriangle(t, p);
        return true;
    }

    // Makes a-b an edge by flipping the edges that cross it.
    bool forceEdge(int a, int b)
    {
        if (hasEdge(a, b))
            return true;
        std::deque<std::pair<int, int>> crossing;
        if (!crossingEdges(a, b, crossing))
            return false;
        const DVec2 pa = m_p[size_t(a)], pb = m_p[size_t(b)];
        long long rounds = 0;
        const long long limit = 8 * static_cast<long long>(crossing.size()) * static_cast<long long>(crossing.size()) + 64;
        while (!crossing.empty()) {
            if (++rounds > limit || --m_budget < 0)
                return false;
            const auto [c, d] = crossing.front();
            crossing.pop_front();
            int t, k;
            if (!findEdge(c, d, t, k))
                return false;
            const int u = m_t[size_t(t)].n[size_t(k)];
            if (u < 0)
                return false;
            const int j = indexOfNeighbour(u, t);
            const int p = m_t[size_t(t)].v[size_t(k)];
            const int q = m_t[size_t(u)].v[size_t(j)];
            const DVec2 pp = m_p[size_t(p)], pq = m_p[size_t(q)];
            const double oc = orient2d(pp, pq, m_p[size_t(c)]);
            const double od = orient2d(pp, pq, m_p[size_t(d)]);
            if (!((oc > 0 && od < 0) || (oc < 0 && od > 0))) {
                crossing.emplace_back(c, d); // not convex yet: later
                continue;
            }
            flip(t, k, u, j);
            if (p == a || p == b || q == a || q == b)
                continue;
            const double sp = orient2d(pa, pb, pp), sq = orient2d(pa, pb, pq);
            if ((sp > 0 && sq < 0) || (sp < 0 && sq > 0))
                crossing.emplace_back(p, q);
            else if (sp == 0 || sq == 0)
                return false;
        }
        return hasEdge(a, b);
    }

    // The triangles inside the ring, reached from its edges without crossing one.
    bool inside(const std::vector<int>& order, std::vector<std::array<int, 3>>& out) const
    {
        const size_t n = order.size();
        // Ring edges join points that follow each other in the order.
        std::vector<int> position(n, -1);
        for (size_t k = 0; k < n; ++k)
            position[size_t(order[k])] = int(k);
        auto isConstraint = [&](int a, int b) {
            if (size_t(a) >= n || size_t(b) >= n)
                return false; // a corner of the starting triangle
            const int pa = position[size_t(a)], pb = position[size_t(b)];
            return size_t(pa + 1) % n == size_t(pb) || size_t(pb + 1) % n == size_t(pa);
        };
        std::vector<char> marked(m_t.size(), 0);
        std::vector<int> stack;
        for (size_t k = 0; k < n; ++k) {
            int t, e;
            if (!findEdge(order[k], order[(k + 1) % n], t, e))
                return false;
            // The edge's triangle on its left runs a -> b.
            const Tri& tri = m_t[size_t(t)];
            if (tri.v[size_t(nextOf(e))] != order[k]) {
                t = tri.n[size_t(e)];
                if (t < 0)
                    return false;
            }
            if (!marked[size_t(t)]) {
                marked[size_t(t)] = 1;
                stack.push_back(t);
            }
        }
        while (!stack.empty()) {
            const int t = stack.back();
            stack.pop_back();
            const Tri& tri = m_t[size_t(t)];
            for (int k = 0; k < 3; ++k) {
                if (tri.v[size_t(k)] >= m_firstSuper)
                    return false;
                if (isConstraint(tri.v[size_t(nextOf(k))], tri.v[size_t(prevOf(k))]))
                    continue;
                const int u = tri.n[size_t(k)];
                if (u < 0)
                    return false;
                if (!marked[size_t(u)]) {
                    marked[size_t(u)] = 1;
                    stack.push_back(u);
                }
            }
            out.push_back(tri.v);
        }
        return out.size() + 2 == n;
    }

private:
    int add(std::array<int, 3> v, std::array<int, 3> n)
    {
        m_t.push_back({v, n});
        const int t = int(m_t.size()) - 1;
        for (int x : v)
            m_vertTri[size_t(x)] = t;
        return t;
    }

    void set(int t, std::array<int, 3> v, std::array<int, 3> n)
    {
        m_t[size_t(t)] = {v, n};
        for (int x : v)
            m_vertTri[size_t(x)] = t;
    }

    void relink(int t, int from, int to)
    {
        if (t < 0)
            return;
        for (int& x : m_t[size_t(t)].n) {
            if (x == from) {
                x = to;
                return;
            }
        }
    }

    int indexOfNeighbour(int t, int neighbour) const
    {
        const Tri& tri = m_t[size_t(t)];
        return tri.n[0] == neighbour ? 0 : (tri.n[1] == neighbour ? 1 : 2);
    }

    int locate(const DVec2& q)
    {
        int t = m_last;
        int turn = 0;
        while (--m_budget >= 0) {
            const Tri& tri = m_t[size_t(t)];
            int next = -1;
            for (int e = 0; e < 3 && next < 0; ++e) {
                const int k = (e + turn) % 3;
                if (orient2d(m_p[size_t(tri.v[size_t(nextOf(k))])], m_p[size_t(tri.v[size_t(prevOf(k))])], q) < 0) {
                    next = tri.n[size_t(k)];
                    if (next < 0)
                        return -1; // outside everything
                }
            }
            turn = (turn + 1) % 3;
            if (next < 0)
                return t; // inside or on this triangle
            t = next;
        }
        return -1;
    }

    void splitTriangle(int t, int p)
    {
        const Tri tri = m_t[size_t(t)];
        const int a = tri.v[0], b = tri.v[1], c = tri.v[2];
        const int na = tri.n[0], nb = tri.n[1], nc = tri.n[2];
        const int t1 = int(m_t.size()), t2 = t1 + 1;
        set(t, {a, b, p}, {t1, t2, nc});
        add({b, c, p}, {t2, t, na});
        add({c, a, p}, {t, t1, nb});
        relink(na, t, t1);
        relink(nb, t, t2);
        m_last = t;
        legalize(t, 2);
        legalize(t1, 2);
        legalize(t2, 2);
    }

    bool splitEdge(int t, int k, int p)
    {
        const Tri tri = m_t[size_t(t)];
        const int u = tri.n[size_t(k)];
        if (u < 0)
            return false;
        const int a = tri.v[size_t(k)], b = tri.v[size_t(nextOf(k))], c = tri.v[size_t(prevOf(k))];
        const int nAB = tri.n[size_t(prevOf(k))], nCA = tri.n[size_t(nextOf(k))];
        const Tri other = m_t[size_t(u)];
        const int j = indexOfNeighbour(u, t);
        const int d = other.v[size_t(j)];
        // other is d, c, b counter-clockwise from j.
        const int nDC = other.n[size_t(prevOf(j))], nBD = other.n[size_t(nextOf(j))];
        const int t1 = int(m_t.size()), t3 = t1 + 1;
        const int t0 = t, t2 = u;
        set(t0, {a, b, p}, {t3, t1, nAB});
        add({a, p, c}, {t2, nCA, t0});
        set(t2, {d, c, p}, {t1, t3, nDC});
        add({d, p, b}, {t0, nBD, t2});
        relink(nCA, t, t1);
        relink(nBD, u, t3);
        m_last = t0;
        legalize(t0, 2);
        legalize(t1, 1);
        legalize(t2, 2);
        legalize(t3, 1);
        return true;
    }

    // Flips the edge opposite corner k of t (shared with u, whose corner j is
    // across it). t = (p, a, b) and u = (q, b, a) become (p, a, q) and (p, q, b).
    void flip(int t, int k, int u, int j)
    {
        const Tri tt = m_t[size_t(t)], uu = m_t[size_t(u)];
        const int p = tt.v[size_t(k)], a = tt.v[size_t(nextOf(k))], b = tt.v[size_t(prevOf(k))];
        const int q = uu.v[size_t(j)];
        const int tA = tt.n[size_t(nextOf(k))], tB = tt.n[size_t(prevOf(k))];
        const int uB = uu.n[size_t(nextOf(j))], uA = uu.n[size_t(prevOf(j))];
        set(t, {p, a, q}, {uB, u, tB});
        set(u, {p, q, b}, {uA, tA, t});
        relink(uB, u, t);
        relink(tA, t, u);
    }

    // Restores the Delaunay property across the edge opposite corner k of t.
    void legalize(int t, int k)
    {
        std::vector<std::pair<int, int>>& stack = m_legalizeStack;
        stack.assign(1, {t, k});
        while (!stack.empty() && --m_budget >= 0) {
            const auto [s, e] = stack.back();
            stack.pop_back();
            const Tri& tri = m_t[size_t(s)];
            const int u = tri.n[size_t(e)];
            if (u < 0)
                continue;
            const int j = indexOfNeighbour(u, s);
            const int q = m_t[size_t(u)].v[size_t(j)];
            const DVec2& pa = m_p[size_t(tri.v[0])];
            const DVec2& pb = m_p[size_t(tri.v[1])];
            const DVec2& pc = m_p[size_t(tri.v[2])];
            if (!(inCircle(pa, pb, pc, m_p[size_t(q)]) > 0))
                continue;
            flip(s, e, u, j);
            // s is now (p, a, q) and u is (p, q, b): check the edges opposite p.
            stack.emplace_back(s, 0);
            stack.emplace_back(u, 0);
        }
    }

    // Some triangle around a has b as a corner; the edge's triangle and the
    // index of the corner opposite it.
    bool findEdge(int a, int b, int& t, int& k) const
    {
        const int first = m_vertTri[size_t(a)];
        int s = first;
        for (size_t guard = 0; guard < m_t.size() + 1; ++guard) {
            const Tri& tri = m_t[size_t(s)];
            const int i = tri.v[0] == a ? 0 : (tri.v[1] == a ? 1 : 2);
            if (tri.v[size_t(nextOf(i))] == b) {
                t = s;
                k = prevOf(i);
                return true;
            }
            if (tri.v[size_t(prevOf(i))] == b) {
                t = s;
                k = nextOf(i);
                return true;
            }
            s = tri.n[size_t(prevOf(i))]; // across the edge (a, next): clockwise around a
            if (s < 0 || s == first)
                return false;
        }
        return false;
    }

    bool hasEdge(int a, int b) const
    {
        int t, k;
        return findEdge(a, b, t, k);
    }

    // The edges that the segment a-b crosses, from a to b, each as (right, left) corners.
    bool crossingEdges(int a, int b, std::deque<std::pair<int, int>>& out) const
    {
        const DVec2 pa = m_p[size_t(a)], pb = m_p[size_t(b)];
        const int first = m_vertTri[size_t(a)];
        int s = first;
        int t = -1, i = -1;
        for (size_t guard = 0; guard < m_t.size() + 1; ++guard) {
            const Tri& tri = m_t[size_t(s)];
            const int ia = tri.v[0] == a ? 0 : (tri.v[1] == a ? 1 : 2);
            const DVec2 pc = m_p[size_t(tri.v[size_t(nextOf(ia))])];
            const DVec2 pd = m_p[size_t(tri.v[size_t(prevOf(ia))])];
            const double oc = orient2d(pa, pc, pb), od = orient2d(pa, pd, pb);
            if (oc == 0 || od == 0) {
                if (oc == 0 && ((pc.x - pa.x) * (pb.x - pa.x) + (pc.y - pa.y) * (pb.y - pa.y)) > 0)
                    return false; // a corner on the segment
                if (od == 0 && ((pd.x - pa.x) * (pb.x - pa.x) + (pd.y - pa.y) * (pb.y - pa.y)) > 0)
                    return false;
            }
            if (oc > 0 && od < 0) {
                t = s;
                i = ia;
                break;
            }
            s = tri.n[size_t(prevOf(ia))];
            if (s < 0 || s == first)
                return false;
        }
        if (t < 0)
            return false;
        int c = m_t[size_t(t)].v[size_t(nextOf(i))];
        int d = m_t[size_t(t)].v[size_t(prevOf(i))];
        int u = m_t[size_t(t)].n[size_t(i)];
        for (size_t guard = 0; guard < m_t.size() + 1; ++guard) {
            out.emplace_back(c, d);
            if (u < 0)
                return false;
            const Tri& tri = m_t[size_t(u)];
            const int j = indexOfNeighbour(u, t);
            const int e = tri.v[size_t(j)];
            if (e == b)
                return true;
            const double oe = orient2d(pa, pb, m_p[size_t(e)]);
            if (oe == 0)
                return false;
            // The segment leaves through the edge from the right corner c or
            // to the left corner d, whichever has e on the other side.
            const int next = oe > 0 ? tri.n[size_t(indexOf(tri, d))] : tri.n[size_t(indexOf(tri, c))];
            if (oe > 0)
                d = e;
            else
                c = e;
            t = u;
            u = next;
        }
        return false;
    }

    static int indexOf(const Tri& tri, int v) { return tri.v[0] == v ? 0 : (tri.v[1] == v ? 1 : 2); }

    std::vector<DVec2> m_p;
    std::vector<Tri> m_t;
    std::vector<int> m_vertTri;
    int m_last = 0;
    int m_firstSuper = 0;
    long long m_budget;
    // Work list of legalize, kept to save an allocation per call.
    std::vector<std::pair<int, int>> m_legalizeStack;
};
} // namespace

bool delaunayByInsertion(const std::vector<DVec2>& points, const std::vector<int>& order,
                         std::vector<std::array<int, 3>>& triangles)
{
    triangles.clear();
    const size_t n = order.size();
    if (n < 3 || points.size() != n)
        return false;
    Mesh mesh(points, 200LL * static_cast<long long>(n) + 100000);
    if (!mesh.start())
        return false;

    // Biased randomised insertion order: random rounds of doubling size, each
    // along a Hilbert curve so that each walk starts near its point. Random
    // rounds keep the flips per point small however the ring is laid out; the
    // fixed seed keeps the result the same from run to run.
    double minX = points[0].x, maxX = minX, minY = points[0].y, maxY = minY;
    for (const DVec2& p : points) {
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    }
    const double scale = 65535.0 / std::max({maxX - minX, maxY - minY, 1e-300});
    std::vector<int> shuffled(n);
    for (size_t i = 0; i < n; ++i)
        shuffled[i] = int(i);
    std::mt19937 random(20240611u);
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    std::vector<std::pair<std::uint64_t, int>> sequence;
    sequence.reserve(n);
    for (size_t begin = 0, end = 1; begin < n; begin = end, end = std::min(n, end * 2)) {
        const size_t first = sequence.size();
        for (size_t k = begin; k < end; ++k) {
            const DVec2& p = points[size_t(shuffled[k])];
            const auto x = static_cast<std::uint32_t>((p.x - minX) * scale);
            const auto y = static_cast<std::uint32_t>((p.y - minY) * scale);
            sequence.emplace_back(hilbertIndex(std::min(x, 65535u), std::min(y, 65535u)), shuffled[k]);
        }
        std::sort(sequence.begin() + long(first), sequence.end());
    }
    for (const auto& [key, index] : sequence) {
        if (!mesh.insert(index))
            return false;
    }
    for (size_t k = 0; k < n; ++k) {
        if (!mesh.forceEdge(order[k], order[(k + 1) % n]))
            return false;
    }
    if (!mesh.inside(order, triangles)) {
        triangles.clear();
        return false;
    }
    // Rounding must not have turned a triangle over or lost area.
    double area = 0;
    double ringArea = 0;
    for (const std::array<int, 3>& t : triangles) {
        const double twice = orient2d(points[size_t(t[0])], points[size_t(t[1])], points[size_t(t[2])]);
        if (!(twice > 0)) {
            triangles.clear();
            return false;
        }
        area += twice;
    }
    for (size_t k = 0; k < n; ++k)
        ringArea += cross(points[size_t(order[k])] - points[size_t(order[0])],
                          points[size_t(order[(k + 1) % n])] - points[size_t(order[0])]);
    if (!(std::fabs(area - ringArea) <= 1e-9 * std::fabs(ringArea) + 1e-300)) {
        triangles.clear();
        return false;
    }
    return true;
}
