#include "physics/jointbuilder.h"

#include "model/metajoint.h"

#include <plax/box2d/jointmapping.h>

static_assert(int(plax::JointType::Revolute) == JOINT_REVOLUTE && int(plax::JointType::Rope) == JOINT_ROPE &&
                  int(plax::JointType::Motor) == JOINT_MOTOR && int(plax::JointType::Gear) == JOINT_GEAR,
              "scene joint types are numbered as the runtime's");

namespace
{
plax::Vec2 toPlax(Vec2 v)
{
    return {v.x, v.y};
}

// The authored values of a scene joint as the runtime library takes them.
plax::JointValues jointValuesOf(const MetaJoint& joint)
{
    plax::JointValues v;
    v.type = static_cast<plax::JointType>(joint.type);
    v.collideConnected = joint.collideConnected;
    v.anchorA = toPlax(joint.anchorA);
    v.anchorB = toPlax(joint.anchorB);
    v.referenceAngle = joint.referenceAngle;
    v.enableLimit = joint.enableLimit;
    v.lowerLimit = joint.lowerLimit;
    v.upperLimit = joint.upperLimit;
    v.enableMotor = joint.enableMotor;
    v.motorSpeed = joint.motorSpeed;
    v.maxMotorTorque = joint.maxMotorTorque;
    v.maxMotorForce = joint.maxMotorForce;
    v.localAxisA = toPlax(joint.localAxisA);
    v.length = joint.length;
    v.frequency = joint.frequency;
    v.dampingRatio = joint.dampingRatio;
    v.springFrequency = joint.springFrequency;
    v.springDampingRatio = joint.springDampingRatio;
    v.maxForce = joint.maxForce;
    v.maxTorque = joint.maxTorque;
    v.maxLength = joint.maxLength;
    v.correctionFactor = joint.correctionFactor;
    return v;
}
} // namespace

b2Joint* createJoint(b2World& world, const MetaJoint& joint, b2Body* bodyA, b2Body* bodyB)
{
    // Scenes hold the types that join two bodies by anchors; the others need
    // values (ground anchors, targets, coupled joints) a scene does not keep.
    if (MetaJoint::typeWord(joint.type).isEmpty())
        return nullptr;
    return plax::createBox2DJoint(world, jointValuesOf(joint), bodyA, bodyB);
}
