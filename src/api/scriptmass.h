#pragma once

#include "base/types.h"

class MetaBody;
class MetaFixture;

/// Mass, centre of mass (body coordinates) and rotational inertia about the body origin.
struct ScriptMassData
{
    float mass = 0;
    Vec2 center;
    float inertia = 0;
};

/// The mass data Box2D gives a dynamic body with these fixtures (the
/// fixtures are built in a throw-away world). A body's mass override
/// ("massData-mass" above 0) is not applied here.
ScriptMassData fixturesMassData(MetaBody& body);
/// The mass Box2D gives one fixture at its density.
float fixtureMass(MetaFixture& fixture);
