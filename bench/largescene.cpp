#include "largescene.h"

#include "model/metaworld.h"

#include <cmath>

namespace
{

std::vector<Vec2> ring(int count, float radius, Vec2 center)
{
    std::vector<Vec2> points;
    for (int i = 0; i < count; ++i) {
        const float a = 6.2831853f * float(i) / float(count);
        points.push_back({center.x + radius * std::cos(a), center.y + radius * std::sin(a)});
    }
    return points;
}

void addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType type, float radius)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(vertices));
    fixture->addShape(type, radius);
    fixture->friction = 0.3f;
    fixture->density = 1.7f;
    world.addFixture(body, std::move(fixture), 0, world.uniqueName(ItemKind::Fixture));
}

} // namespace

std::unique_ptr<MetaWorld> makeLargeScene(bool humanReadable, int bodies)
{
    auto world = std::make_unique<MetaWorld>();
    world->exportOptions.useHumanReadableFloats = humanReadable;
    MetaBody* previous = nullptr;
    for (int i = 0; i < bodies; ++i) {
        auto body = std::make_unique<MetaBody>();
        body->type = i % 3 == 0 ? BodyType::Static : BodyType::Dynamic;
        body->position = {float(i % 100) * 1.37f, float(i / 100) * 0.91f};
        body->angle = float(i) * 0.013f;
        MetaBody* added = world->addBody(std::move(body), 0, world->uniqueName(ItemKind::Body));
        addFixture(*world, added, {{0.1f * float(i % 7), 0.2f}}, ShapeType::Circle, 0.35f);
        addFixture(*world, added, ring(3 + i % 6, 0.5f, {0.25f, -0.3f}), ShapeType::Polygon, 0);
        addFixture(*world, added, {{0, 0}, {0.7f, 0.1f}, {1.3f, -0.4f}}, ShapeType::Line, 0.05f);
        addFixture(*world, added, ring(5, 0.8f, {-0.2f, 0.6f}), ShapeType::Loop, 0);
        if (previous && i % 10 == 0) {
            auto joint = std::make_unique<MetaJoint>();
            joint->type = i % 20 == 0 ? JointType::Revolute : JointType::Distance;
            joint->bodyA = previous;
            joint->bodyB = added;
            joint->anchorA = {0.5f, 0};
            world->addJoint(std::move(joint), 0, world->uniqueName(ItemKind::Joint));
        }
        previous = added;
    }
    return world;
}

