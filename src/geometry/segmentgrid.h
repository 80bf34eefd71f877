#pragma once

#include "geometry/dvec2.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

/// A uniform grid of segment ids over a fixed rectangle, for finding the
/// segments that may meet a query segment without looking at all of them.
///
/// A segment is filed under every cell it passes through, with a small margin,
/// and a query walks the cells along its own segment from its start, so any
/// stored segment that shares a point with the query is visited. Ids are
/// visited at most once per query. Removal only marks the id; cells drop
/// removed ids when a query next walks through them.
class SegmentGrid
{
public:
    /// A grid over the box of the points with about `cellTarget` cells.
    SegmentGrid(const std::vector<DVec2>& points, size_t cellTarget);

    /// Files the segment a-b under the id.
    void insert(int id, const DVec2& a, const DVec2& b);
    /// Takes a filed id out: queries no longer visit it.
    void remove(int id);

    /// Calls visit(id) for the ids filed along the segment from a to b, in
    /// steps of at most a cell from a. Before each step, keepGoing(distance) is
    /// asked with the distance from a that the step starts at; the walk ends
    /// when it returns false, when visit returns false, or at b.
    template <class Visit, class KeepGoing>
    void walk(const DVec2& a, const DVec2& b, Visit&& visit, KeepGoing&& keepGoing);

    /// Side length of one cell.
    double cellSize() const { return m_cell; }

    /// The query segment from a in direction dir that reaches the edge of the grid.
    DVec2 exitPoint(const DVec2& a, const DVec2& dir) const;

private:
    void cellRange(const DVec2& p, const DVec2& q, int& x0, int& y0, int& x1, int& y1) const
    {
        x0 = cellX(std::min(p.x, q.x) - m_margin);
        x1 = cellX(std::max(p.x, q.x) + m_margin);
        y0 = cellY(std::min(p.y, q.y) - m_margin);
        y1 = cellY(std::max(p.y, q.y) + m_margin);
    }
    int cellX(double x) const { return std::clamp(int(std::floor((x - m_minX) / m_cell)), 0, m_nx - 1); }
    int cellY(double y) const { return std::clamp(int(std::floor((y - m_minY) / m_cell)), 0, m_ny - 1); }
    // Calls f(cell list) once for every cell the segment a-b is filed under.
    template <class F>
    void forEachCell(const DVec2& a, const DVec2& b, F&& f);
    int steps(const DVec2& a, const DVec2& b) const;

    double m_minX = 0;
    double m_minY = 0;
    double m_cell = 1;
    double m_margin = 0;
    int m_nx = 1;
    int m_ny = 1;
    std::vector<std::vector<int>> m_cells;
    std::vector<std::uint32_t> m_seen;
    std::vector<std::uint32_t> m_cellSeen;
    std::vector<char> m_removed;
    std::uint32_t m_stamp = 0;
};

template <class Visit, class KeepGoing>
void SegmentGrid::walk(const DVec2& a, const DVec2& b, Visit&& visit, KeepGoing&& keepGoing)
{
    if (++m_stamp == 0) {
        std::fill(m_seen.begin(), m_seen.end(), 0);
        std::fill(m_cellSeen.begin(), m_cellSeen.end(), 0);
        m_stamp = 1;
    }
    const int count = steps(a, b);
    const DVec2 d = b - a;
    const double length = std::sqrt(d.x * d.x + d.y * d.y);
    for (int s = 0; s < count; ++s) {
        if (!keepGoing(length * s / count))
            return;
        const DVec2 p = a + d * (double(s) / count);
        const DVec2 q = s + 1 == count ? b : a + d * (double(s + 1) / count);
        int x0, y0, x1, y1;
        cellRange(p, q, x0, y0, x1, y1);
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                const size_t index = size_t(y) * size_t(m_nx) + size_t(x);
                if (m_cellSeen[index] == m_stamp)
                    continue;
                m_cellSeen[index] = m_stamp;
                std::vector<int>& cell = m_cells[index];
                // Drop removed ids on the way.
                size_t kept = 0;
                bool stop = false;
                for (size_t k = 0; k < cell.size(); ++k) {
                    const int id = cell[k];
                    if (m_removed[size_t(id)])
                        continue;
                    cell[kept++] = id;
                    if (stop || m_seen[size_t(id)] == m_stamp)
                        continue;
                    m_seen[size_t(id)] = m_stamp;
                    stop = !visit(id);
                }
                cell.resize(kept);
                if (stop)
                    return;
            }
        }
    }
}
