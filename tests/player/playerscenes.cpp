#include "player/playerscenes.h"

#include "document/editordocument.h"
#include "model/metafixture.h"
#include "model/metajoint.h"
#include "model/metashape.h"
#include "model/metaworld.h"

#include <memory>

namespace PlayerScenes
{
MetaBody* addBody(MetaWorld& world, BodyType type, Vec2 position, float angle)
{
    auto body = std::make_unique<MetaBody>();
    body->type = type;
    body->position = position;
    body->angle = angle;
    return world.addBody(std::move(body), 0);
}

MetaFixture* addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType shapeType, float radius,
                        float density)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->density = density;
    fixture->friction = 0.4f;
    fixture->setVertices(std::move(vertices));
    fixture->addShape(shapeType, radius);
    return world.addFixture(body, std::move(fixture), 0);
}

MetaFixture* addBox(MetaWorld& world, MetaBody* body, float h)
{
    return addFixture(world, body, {{-h, -h}, {h, -h}, {h, h}, {-h, h}}, ShapeType::Polygon);
}

void buildPile(EditorDocument& document, int columns, int rows)
{
    MetaWorld& world = document.world();
    MetaBody* ground = addBody(world, BodyType::Static, {0, 0});
    addFixture(world, ground, {{-30, 0}, {30, 0}}, ShapeType::Line);
    addFixture(world, ground, {{-12, 1}, {-8, 1}, {-8, 5}, {-12, 5}}, ShapeType::Loop);

    // A concave L-shaped plank: decomposed into convex pieces.
    MetaBody* plank = addBody(world, BodyType::Dynamic, {3, 2}, 0.1f);
    addFixture(world, plank, {{0, 0}, {3, 0}, {3, 0.5f}, {0.5f, 0.5f}, {0.5f, 2}, {0, 2}}, ShapeType::Polygon);

    MetaBody* previous = nullptr;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            const Vec2 at{-4.0f + 1.3f * float(c) + 0.1f * float(r), 4.0f + 1.3f * float(r)};
            MetaBody* body = addBody(world, BodyType::Dynamic, at, 0.05f * float(c));
            if ((r + c) % 2) {
                addFixture(world, body, {{0.1f, 0.05f}}, ShapeType::Circle, 0.45f, 1.5f);
            } else {
                addBox(world, body, 0.4f);
            }
            if (r == 0 && c == 1 && previous) {
                auto hinge = std::make_unique<MetaJoint>();
                hinge->type = JointType::Revolute;
                hinge->bodyA = previous;
                hinge->bodyB = body;
                hinge->anchorA = {0.6f, 0};
                hinge->anchorB = {-0.6f, 0};
                world.addJoint(std::move(hinge), 0);
            }
            previous = body;
        }
    }
}
} // namespace PlayerScenes
