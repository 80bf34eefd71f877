#pragma once

// Box2D fixtures of fixture records already checked by checkForBox2D.

#include "plax/scene.h"

#include <box2d/box2d.h>

namespace plax::detail
{
/// The fixtures made of one record: the fixture, and for a chain its reversed twin.
struct CreatedFixtures
{
    b2Fixture* fixture = nullptr;
    b2Fixture* twin = nullptr;
};

/// Adds a fixture record's fixtures to a body, with the record's material
/// and filter; the body's mass is left for settleBodyMass.
CreatedFixtures createFixture(b2Body* body, const FixtureDescription& record);
} // namespace plax::detail
