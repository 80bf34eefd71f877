#include "sampling/outlinetracer.h"

#include "geometry/signedarea.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// Marching squares over the grid of pixel centres, padded with one ring of
// empty nodes so that every outline closes. Node (X, Y) of the padded grid
// stands for pixel (X - 1, Y - 1) and lies at (X - 0.5, Y - 0.5). A cell
// joins four nodes; each of its four sides is an edge of the grid, and a
// crossing of the threshold lies on every edge whose two nodes differ.
// Within a cell the crossings are joined into oriented steps (solid on the
// left), so that each crossing is the start of exactly one step; following
// the steps from crossing to crossing walks each outline once.
namespace
{
// Steps of each cell case, as pairs of cell sides (0 top, 1 right, 2
// bottom, 3 left), from -> to. Corner bits: top-left 8, top-right 4,
// bottom-right 2, bottom-left 1. The two saddle cases (5, 10) have a second
// row used when the cell's centre is solid.
struct CaseSteps
{
    int count;
    int steps[2][2];
};

constexpr CaseSteps kSteps[16] = {
    {0, {{0, 0}, {0, 0}}}, {1, {{3, 2}, {0, 0}}}, {1, {{2, 1}, {0, 0}}}, {1, {{3, 1}, {0, 0}}},
    {1, {{1, 0}, {0, 0}}}, {2, {{1, 0}, {3, 2}}}, {1, {{2, 0}, {0, 0}}}, {1, {{3, 0}, {0, 0}}},
    {1, {{0, 3}, {0, 0}}}, {1, {{0, 2}, {0, 0}}}, {2, {{0, 3}, {2, 1}}}, {1, {{0, 1}, {0, 0}}},
    {1, {{1, 3}, {0, 0}}}, {1, {{1, 2}, {0, 0}}}, {1, {{2, 3}, {0, 0}}}, {0, {{0, 0}, {0, 0}}},
};
constexpr CaseSteps kSaddleSolidCentre[16] = {
    {}, {}, {}, {}, {}, {2, {{3, 0}, {1, 2}}}, {}, {}, {}, {}, {2, {{0, 1}, {2, 3}}}, {}, {}, {}, {}, {},
};

class Tracer
{
public:
    Tracer(const ScalarField& field, float threshold)
        : m_field(field), m_threshold(threshold), m_nx(field.width + 2), m_ny(field.height + 2),
          m_horizontalCount(size_t(m_nx) * size_t(m_ny)), m_next(2 * m_horizontalCount, -1)
    {
    }

    std::vector<TracedRing> run()
    {
        linkSteps();
        std::vector<TracedRing> rings;
        for (size_t e = 0; e < m_horizontalCount; ++e) {
            if (m_next[e] < 0)
                continue;
            TracedRing ring;
            int current = int(e);
            while (m_next[size_t(current)] >= 0) {
                addPoint(ring.points, crossing(current));
                const int following = m_next[size_t(current)];
                m_next[size_t(current)] = -1;
                current = following;
            }
            addPoint(ring.points, ring.points.front());
            ring.points.pop_back();
            ring.area = signedArea(ring.points);
            ring.hole = ring.area < 0;
            rings.push_back(std::move(ring));
        }
        findParents(rings);
        return rings;
    }

private:
    bool onVerticalBorder(Vec2 p) const { return p.x == 0.0f || p.x == float(m_field.width); }
    bool onHorizontalBorder(Vec2 p) const { return p.y == 0.0f || p.y == float(m_field.height); }

    // Appends a point; a step from one side of the field round a corner to
    // the next side gets the corner itself, so a solid corner stays square.
    void addPoint(std::vector<Vec2>& points, Vec2 p) const
    {
        if (!points.empty()) {
            const Vec2 last = points.back();
            if (onVerticalBorder(last) && onHorizontalBorder(p) && !onHorizontalBorder(last))
                points.push_back({last.x, p.y});
            else if (onHorizontalBorder(last) && onVerticalBorder(p) && !onVerticalBorder(last))
                points.push_back({p.x, last.y});
        }
        points.push_back(p);
    }

    bool solid(int x, int y) const { return value(x, y) >= m_threshold; }

    // Value of a padded node; the padding is empty.
    float value(int x, int y) const
    {
        const int px = x - 1, py = y - 1;
        if (px < 0 || py < 0 || px >= m_field.width || py >= m_field.height)
            return 0.0f;
        const float v = m_field.at(px, py);
        return std::isfinite(v) ? v : 0.0f;
    }

    int horizontal(int x, int y) const { return y * m_nx + x; }
    int vertical(int x, int y) const { return int(m_horizontalCount) + y * m_nx + x; }

    int side(int x, int y, int which) const
    {
        switch (which) {
        case 0: return horizontal(x, y);
        case 1: return vertical(x + 1, y);
        case 2: return horizontal(x, y + 1);
        default: return vertical(x, y);
        }
    }

    void linkSteps()
    {
        for (int y = 0; y + 1 < m_ny; ++y) {
            for (int x = 0; x + 1 < m_nx; ++x) {
                const int index = (solid(x, y) ? 8 : 0) | (solid(x + 1, y) ? 4 : 0) | (solid(x + 1, y + 1) ? 2 : 0) |
                                  (solid(x, y + 1) ? 1 : 0);
                const CaseSteps* steps = &kSteps[index];
                if (index == 5 || index == 10) {
                    const float centre =
                        (value(x, y) + value(x + 1, y) + value(x + 1, y + 1) + value(x, y + 1)) * 0.25f;
                    if (centre >= m_threshold)
                        steps = &kSaddleSolidCentre[index];
                }
                for (int s = 0; s < steps->count; ++s)
                    m_next[size_t(side(x, y, steps->steps[s][0]))] = side(x, y, steps->steps[s][1]);
            }
        }
    }

    // The crossing on an edge, in pixel coordinates.
    Vec2 crossing(int edge) const
    {
        const bool isHorizontal = size_t(edge) < m_horizontalCount;
        const int local = isHorizontal ? edge : edge - int(m_horizontalCount);
        const int x0 = local % m_nx, y0 = local / m_nx;
        const int x1 = isHorizontal ? x0 + 1 : x0, y1 = isHorizontal ? y0 : y0 + 1;
        const float a = x0 - 0.5f, b = y0 - 0.5f;
        // A step from the field into the padding ends on the field's border.
        if (isHorizontal && (x0 == 0 || x1 == m_nx - 1))
            return {x0 == 0 ? 0.0f : float(m_field.width), b};
        if (!isHorizontal && (y0 == 0 || y1 == m_ny - 1))
            return {a, y0 == 0 ? 0.0f : float(m_field.height)};
        const float v0 = value(x0, y0), v1 = value(x1, y1);
        const float t = v0 == v1 ? 0.5f : std::clamp((v0 - m_threshold) / (v0 - v1), 0.0f, 1.0f);
        return isHorizontal ? Vec2{a + t, b} : Vec2{a, b + t};
    }

    struct Box
    {
        float lx, ly, ux, uy;
        bool contains(const Box& o) const { return lx <= o.lx && ly <= o.ly && ux >= o.ux && uy >= o.uy; }
    };

    static Box boxOf(const std::vector<Vec2>& points)
    {
        Box box{points[0].x, points[0].y, points[0].x, points[0].y};
        for (const Vec2& p : points) {
            box.lx = std::min(box.lx, p.x);
            box.ly = std::min(box.ly, p.y);
            box.ux = std::max(box.ux, p.x);
            box.uy = std::max(box.uy, p.y);
        }
        return box;
    }

    static bool inside(const std::vector<Vec2>& ring, Vec2 p)
    {
        bool in = false;
        for (size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
            const Vec2& a = ring[i];
            const Vec2& b = ring[j];
            if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
                in = !in;
        }
        return in;
    }

    // The enclosing ring of each ring is the smallest one containing it.
    // Rings do not cross, so one of its points decides; a crossing of the
    // threshold is never shared, so that point is on no other ring.
    static void findParents(std::vector<TracedRing>& rings)
    {
        std::vector<Box> boxes;
        boxes.reserve(rings.size());
        for (const TracedRing& r : rings)
            boxes.push_back(boxOf(r.points));
        std::vector<size_t> bySize(rings.size());
        std::iota(bySize.begin(), bySize.end(), 0);
        std::sort(bySize.begin(), bySize.end(),
                  [&](size_t a, size_t b) { return std::fabs(rings[a].area) < std::fabs(rings[b].area); });
        std::vector<size_t> rank(rings.size());
        for (size_t i = 0; i < bySize.size(); ++i)
            rank[bySize[i]] = i;
        for (size_t i = 0; i < rings.size(); ++i) {
            for (size_t k = rank[i] + 1; k < bySize.size(); ++k) {
                const size_t j = bySize[k];
                if (boxes[j].contains(boxes[i]) && inside(rings[j].points, rings[i].points[0])) {
                    rings[i].parent = int(j);
                    break;
                }
            }
        }
    }

    const ScalarField& m_field;
    float m_threshold;
    int m_nx;
    int m_ny;
    size_t m_horizontalCount;
    std::vector<int> m_next;
};
} // namespace

std::vector<TracedRing> traceOutlines(const ScalarField& field, float threshold)
{
    if (field.width <= 0 || field.height <= 0 || field.values.size() != size_t(field.width) * size_t(field.height))
        return {};
    // Solid needs a value above the empty padding.
    const float t = std::isfinite(threshold) ? std::max(threshold, 1.0f / 1024.0f) : 0.5f;
    return Tracer(field, t).run();
}
