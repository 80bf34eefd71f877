#include "box2dshapes.h"

#include "box2dcheck.h"

#include <algorithm>
#include <vector>

namespace plax::detail
{
namespace
{
b2Vec2 toB2(Vec2 v)
{
    return {v.x, v.y};
}

// The fixture is made with density 0 and given its density afterwards, so
// that Box2D does not compute the mass of a body that is still being built.
b2Fixture* addFixture(b2Body* body, const b2FixtureDef& def, const b2Shape& shape)
{
    b2FixtureDef withShape = def;
    withShape.shape = &shape;
    withShape.density = 0;
    b2Fixture* fixture = body->CreateFixture(&withShape);
    fixture->SetDensity(def.density);
    return fixture;
}

// A chain and its reversed twin, so that it collides from both sides.
void addChainPair(b2Body* body, const b2FixtureDef& def, const ShapeDescription& shape, CreatedFixtures& out)
{
    const bool loop = shape.isLoop();
    // A loop is listed with its first vertex repeated at the end.
    std::vector<b2Vec2> points;
    const size_t count = loop ? shape.vertices.size() - 1 : shape.vertices.size();
    points.reserve(count);
    for (size_t i = 0; i < count; ++i)
        points.push_back(toB2(shape.vertices[i]));
    // Open chains without neighbours fold their ghost vertices back onto the
    // end edges, so that each end collides like a corner.
    b2Vec2 prev = shape.hasPrevVertex ? toB2(shape.prevVertex) : points[1];
    b2Vec2 next = shape.hasNextVertex ? toB2(shape.nextVertex) : points[count - 2];
    for (int pass = 0; pass < 2; ++pass) {
        if (pass == 1) {
            // The reversed loop keeps its first vertex so both walk the same ring.
            std::reverse(points.begin() + (loop ? 1 : 0), points.end());
            std::swap(prev, next);
        }
        b2ChainShape chain;
        if (loop)
            chain.CreateLoop(points.data(), int(count));
        else
            chain.CreateChain(points.data(), int(count), prev, next);
        b2Fixture* fixture = addFixture(body, def, chain);
        (pass == 0 ? out.fixture : out.twin) = fixture;
    }
}
} // namespace

CreatedFixtures createFixture(b2Body* body, const FixtureDescription& record)
{
    b2FixtureDef def;
    def.friction = record.friction;
    def.restitution = record.restitution;
    def.density = record.density;
    def.isSensor = record.sensor;
    def.filter.categoryBits = record.categoryBits;
    def.filter.maskBits = record.maskBits;
    def.filter.groupIndex = record.groupIndex;

    const ShapeDescription& shape = record.shape;
    CreatedFixtures out;
    switch (shape.type) {
    case ShapeType::Circle: {
        b2CircleShape circle;
        circle.m_p = toB2(shape.center);
        circle.m_radius = shape.radius;
        out.fixture = addFixture(body, def, circle);
        break;
    }
    case ShapeType::Polygon: {
        if (polygonIsEdge(shape)) {
            b2EdgeShape edge;
            edge.SetTwoSided(toB2(shape.vertices[0]), toB2(shape.vertices[1]));
            out.fixture = addFixture(body, def, edge);
            break;
        }
        b2Vec2 points[b2_maxPolygonVertices];
        const int count = int(shape.vertices.size());
        for (int i = 0; i < count; ++i)
            points[i] = toB2(shape.vertices[size_t(i)]);
        b2PolygonShape polygon;
        polygon.Set(points, count);
        out.fixture = addFixture(body, def, polygon);
        break;
    }
    case ShapeType::Edge: {
        b2EdgeShape edge;
        if (shape.hasVertex0 && shape.hasVertex3)
            edge.SetOneSided(toB2(shape.vertex0), toB2(shape.vertex1), toB2(shape.vertex2), toB2(shape.vertex3));
        else
            edge.SetTwoSided(toB2(shape.vertex1), toB2(shape.vertex2));
        out.fixture = addFixture(body, def, edge);
        break;
    }
    case ShapeType::Chain: addChainPair(body, def, shape, out); break;
    }
    return out;
}
} // namespace plax::detail
