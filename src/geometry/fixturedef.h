#pragma once

#include <box2d/box2d.h>

class MetaFixture;

/// A Box2D fixture definition carrying a scene fixture's friction, density,
/// restitution, sensor flag and collision filter (the shape is left null).
/// Values Box2D cannot take are replaced with a warning: a density that is
/// negative or not finite becomes 0, a friction or restitution that is not
/// finite becomes 0, a negative friction becomes 0.
b2FixtureDef fixtureDefFor(const MetaFixture& fixture);
