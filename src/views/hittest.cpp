#include "views/hittest.h"

#include "model/metaworld.h"

#include <cmath>

namespace
{
bool insideRing(const std::vector<Vec2>& ring, Vec2 p)
{
    bool inside = false;
    for (size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
        const Vec2 a = ring[i], b = ring[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

float chainDistance(const std::vector<Vec2>& points, bool closed, Vec2 p)
{
    float best = INFINITY;
    const size_t n = points.size();
    const size_t edges = closed ? n : n - 1;
    for (size_t i = 0; i < edges; ++i)
        best = std::fmin(best, HitTest::segmentDistance(p, points[i], points[(i + 1) % n]));
    return best;
}
} // namespace

float HitTest::segmentDistance(Vec2 p, Vec2 a, Vec2 b)
{
    const Vec2 ab = b - a;
    const float len2 = ab.lengthSquared();
    float t = len2 > 0 ? ((p.x - a.x) * ab.x + (p.y - a.y) * ab.y) / len2 : 0;
    t = std::fmax(0.f, std::fmin(1.f, t));
    return (p - (a + ab * t)).length();
}

std::optional<Vec2> HitTest::pointOnEdge(Vec2 p, Vec2 a, Vec2 b, float tolerance)
{
    const Vec2 ab = b - a;
    const float len2 = ab.lengthSquared();
    if (!(len2 > 0))
        return std::nullopt;
    const float t = ((p.x - a.x) * ab.x + (p.y - a.y) * ab.y) / len2;
    const Vec2 foot = a + ab * t;
    if (t <= 0 || t >= 1 || (foot - p).length() > tolerance)
        return std::nullopt;
    return foot;
}

bool HitTest::fixtureContains(const MetaFixture& fixture, Vec2 point, float tolerance)
{
    if (!fixture.body())
        return false;
    const Vec2 p = worldToBody(fixture.body(), point);
    const std::vector<Vec2>& v = fixture.vertices();
    for (const MetaShape& shape : fixture.shapes()) {
        const float radius = shape.isRounded() ? shape.radius() : 0;
        if (shape.type() == ShapeType::Circle) {
            const Vec2 centre = v.empty() ? Vec2{} : v.front();
            if ((p - centre).length() <= shape.radius() + tolerance)
                return true;
            continue;
        }
        if (v.empty())
            continue;
        if (v.size() == 1) {
            if ((p - v.front()).length() <= radius + tolerance)
                return true;
            continue;
        }
        const bool closed = shape.type() != ShapeType::Line;
        if (shape.type() == ShapeType::Polygon && v.size() >= 3 && insideRing(v, p))
            return true;
        if (chainDistance(v, closed, p) <= radius + tolerance)
            return true;
    }
    return false;
}

MetaFixture* HitTest::topmostFixture(const MetaWorld& world, Vec2 point, float tolerance)
{
    const auto& bodies = world.bodies();
    for (auto b = bodies.rbegin(); b != bodies.rend(); ++b) {
        const auto& fixtures = (*b)->fixtures();
        for (auto f = fixtures.rbegin(); f != fixtures.rend(); ++f) {
            if (fixtureContains(**f, point, tolerance))
                return f->get();
        }
    }
    return nullptr;
}

MetaBody* HitTest::topmostBody(const MetaWorld& world, Vec2 point, float tolerance)
{
    MetaFixture* fixture = topmostFixture(world, point, tolerance);
    return fixture ? fixture->body() : nullptr;
}
