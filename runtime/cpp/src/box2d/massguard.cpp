#include "plax/box2d/massguard.h"

#include <cmath>
#include <cstdint>

namespace plax
{
namespace
{
constexpr double kPi = 3.14159265358979323846;

bool finite(b2Vec2 v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

// Box2D's body mass sums, in its order and precision (b2Body::ResetMassData).
struct BodySums
{
    float mass = 0;
    b2Vec2 centre{0, 0};
    float inertia = 0;
};

BodySums box2DSums(const b2Body& body)
{
    BodySums sums;
    b2Vec2 weighted(0, 0);
    for (const b2Fixture* f = body.GetFixtureList(); f; f = f->GetNext()) {
        if (f->GetDensity() == 0.0f)
            continue;
        b2MassData data;
        f->GetMassData(&data);
        sums.mass += data.mass;
        weighted += data.mass * data.center;
        sums.inertia += data.I;
    }
    if (sums.mass > 0.0f) {
        const float inverse = 1.0f / sums.mass;
        weighted *= inverse;
    }
    sums.centre = weighted;
    return sums;
}

// Mass, centre and inertia about the centre of one shape, in double precision.
struct ShapeMass
{
    double mass = 0;
    double cx = 0;
    double cy = 0;
    double inertia = 0;
};

ShapeMass shapeMass(const b2Shape& shape, double density)
{
    ShapeMass out;
    if (shape.GetType() == b2Shape::e_circle) {
        const auto& circle = static_cast<const b2CircleShape&>(shape);
        const double r = circle.m_radius;
        out.mass = density * kPi * r * r;
        out.cx = circle.m_p.x;
        out.cy = circle.m_p.y;
        out.inertia = out.mass * 0.5 * r * r;
    } else if (shape.GetType() == b2Shape::e_polygon) {
        const auto& polygon = static_cast<const b2PolygonShape&>(shape);
        const int n = polygon.m_count;
        const double sx = polygon.m_vertices[0].x, sy = polygon.m_vertices[0].y;
        double area = 0, mx = 0, my = 0, second = 0;
        for (int i = 1; i + 1 < n; ++i) {
            const double x1 = polygon.m_vertices[i].x - sx, y1 = polygon.m_vertices[i].y - sy;
            const double x2 = polygon.m_vertices[i + 1].x - sx, y2 = polygon.m_vertices[i + 1].y - sy;
            const double d = x1 * y2 - y1 * x2;
            area += 0.5 * d;
            mx += d * (x1 + x2) / 6;
            my += d * (y1 + y2) / 6;
            second += d * (x1 * x1 + x1 * x2 + x2 * x2 + y1 * y1 + y1 * y2 + y2 * y2) / 12;
        }
        if (!(area > 0))
            return out;
        const double lx = mx / area, ly = my / area;
        out.mass = density * area;
        out.cx = sx + lx;
        out.cy = sy + ly;
        // Second moment about the first vertex, moved to the centroid.
        out.inertia = density * (second - area * (lx * lx + ly * ly));
    }
    return out;
}

// Inertia of the body's fixtures about the given centre, in double precision.
double centredInertia(const b2Body& body, b2Vec2 centre)
{
    double inertia = 0;
    for (const b2Fixture* f = body.GetFixtureList(); f; f = f->GetNext()) {
        if (f->GetDensity() == 0.0f)
            continue;
        const ShapeMass m = shapeMass(*f->GetShape(), f->GetDensity());
        const double dx = m.cx - centre.x, dy = m.cy - centre.y;
        inertia += m.inertia + m.mass * (dx * dx + dy * dy);
    }
    return inertia;
}

MassSettlement clearDensities(b2Body* body)
{
    for (b2Fixture* f = body->GetFixtureList(); f; f = f->GetNext())
        f->SetDensity(0);
    body->ResetMassData();
    return MassSettlement::DensitiesCleared;
}
} // namespace

bool box2DAcceptsMassData(const b2MassData& mass, bool fixedRotation)
{
    if (!std::isfinite(mass.mass) || !finite(mass.center) || !std::isfinite(mass.I))
        return false;
    const float m = mass.mass > 0.0f ? mass.mass : 1.0f;
    if (!(mass.I > 0.0f) || fixedRotation)
        return true;
    const float centred = mass.I - m * b2Dot(mass.center, mass.center);
    return centred > 0.0f && std::isfinite(centred);
}

float box2DOriginInertia(float mass, b2Vec2 centre, double centredInertia)
{
    const float shift = mass * b2Dot(centre, centre);
    float inertia = static_cast<float>(centredInertia + double(shift));
    for (int guard = 0; guard < 64 && std::isfinite(inertia) && !(inertia - shift > 0.0f); ++guard)
        inertia = std::nextafter(inertia, INFINITY);
    return inertia;
}

MassSettlement settleBodyMass(b2Body* body)
{
    if (!body)
        return MassSettlement::Box2D;
    if (body->GetType() != b2_dynamicBody) {
        body->ResetMassData();
        return MassSettlement::Box2D;
    }
    const BodySums sums = box2DSums(*body);
    if (!std::isfinite(sums.mass) || !finite(sums.centre) || !std::isfinite(sums.inertia))
        return clearDensities(body);
    b2MassData predicted;
    predicted.mass = sums.mass;
    predicted.center = sums.centre;
    predicted.I = sums.inertia;
    if (!(sums.mass > 0.0f) || box2DAcceptsMassData(predicted, body->IsFixedRotation())) {
        body->ResetMassData();
        return MassSettlement::Box2D;
    }
    b2MassData settled = predicted;
    settled.I = box2DOriginInertia(sums.mass, sums.centre, centredInertia(*body, sums.centre));
    if (!box2DAcceptsMassData(settled, false))
        return clearDensities(body);
    body->SetMassData(&settled);
    return MassSettlement::DoublePrecisionInertia;
}
} // namespace plax
