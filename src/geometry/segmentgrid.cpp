#include "geometry/segmentgrid.h"

#include <algorithm>
#include <cmath>

SegmentGrid::SegmentGrid(const std::vector<DVec2>& points, size_t cellTarget)
{
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    if (!points.empty()) {
        minX = maxX = points[0].x;
        minY = maxY = points[0].y;
    }
    for (const DVec2& p : points) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    const double w = maxX - minX;
    const double h = maxY - minY;
    const double target = double(std::max<size_t>(cellTarget, 1));
    const double extent = std::max({w, h, std::fabs(minX), std::fabs(maxX), std::fabs(minY), std::fabs(maxY), 1e-30});
    m_cell = std::max({std::sqrt(w * h / target), std::max(w, h) / target, extent * 1e-9});
    // Rounding in the callers' intersection points stays far inside this.
    m_margin = m_cell * 1e-3 + extent * 1e-12;
    m_minX = minX - m_cell;
    m_minY = minY - m_cell;
    m_nx = int(std::min(w / m_cell + 3, 1e8));
    m_ny = int(std::min(h / m_cell + 3, 1e8));
    m_cells.resize(size_t(m_nx) * size_t(m_ny));
    m_cellSeen.assign(m_cells.size(), 0);
}

int SegmentGrid::steps(const DVec2& a, const DVec2& b) const
{
    const double length = std::sqrt(distanceSquared(a, b));
    return std::max(1, int(std::min(std::ceil(length / m_cell), 1e8)));
}

template <class F>
void SegmentGrid::forEachCell(const DVec2& a, const DVec2& b, F&& f)
{
    const int count = steps(a, b);
    const DVec2 d = b - a;
    // Consecutive steps overlap in at most their shared cells; skip those.
    int lastX0 = -1, lastY0 = -1, lastX1 = -2, lastY1 = -2;
    for (int s = 0; s < count; ++s) {
        const DVec2 p = a + d * (double(s) / count);
        const DVec2 q = s + 1 == count ? b : a + d * (double(s + 1) / count);
        int x0, y0, x1, y1;
        cellRange(p, q, x0, y0, x1, y1);
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                if (x >= lastX0 && x <= lastX1 && y >= lastY0 && y <= lastY1)
                    continue;
                f(m_cells[size_t(y) * size_t(m_nx) + size_t(x)]);
            }
        }
        lastX0 = x0, lastY0 = y0, lastX1 = x1, lastY1 = y1;
    }
}

void SegmentGrid::insert(int id, const DVec2& a, const DVec2& b)
{
    if (size_t(id) >= m_removed.size()) {
        m_removed.resize(size_t(id) + 1, 0);
        m_seen.resize(size_t(id) + 1, 0);
    }
    m_removed[size_t(id)] = 0;
    forEachCell(a, b, [id](std::vector<int>& cell) { cell.push_back(id); });
}

void SegmentGrid::remove(int id)
{
    if (size_t(id) < m_removed.size())
        m_removed[size_t(id)] = 1;
}

DVec2 SegmentGrid::exitPoint(const DVec2& a, const DVec2& dir) const
{
    // Far enough along dir to leave the grid's box from anywhere inside it.
    const double span = (m_nx + m_ny + 2) * m_cell;
    const double length = std::sqrt(dir.x * dir.x + dir.y * dir.y);
    if (!(length > 0))
        return a;
    return a + dir * (span / length);
}
