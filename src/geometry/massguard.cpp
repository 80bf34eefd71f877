#include "geometry/massguard.h"

namespace
{
// Relative size below which the centred inertia is rounding noise: a few
// single-precision epsilons of the uncentred sum.
constexpr float kReliableFraction = 1e-6f;
} // namespace

bool massStaysValid(const b2Body* body, const b2Shape& shape, float density)
{
    if (!body || body->GetType() != b2_dynamicBody || body->IsFixedRotation() || density == 0)
        return true;
    // The new fixture goes to the front of the body's list; sum in that order.
    b2MassData added;
    shape.ComputeMass(&added, density);
    float mass = added.mass;
    b2Vec2 centre = added.mass * added.center;
    float inertia = added.I;
    for (const b2Fixture* f = body->GetFixtureList(); f; f = f->GetNext()) {
        if (f->GetDensity() == 0)
            continue;
        b2MassData data;
        f->GetMassData(&data);
        mass += data.mass;
        centre += data.mass * data.center;
        inertia += data.I;
    }
    if (mass > 0)
        centre *= 1.0f / mass;
    if (!(inertia > 0))
        return true; // Box2D skips the centring step
    const float centred = inertia - mass * b2Dot(centre, centre);
    return centred > kReliableFraction * inertia;
}
