#pragma once

#include <box2d/box2d.h>

#include <QString>

/// True when b2Body::SetMassData takes this mass data without its assertion
/// (the runtime library's plax::box2DAcceptsMassData, shared with the worlds
/// games load): Box2D moves a positive rotational inertia from the body
/// origin to the centre of mass by a single-precision subtraction and
/// asserts that the result is positive.
bool box2DAcceptsMassData(const b2MassData& mass, bool fixedRotation);

/// The single-precision inertia about the body origin that Box2D turns back
/// into (about) the given inertia about the centre of mass, never into zero
/// or less (plax::box2DOriginInertia).
float box2DOriginInertia(float mass, b2Vec2 centre, double centredInertia);

/// Computes the mass of a dynamic body once all its fixtures are on it (create
/// them through createFixtures, which leaves the mass alone, so that no
/// partial body is ever judged), as plax::settleBodyMass does for games:
/// normally Box2D's own b2Body::ResetMassData. When that would assert, because
/// the inertia about the centre of mass is lost to single-precision rounding
/// (small fixtures far from the body origin), the mass and centre are still
/// Box2D's and the inertia is computed in double precision from the shapes
/// and set through b2Body::SetMassData, with a warning naming the body; every
/// fixture stays. When the sums are not finite at all (absurd densities) the
/// fixtures' densities are set to 0, with a warning. Static and kinematic
/// bodies just get Box2D's reset. Returns false when it had to step in.
bool settleBodyMass(b2Body* body, const QString& bodyName);
