#pragma once

#include "plax/jointvalues.h"

class b2Body;
class b2Joint;
class b2World;

namespace plax
{
/// Creates the Box2D 2.4.1 joint of authored joint values between two bodies
/// that already have their mass; null when the bodies are missing or the
/// same, or for a gear joint whose two joints are not given. The editor's
/// export and player and this library's loader all build joints here, so a
/// loaded joint is the exported one:
/// - a rope joint is a distance joint with minimum length 0 and maximum
///   length the rope's length;
/// - frequencies and damping ratios become stiffness and damping
///   (b2LinearStiffness for distance, wheel and mouse joints,
///   b2AngularStiffness for weld joints); a distance joint without frequency
///   is rigid, one with a frequency a spring without limits;
/// - a motor joint's anchorA is its linear offset and its reference angle its
///   angular offset;
/// - a mouse joint holds anchorB of body B and pulls it towards the target;
/// - a gear joint couples `joint1` and `joint2` (revolute or prismatic); its
///   bodies are their second bodies, as Box2D takes them.
/// Values Box2D would assert on are made safe: non-finite values become their
/// defaults, negative forces, torques, lengths and frequencies 0, limits are
/// put in order, axes normalised, a pulley ratio of 0 becomes 1.
b2Joint* createBox2DJoint(b2World& world, const JointValues& values, b2Body* bodyA, b2Body* bodyB,
                          b2Joint* joint1 = nullptr, b2Joint* joint2 = nullptr);
} // namespace plax
