#include "geometry/earclipping.h"

#include <algorithm>
#include <cmath>

namespace
{
// A point inside or on the closed triangle a, b, c (counter-clockwise).
bool inTriangle(const DVec2& a, const DVec2& b, const DVec2& c, const DVec2& p)
{
    return orient2d(a, b, p) >= 0 && orient2d(b, c, p) >= 0 && orient2d(c, a, p) >= 0;
}

// The remaining points of the ring in a uniform grid, removable one by one.
class PointGrid
{
public:
    PointGrid(const std::vector<DVec2>& points, const std::vector<int>& order) : m_where(order.size())
    {
        double minX = points[size_t(order[0])].x, maxX = minX;
        double minY = points[size_t(order[0])].y, maxY = minY;
        for (int index : order) {
            const DVec2& p = points[size_t(index)];
            minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
            minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
        }
        const double w = maxX - minX, h = maxY - minY;
        const double target = double(order.size());
        const double extent = std::max({w, h, std::fabs(minX), std::fabs(maxX), std::fabs(minY), std::fabs(maxY), 1e-30});
        m_cell = std::max({std::sqrt(w * h / target), std::max(w, h) / target, extent * 1e-9});
        m_margin = m_cell * 1e-3 + extent * 1e-12;
        m_minX = minX;
        m_minY = minY;
        m_nx = int(std::min(w / m_cell + 1, 1e8));
        m_ny = int(std::min(h / m_cell + 1, 1e8));
        m_cells.resize(size_t(m_nx) * size_t(m_ny));
        for (size_t k = 0; k < order.size(); ++k) {
            const DVec2& p = points[size_t(order[k])];
            const size_t cell = size_t(cellY(p.y)) * size_t(m_nx) + size_t(cellX(p.x));
            m_where[k] = {cell, m_cells[cell].size()};
            m_cells[cell].push_back(int(k));
        }
    }

    void remove(int k)
    {
        const auto [cell, slot] = m_where[size_t(k)];
        std::vector<int>& list = m_cells[cell];
        const int moved = list.back();
        list[slot] = moved;
        m_where[size_t(moved)].second = slot;
        list.pop_back();
    }

    // Calls f(k) for the remaining points in the cells that the triangle a, b,
    // c touches (row by row, so a long thin triangle costs its own area, not
    // that of its box); stops when f returns false.
    template <class F>
    bool forEachNear(const DVec2& a, const DVec2& b, const DVec2& c, F&& f) const
    {
        const int y0 = cellY(std::min({a.y, b.y, c.y}) - m_margin);
        const int y1 = cellY(std::max({a.y, b.y, c.y}) + m_margin);
        const DVec2 corners[3] = {a, b, c};
        for (int y = y0; y <= y1; ++y) {
            // The triangle's x extent within this row: its corners in the row
            // and its sides cut at the row's lower and upper lines.
            const double low = m_minY + y * m_cell - m_margin;
            const double high = low + m_cell + 2 * m_margin;
            double minX = INFINITY, maxX = -INFINITY;
            for (int e = 0; e < 3; ++e) {
                const DVec2& p = corners[e];
                const DVec2& q = corners[(e + 1) % 3];
                double t0 = 0, t1 = 1;
                const double dy = q.y - p.y;
                if (dy == 0) {
                    if (p.y < low || p.y > high)
                        continue;
                } else {
                    double ta = (low - p.y) / dy, tb = (high - p.y) / dy;
                    if (ta > tb)
                        std::swap(ta, tb);
                    t0 = std::max(t0, ta);
                    t1 = std::min(t1, tb);
                    if (t0 > t1)
                        continue;
                }
                const double xa = p.x + (q.x - p.x) * t0, xb = p.x + (q.x - p.x) * t1;
                minX = std::min({minX, xa, xb});
                maxX = std::max({maxX, xa, xb});
            }
            if (minX > maxX)
                continue;
            const int x0 = cellX(minX - m_margin);
            const int x1 = cellX(maxX + m_margin);
            for (int x = x0; x <= x1; ++x) {
                for (int k : m_cells[size_t(y) * size_t(m_nx) + size_t(x)]) {
                    if (!f(k))
                        return false;
                }
            }
        }
        return true;
    }

private:
    int cellX(double x) const { return std::clamp(int(std::floor((x - m_minX) / m_cell)), 0, m_nx - 1); }
    int cellY(double y) const { return std::clamp(int(std::floor((y - m_minY) / m_cell)), 0, m_ny - 1); }

    double m_minX = 0, m_minY = 0, m_cell = 1, m_margin = 0;
    int m_nx = 1, m_ny = 1;
    std::vector<std::vector<int>> m_cells;
    std::vector<std::pair<size_t, size_t>> m_where;
};
} // namespace

std::vector<std::array<int, 3>> clipEars(const std::vector<DVec2>& pts, const std::vector<int>& order)
{
    const int n = static_cast<int>(order.size());
    std::vector<std::array<int, 3>> triangles;
    if (n < 3)
        return triangles;
    std::vector<int> prev(static_cast<size_t>(n));
    std::vector<int> next(static_cast<size_t>(n));
    for (int k = 0; k < n; ++k) {
        prev[size_t(k)] = (k + n - 1) % n;
        next[size_t(k)] = (k + 1) % n;
    }
    auto point = [&](int k) -> const DVec2& { return pts[size_t(order[size_t(k)])]; };
    PointGrid grid(pts, order);
    auto isEar = [&](int k) {
        const int pk = prev[size_t(k)], nk = next[size_t(k)];
        const DVec2& a = point(pk);
        const DVec2& b = point(k);
        const DVec2& c = point(nk);
        if (!(orient2d(a, b, c) > 0))
            return false;
        return grid.forEachNear(a, b, c, [&](int m) {
            if (m == pk || m == k || m == nk)
                return true;
            const DVec2& p = point(m);
            if (p == a || p == b || p == c)
                return true;
            return !inTriangle(a, b, c, p);
        });
    };

    triangles.reserve(size_t(n - 2));
    int remaining = n;
    int cursor = 0;
    auto clip = [&](int k) {
        const int pk = prev[size_t(k)], nk = next[size_t(k)];
        triangles.push_back({order[size_t(pk)], order[size_t(k)], order[size_t(nk)]});
        next[size_t(pk)] = nk;
        prev[size_t(nk)] = pk;
        grid.remove(k);
        --remaining;
        return nk;
    };
    while (remaining > 3) {
        bool clipped = false;
        int k = cursor;
        for (int steps = remaining; steps > 0 && remaining > 3; --steps) {
            if (isEar(k)) {
                k = next[size_t(clip(k))];
                clipped = true;
                --steps;
            } else {
                k = next[size_t(k)];
            }
        }
        cursor = k;
        if (clipped)
            continue;
        // No proper ear (not simple, or numerically flat): clip the most
        // convex corner instead, or the flattest one, so the loop always ends.
        double bestTurn = -INFINITY;
        int best = -1;
        k = cursor;
        for (int visited = 0; visited < remaining; ++visited, k = next[size_t(k)]) {
            const double turn = orient2d(point(prev[size_t(k)]), point(k), point(next[size_t(k)]));
            const double score = turn > 0 ? turn : -std::fabs(turn) - 1e300;
            if (score > bestTurn || best < 0) {
                bestTurn = score;
                best = k;
            }
        }
        cursor = clip(best);
    }
    triangles.push_back({order[size_t(prev[size_t(cursor)])], order[size_t(cursor)], order[size_t(next[size_t(cursor)])]});
    return triangles;
}
