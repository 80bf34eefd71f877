#include "views/shapegeometry.h"

#include "geometry/signedarea.h"
#include "views/ringfill.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace
{
constexpr float kPi = std::numbers::pi_v<float>;

bool isConvex(const std::vector<Vec2>& ring)
{
    const size_t n = ring.size();
    int sign = 0;
    for (size_t i = 0; i < n; ++i) {
        const Vec2 a = ring[i], b = ring[(i + 1) % n], c = ring[(i + 2) % n];
        const double cross = double(b.x - a.x) * (c.y - b.y) - double(b.y - a.y) * (c.x - b.x);
        if (cross == 0)
            continue;
        const int s = cross > 0 ? 1 : -1;
        if (sign != 0 && s != sign)
            return false;
        sign = s;
    }
    return true;
}
} // namespace

GeomVertex geomVertex(Vec2 p, const QColor& colour, float ox, float oy)
{
    // One conversion for the four channels (the same values as red() and the others).
    const QRgb c = colour.rgba();
    return {p.x, p.y, ox, oy, std::uint8_t(qRed(c)), std::uint8_t(qGreen(c)), std::uint8_t(qBlue(c)),
            std::uint8_t(qAlpha(c))};
}

void ShapeTessellator::include(Vec2 p, float margin)
{
    if (!std::isfinite(p.x) || !std::isfinite(p.y))
        return;
    if (m_target.isEmpty()) {
        m_target.lo = {p.x - margin, p.y - margin};
        m_target.hi = {p.x + margin, p.y + margin};
        return;
    }
    m_target.lo = {std::min(m_target.lo.x, p.x - margin), std::min(m_target.lo.y, p.y - margin)};
    m_target.hi = {std::max(m_target.hi.x, p.x + margin), std::max(m_target.hi.y, p.y + margin)};
}

void ShapeTessellator::triangle(Vec2 a, Vec2 b, Vec2 c, const QColor& colour)
{
    // A clear triangle blends to nothing (colour and alpha alike).
    if (colour.alpha() == 0)
        return;
    GeomVertex v = geomVertex(a, colour);
    m_target.triangles.push_back(v);
    v.x = b.x;
    v.y = b.y;
    m_target.triangles.push_back(v);
    v.x = c.x;
    v.y = c.y;
    m_target.triangles.push_back(v);
}

void ShapeTessellator::segment(Vec2 a, Vec2 b, const QColor& colour)
{
    if (m_halo.isValid()) {
        // Copies shifted by whole screen pixels to each side, under the line itself.
        for (float d = 1; d <= kHaloPixels; d += 1) {
            for (const auto& [ox, oy] : {std::pair{d, 0.f}, {-d, 0.f}, {0.f, d}, {0.f, -d}}) {
                m_target.lines.push_back(geomVertex(a, m_halo, ox, oy));
                m_target.lines.push_back(geomVertex(b, m_halo, ox, oy));
            }
        }
    }
    GeomVertex v = geomVertex(a, colour);
    m_target.lines.push_back(v);
    v.x = b.x;
    v.y = b.y;
    m_target.lines.push_back(v);
}

void ShapeTessellator::fan(Vec2 center, float radius, float from, float to, int segments, const QColor& colour)
{
    segments = std::max(1, segments);
    Vec2 previous{center.x + radius * std::cos(from), center.y + radius * std::sin(from)};
    for (int i = 1; i <= segments; ++i) {
        const float t = from + (to - from) * float(i) / float(segments);
        const Vec2 next{center.x + radius * std::cos(t), center.y + radius * std::sin(t)};
        triangle(center, previous, next, colour);
        previous = next;
    }
}

void ShapeTessellator::disc(Vec2 center, float radius, int segments, const QColor& colour)
{
    // The rim's corners as a fan from the centre would have them, but the
    // triangles fan out from the first corner: the same area in two fewer
    // triangles (the last corner, a whole turn round, is the first again).
    segments = std::max(3, segments);
    const Vec2 first{center.x + radius * std::cos(0.f), center.y + radius * std::sin(0.f)};
    Vec2 previous{};
    for (int i = 1; i < segments; ++i) {
        const float t = 2 * kPi * float(i) / float(segments);
        const Vec2 next{center.x + radius * std::cos(t), center.y + radius * std::sin(t)};
        if (i > 1)
            triangle(first, previous, next, colour);
        previous = next;
    }
}

void ShapeTessellator::circle(Vec2 center, float radius, float angle, const QColor& fill, const QColor& outline)
{
    disc(center, radius, m_circleSegments, fill);
    include(center, radius);
    if (!drawsOutlines())
        return;
    Vec2 previous{center.x + radius, center.y};
    for (int i = 1; i <= m_circleSegments; ++i) {
        const float t = 2 * kPi * float(i) / float(m_circleSegments);
        const Vec2 next{center.x + radius * std::cos(t), center.y + radius * std::sin(t)};
        segment(previous, next, outline);
        previous = next;
    }
    segment(center, {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)}, outline);
}

void ShapeTessellator::fillRing(const std::vector<Vec2>& ring, const QColor& colour)
{
    if (ring.size() < 3 || colour.alpha() == 0)
        return;
    if (isConvex(ring)) {
        for (size_t i = 1; i + 1 < ring.size(); ++i)
            triangle(ring[0], ring[i], ring[i + 1], colour);
        return;
    }
    for (const TriangleIndices& t : RingFill::shared().triangles(ring))
        triangle(ring[size_t(t[0])], ring[size_t(t[1])], ring[size_t(t[2])], colour);
}

void ShapeTessellator::thickSegment(Vec2 a, Vec2 b, float radius, const QColor& colour)
{
    const Vec2 d = b - a;
    const float len = d.length();
    if (len <= 0)
        return;
    const Vec2 n{-d.y / len * radius, d.x / len * radius};
    triangle(a + n, a - n, b - n, colour);
    triangle(a + n, b - n, b + n, colour);
}

void ShapeTessellator::polygon(const std::vector<Vec2>& ring, float radius, const QColor& fill, const QColor& outline)
{
    const size_t n = ring.size();
    for (const Vec2& p : ring)
        include(p, radius);
    fillRing(ring, fill);
    if (radius <= 0 || n < 3) {
        if (!drawsOutlines() && n >= 3)
            return;
        for (size_t i = 0; i < n; ++i)
            segment(ring[i], ring[(i + 1) % n], outline);
        return;
    }
    // Rounded: a band of `radius` around every edge and arcs at the corners.
    // For a counter-clockwise ring the outward normal is on the right of each edge.
    const float side = signedArea(ring) >= 0 ? 1.f : -1.f;
    std::vector<Vec2> normals(n);
    for (size_t i = 0; i < n; ++i) {
        const Vec2 d = ring[(i + 1) % n] - ring[i];
        const float len = std::max(d.length(), 1e-12f);
        normals[i] = Vec2{d.y / len, -d.x / len} * side;
    }
    for (size_t i = 0; i < n; ++i) {
        const Vec2 a = ring[i], b = ring[(i + 1) % n];
        triangle(a, b, b + normals[i] * radius, fill);
        triangle(a, b + normals[i] * radius, a + normals[i] * radius, fill);
        if (!drawsOutlines())
            continue;
        segment(a + normals[i] * radius, b + normals[i] * radius, outline);
        // Arc around corner b from this edge's normal to the next edge's.
        const Vec2 n0 = normals[i], n1 = normals[(i + 1) % n];
        const float from = std::atan2(n0.y, n0.x);
        float sweep = std::atan2(n1.y, n1.x) - from;
        while (sweep > kPi)
            sweep -= 2 * kPi;
        while (sweep < -kPi)
            sweep += 2 * kPi;
        if (sweep * side < 0)
            continue; // a reflex corner: the bands overlap, no arc outside
        const int steps = std::max(1, int(std::abs(sweep) / (2 * kPi) * float(m_circleSegments) + 0.5f));
        fan(b, radius, from, from + sweep, steps, fill);
        Vec2 previous = b + n0 * radius;
        for (int k = 1; k <= steps; ++k) {
            const float t = from + sweep * float(k) / float(steps);
            const Vec2 next{b.x + radius * std::cos(t), b.y + radius * std::sin(t)};
            segment(previous, next, outline);
            previous = next;
        }
    }
}

void ShapeTessellator::chain(const std::vector<Vec2>& points, bool closed, float radius, const QColor& fill,
                             const QColor& outline)
{
    const size_t n = points.size();
    const size_t edges = closed ? n : (n == 0 ? 0 : n - 1);
    for (const Vec2& p : points)
        include(p, radius);
    for (size_t i = 0; i < edges; ++i) {
        const Vec2 a = points[i], b = points[(i + 1) % n];
        if (radius <= 0 || drawsOutlines())
            segment(a, b, outline);
        if (radius > 0)
            thickSegment(a, b, radius, fill);
    }
    if (radius > 0 && !m_coarse) {
        for (const Vec2& p : points)
            disc(p, radius, m_circleSegments / 2, fill);
    }
}

void ShapeTessellator::marker(Vec2 at, float pixels, const QColor& colour)
{
    const float h = pixels / 2;
    GeomVertex v[4];
    v[0] = geomVertex(at, colour, -h, -h);
    v[1] = v[0];
    v[1].ox = h;
    v[2] = v[1];
    v[2].oy = h;
    v[3] = v[2];
    v[3].ox = -h;
    for (int i : {0, 1, 2, 0, 2, 3})
        m_target.triangles.push_back(v[i]);
    include(at);
}

void ShapeTessellator::cross(Vec2 at, float pixels, const QColor& colour)
{
    m_target.lines.push_back(geomVertex(at, colour, -pixels, 0));
    m_target.lines.push_back(geomVertex(at, colour, pixels, 0));
    m_target.lines.push_back(geomVertex(at, colour, 0, -pixels));
    m_target.lines.push_back(geomVertex(at, colour, 0, pixels));
}
