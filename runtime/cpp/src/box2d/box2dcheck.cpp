#include "box2dcheck.h"

#include "plax/box2d/massguard.h"
#include "plax/box2d/polygonset.h"

#include <cmath>

namespace plax::detail
{
namespace
{
std::string at(const std::string& pointer, const std::string& what)
{
    return pointer + ": " + what;
}

bool within(float v, float limit)
{
    return std::isfinite(v) && std::fabs(v) <= limit;
}

bool within(Vec2 v, float limit)
{
    return within(v.x, limit) && within(v.y, limit);
}

bool tooClose(Vec2 a, Vec2 b)
{
    return b2DistanceSquared(b2Vec2(a.x, a.y), b2Vec2(b.x, b.y)) <= b2_linearSlop * b2_linearSlop;
}

// The pointer of a fixture record, made only for a message.
struct FixturePlace
{
    size_t body;
    size_t fixture;

    std::string operator+(const char* member) const
    {
        return "/body/" + std::to_string(body) + "/fixture/" + std::to_string(fixture) + member;
    }
};

std::string checkVertices(const std::vector<Vec2>& vertices, const FixturePlace& place, const char* member)
{
    for (size_t i = 0; i < vertices.size(); ++i) {
        if (!within(vertices[i], kMaxShapeCoordinate))
            return at(place + member + "/" + std::to_string(i), "a vertex beyond +-1e7");
    }
    return std::string();
}

std::string checkShape(const ShapeDescription& shape, const FixturePlace& fixture)
{
    switch (shape.type) {
    case ShapeType::Circle: {
        if (!within(shape.center, kMaxShapeCoordinate))
            return at(fixture + "/circle/center", "a centre beyond +-1e7");
        if (!(shape.radius >= 0) || !within(shape.radius, kMaxShapeCoordinate))
            return at(fixture + "/circle/radius", "a radius from 0 to 1e7 is needed");
        return std::string();
    }
    case ShapeType::Polygon: {
        const char* where = "/polygon/vertices";
        if (std::string e = checkVertices(shape.vertices, fixture, where); !e.empty())
            return e;
        if (polygonIsEdge(shape)) {
            if (tooClose(shape.vertices[0], shape.vertices[1]))
                return at(fixture + where, "the two vertices of an edge are too close together");
            return std::string();
        }
        if (shape.vertices.size() < 2 || shape.vertices.size() > size_t(b2_maxPolygonVertices))
            return at(fixture + where, "a polygon has 3 to 8 vertices, not " + std::to_string(shape.vertices.size()));
        b2Vec2 points[b2_maxPolygonVertices];
        for (size_t i = 0; i < shape.vertices.size(); ++i)
            points[i] = b2Vec2(shape.vertices[i].x, shape.vertices[i].y);
        if (predictPolygonSet(points, int(shape.vertices.size())).asserts)
            return at(fixture + where, "Box2D cannot make a polygon of these vertices (too close together, in a line, or "
                             "enclosing too small an area)");
        return std::string();
    }
    case ShapeType::Edge: {
        for (const auto& [key, v] : {std::pair{"/edge/vertex0", shape.vertex0}, std::pair{"/edge/vertex1", shape.vertex1},
                                     std::pair{"/edge/vertex2", shape.vertex2}, std::pair{"/edge/vertex3", shape.vertex3}}) {
            if (!within(v, kMaxShapeCoordinate))
                return at(fixture + key, "a vertex beyond +-1e7");
        }
        if (tooClose(shape.vertex1, shape.vertex2))
            return at(fixture + "/edge", "the two vertices of an edge are too close together");
        return std::string();
    }
    case ShapeType::Chain: {
        const char* where = "/chain/vertices";
        if (std::string e = checkVertices(shape.vertices, fixture, where); !e.empty())
            return e;
        if (!within(shape.prevVertex, kMaxShapeCoordinate) || !within(shape.nextVertex, kMaxShapeCoordinate))
            return at(fixture + "/chain", "a neighbour vertex beyond +-1e7");
        if (shape.vertices.size() < 2)
            return at(fixture + where, "a chain needs at least two vertices");
        // Box2D asserts on consecutive vertices this close, in either direction
        // of a loop (the reversed twin walks the closing edge too).
        for (size_t i = 1; i < shape.vertices.size(); ++i) {
            if (tooClose(shape.vertices[i - 1], shape.vertices[i]))
                return at(fixture + where + "/" + std::to_string(i), "too close to the vertex before it");
        }
        return std::string();
    }
    }
    return std::string();
}

std::string checkBody(const BodyDescription& body, size_t index, b2Vec2 offset)
{
    const auto where = [index](const char* member) { return "/body/" + std::to_string(index) + member; };
    const b2Vec2 position(body.position.x + offset.x, body.position.y + offset.y);
    if (!within(Vec2{position.x, position.y}, kMaxPosition))
        return at(where("/position"), "a position beyond +-1e18");
    if (body.linearDamping < 0)
        return at(where("/linearDamping"), "Box2D needs a damping of 0 or more");
    if (body.angularDamping < 0)
        return at(where("/angularDamping"), "Box2D needs a damping of 0 or more");
    if (body.type == BodyType::Dynamic && body.hasMassData && body.mass > 0) {
        b2MassData mass;
        mass.mass = body.mass;
        mass.center = b2Vec2(body.massCenter.x, body.massCenter.y);
        mass.I = body.inertia;
        if (!box2DAcceptsMassData(mass, body.fixedRotation))
            return at(where("/massData-I"), "Box2D needs a rotational inertia about the body origin above "
                                            "mass x |centre|^2");
    }
    for (size_t f = 0; f < body.fixtures.size(); ++f) {
        const FixtureDescription& fixture = body.fixtures[f];
        const FixturePlace place{index, f};
        if (fixture.density < 0)
            return at(place + "/density", "Box2D needs a density of 0 or more");
        if (std::string e = checkShape(fixture.shape, place); !e.empty())
            return e;
    }
    return std::string();
}

std::string checkJoint(const SceneDescription& scene, size_t index)
{
    const JointDescription& joint = scene.joints[index];
    const std::string where = "/joint/" + std::to_string(index);
    if (joint.values.type == JointType::Gear) {
        // Box2D takes the second bodies of the two joints as the gear's bodies.
        const JointDescription& j1 = scene.joints[size_t(joint.joint1)];
        const JointDescription& j2 = scene.joints[size_t(joint.joint2)];
        if (j1.bodyB == j2.bodyB)
            return at(where, "the two joints of a gear joint need different second bodies (bodyB)");
        for (const JointDescription* j : {&j1, &j2}) {
            if (scene.bodies[size_t(j->bodyB)].type != BodyType::Dynamic)
                return at(where, "the second bodies (bodyB) of a gear joint's two joints must be dynamic");
        }
        return std::string();
    }
    if (joint.bodyA == joint.bodyB)
        return at(where + "/bodyB", "a joint needs two different bodies");
    return std::string();
}
} // namespace

bool polygonIsEdge(const ShapeDescription& shape)
{
    return shape.type == ShapeType::Polygon && shape.vertices.size() == 2;
}

std::string checkForBox2D(const SceneDescription& scene, b2Vec2 offset)
{
    if (!std::isfinite(offset.x) || !std::isfinite(offset.y))
        return "the offset is not finite";
    for (size_t i = 0; i < scene.bodies.size(); ++i) {
        if (std::string e = checkBody(scene.bodies[i], i, offset); !e.empty())
            return e;
    }
    for (size_t i = 0; i < scene.joints.size(); ++i) {
        if (std::string e = checkJoint(scene, i); !e.empty())
            return e;
    }
    return std::string();
}
} // namespace plax::detail
