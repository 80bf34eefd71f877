#pragma once

#include <box2d/box2d.h>

namespace plax
{
/// True when b2Body::SetMassData takes this mass data without its assertion:
/// Box2D moves a positive rotational inertia from the body origin to the
/// centre of mass by a single-precision subtraction, I - mass * |centre|^2,
/// and asserts that the result is positive. A fixed-rotation body ignores the
/// inertia. Non-finite values never pass.
bool box2DAcceptsMassData(const b2MassData& mass, bool fixedRotation);

/// The single-precision inertia about the body origin that Box2D turns back
/// into (about) the given inertia about the centre of mass, and never into
/// zero or less: the nearest value above mass * |centre|^2 when the centred
/// inertia is below its resolution. Not finite when the values are not.
float box2DOriginInertia(float mass, b2Vec2 centre, double centredInertia);

/// How settleBodyMass gave a body its mass.
enum class MassSettlement
{
    /// Box2D's own b2Body::ResetMassData.
    Box2D,
    /// Box2D's mass and centre, with the inertia computed in double precision
    /// (Box2D's single-precision inertia about the centre of mass would be
    /// lost to rounding: small fixtures far from the body origin).
    DoublePrecisionInertia,
    /// The sums are not finite, or the inertia cannot be represented at all:
    /// the fixtures' densities were set to 0.
    DensitiesCleared,
};

/// Computes the mass of a body once all its fixtures are on it (create them
/// with density 0 and set their density afterwards, so that no partial body
/// is ever judged). Normally this is Box2D's own b2Body::ResetMassData; the
/// other outcomes step in where that would assert. Static and kinematic
/// bodies just get Box2D's reset.
MassSettlement settleBodyMass(b2Body* body);
} // namespace plax
