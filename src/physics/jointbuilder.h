#pragma once

class b2Body;
class b2Joint;
class b2World;
class MetaJoint;

/// Creates the Box2D joint of a scene joint between two built bodies; null
/// for joint types a scene cannot hold. The mapping onto Box2D 2.4.1 is the
/// runtime library's plax::createBox2DJoint (rope joints as distance joints,
/// frequencies as stiffness, motor offsets, ...), the same one games load
/// exported joints with.
b2Joint* createJoint(b2World& world, const MetaJoint& joint, b2Body* bodyA, b2Body* bodyB);
