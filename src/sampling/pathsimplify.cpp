#include "sampling/pathsimplify.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace
{
constexpr double kPi = 3.14159265358979323846;

// The points as a doubly linked list with a priority queue of removal
// costs; entries of the queue go stale when a neighbour is removed and are
// recognised by the version they were made for.
class Simplifier
{
public:
    Simplifier(const std::vector<Vec2>& points, bool closed)
        : m_points(points), m_closed(closed), m_prev(points.size()), m_next(points.size()),
          m_alive(points.size(), true), m_version(points.size(), 0), m_count(points.size())
    {
        const size_t n = points.size();
        for (size_t i = 0; i < n; ++i) {
            m_prev[i] = i == 0 ? (closed ? int(n) - 1 : -1) : int(i) - 1;
            m_next[i] = i + 1 == n ? (closed ? 0 : -1) : int(i) + 1;
        }
    }

    size_t count() const { return m_count; }

    // Removes points while `cost` is below `limit` (or while more than
    // `keep` points remain, when `limit` is infinite).
    template <class Cost>
    void reduce(Cost cost, double limit, size_t keep)
    {
        using Entry = std::pair<double, std::pair<int, int>>; // cost, (point, version)
        std::priority_queue<Entry, std::vector<Entry>, std::greater<Entry>> queue;
        auto push = [&](int i) {
            if (removable(i))
                queue.push({cost(i), {i, m_version[size_t(i)]}});
        };
        for (size_t i = 0; i < m_points.size(); ++i)
            if (m_alive[i])
                push(int(i));
        const size_t floor = m_closed ? 3 : 2;
        while (!queue.empty() && m_count > floor) {
            const auto [c, ref] = queue.top();
            queue.pop();
            const auto [i, version] = ref;
            if (!m_alive[size_t(i)] || version != m_version[size_t(i)])
                continue;
            if (std::isinf(limit) ? m_count <= keep : c >= limit)
                break;
            remove(i);
            push(m_prev[size_t(i)]);
            push(m_next[size_t(i)]);
        }
    }

    // Turn at a point, radians (0 on a straight line).
    double turn(int i) const
    {
        const Vec2 a = m_points[size_t(m_prev[size_t(i)])], b = m_points[size_t(i)], c = m_points[size_t(m_next[size_t(i)])];
        const double ux = double(b.x) - a.x, uy = double(b.y) - a.y, vx = double(c.x) - b.x, vy = double(c.y) - b.y;
        if ((ux == 0 && uy == 0) || (vx == 0 && vy == 0))
            return 0;
        return std::fabs(std::atan2(ux * vy - uy * vx, ux * vx + uy * vy));
    }

    // Area of the triangle a point makes with its neighbours.
    double area(int i) const
    {
        const Vec2 a = m_points[size_t(m_prev[size_t(i)])], b = m_points[size_t(i)], c = m_points[size_t(m_next[size_t(i)])];
        return std::fabs((double(b.x) - a.x) * (double(c.y) - a.y) - (double(c.x) - a.x) * (double(b.y) - a.y)) * 0.5;
    }

    // Area relative to the longer of the two sides, so that straightness
    // does not depend on the scale of the points.
    double deviation(int i) const
    {
        const Vec2 a = m_points[size_t(m_prev[size_t(i)])], b = m_points[size_t(i)], c = m_points[size_t(m_next[size_t(i)])];
        const double span = std::max(std::hypot(double(b.x) - a.x, double(b.y) - a.y), std::hypot(double(c.x) - b.x, double(c.y) - b.y));
        return span == 0 ? 0 : 2 * area(i) / (span * span);
    }

    std::vector<Vec2> result() const
    {
        std::vector<Vec2> out;
        out.reserve(m_count);
        for (size_t i = 0; i < m_points.size(); ++i)
            if (m_alive[i])
                out.push_back(m_points[i]);
        return out;
    }

private:
    bool removable(int i) const { return i >= 0 && m_alive[size_t(i)] && m_prev[size_t(i)] >= 0 && m_next[size_t(i)] >= 0; }

    void remove(int i)
    {
        const int p = m_prev[size_t(i)], n = m_next[size_t(i)];
        m_alive[size_t(i)] = false;
        --m_count;
        if (p >= 0) {
            m_next[size_t(p)] = n;
            ++m_version[size_t(p)];
        }
        if (n >= 0) {
            m_prev[size_t(n)] = p;
            ++m_version[size_t(n)];
        }
    }

    const std::vector<Vec2>& m_points;
    bool m_closed;
    std::vector<int> m_prev;
    std::vector<int> m_next;
    std::vector<bool> m_alive;
    std::vector<int> m_version;
    size_t m_count;
};

std::vector<Vec2> withoutRepeats(const std::vector<Vec2>& points, bool closed)
{
    std::vector<Vec2> out;
    out.reserve(points.size());
    for (const Vec2& p : points)
        if (std::isfinite(p.x) && std::isfinite(p.y) && (out.empty() || !(out.back() == p)))
            out.push_back(p);
    while (closed && out.size() > 1 && out.front() == out.back())
        out.pop_back();
    return out;
}
} // namespace

std::vector<Vec2> simplifyPath(const std::vector<Vec2>& points, bool closed, int maxPoints, float minAngleDegrees)
{
    std::vector<Vec2> clean = withoutRepeats(points, closed);
    if (clean.size() <= (closed ? 3u : 2u))
        return clean;
    Simplifier s(clean, closed);
    s.reduce([&](int i) { return s.deviation(i); }, 1e-6, 0);
    if (std::isfinite(minAngleDegrees) && minAngleDegrees > 0)
        s.reduce([&](int i) { return s.turn(i); }, double(minAngleDegrees) * kPi / 180.0, 0);
    if (maxPoints > 0 && s.count() > size_t(maxPoints))
        s.reduce([&](int i) { return s.area(i); }, INFINITY, size_t(maxPoints));
    return s.result();
}
