#pragma once

class b2Body;
class b2Joint;
class b2World;
class MetaJoint;

/// Creates the Box2D joint of a scene joint between two built bodies; null
/// for joint types a scene cannot hold. This is the one place where scene
/// joints meet Box2D 2.4.1's joints:
/// - a rope joint is a distance joint with minimum length 0 and maximum
///   length the rope's length;
/// - frequencies and damping ratios become stiffness and damping
///   (b2LinearStiffness for distance and wheel joints, b2AngularStiffness for
///   weld joints); a distance joint without frequency is rigid;
/// - a motor joint's anchorA is its linear offset and its reference angle its
///   angular offset.
b2Joint* createJoint(b2World& world, const MetaJoint& joint, b2Body* bodyA, b2Body* bodyB);
