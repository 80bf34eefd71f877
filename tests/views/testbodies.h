#pragma once

#include "model/metaworld.h"

#include <memory>
#include <vector>

/// Bodies for the view tests that keep a drawing or a picker up to date and
/// compare it with one made from scratch.
namespace TestBodies
{
/// A fixture of one shape added to a body, with a fresh name.
inline MetaFixture* addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType type,
                               float radius)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(vertices));
    fixture->addShape(type, radius);
    return world.addFixture(body, std::move(fixture), 0, world.uniqueName(ItemKind::Fixture));
}

/// A body at `at` with a circle, a polygon (rounded for every fourth kind)
/// and a line; its type and angle follow `kind`.
inline MetaBody* addBody(MetaWorld& world, Vec2 at, int kind)
{
    auto body = std::make_unique<MetaBody>();
    body->type = kind % 3 == 0 ? BodyType::Static : BodyType::Dynamic;
    body->position = at;
    body->angle = 0.1f * float(kind % 17);
    MetaBody* added = world.addBody(std::move(body), 0, world.uniqueName(ItemKind::Body));
    addFixture(world, added, {{0.1f, 0.2f}}, ShapeType::Circle, 0.3f + 0.02f * float(kind % 5));
    addFixture(world, added, {{0, 0}, {0.8f, 0.1f}, {0.4f, 0.3f}, {0.6f, 0.9f}, {-0.2f, 0.5f}}, ShapeType::Polygon,
               kind % 4 == 0 ? 0.05f : 0.f);
    addFixture(world, added, {{-0.5f, -0.4f}, {0.2f, -0.6f}, {0.7f, -0.2f}}, ShapeType::Line, 0);
    return added;
}
} // namespace TestBodies
