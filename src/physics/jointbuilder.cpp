#include "physics/jointbuilder.h"

#include "model/metajoint.h"

#include <box2d/box2d.h>

#include <cfloat>
#include <cmath>

namespace
{
b2Vec2 toB2(Vec2 v)
{
    return {v.x, v.y};
}

// Box2D asserts on non-finite or negative values in several joint settings.
float finiteOr(float v, float fallback)
{
    return std::isfinite(v) ? v : fallback;
}

float nonNegative(float v)
{
    return std::isfinite(v) && v > 0 ? v : 0.0f;
}

b2Vec2 unitAxis(Vec2 axis)
{
    b2Vec2 a = toB2(axis);
    if (!std::isfinite(a.x) || !std::isfinite(a.y) || a.Normalize() < b2_epsilon)
        return b2Vec2(1, 0);
    return a;
}

void fillCommon(b2JointDef& def, const MetaJoint& joint, b2Body* bodyA, b2Body* bodyB)
{
    def.bodyA = bodyA;
    def.bodyB = bodyB;
    def.collideConnected = joint.collideConnected;
}

template <typename Def>
void fillAnchors(Def& def, const MetaJoint& joint)
{
    def.localAnchorA = toB2(joint.anchorA);
    def.localAnchorB = toB2(joint.anchorB);
}

void sortedLimits(const MetaJoint& joint, float* lower, float* upper)
{
    *lower = finiteOr(joint.lowerLimit, 0);
    *upper = finiteOr(joint.upperLimit, 0);
    if (*lower > *upper)
        std::swap(*lower, *upper);
}
} // namespace

b2Joint* createJoint(b2World& world, const MetaJoint& joint, b2Body* bodyA, b2Body* bodyB)
{
    if (!bodyA || !bodyB || bodyA == bodyB)
        return nullptr;
    switch (joint.type) {
    case JOINT_REVOLUTE: {
        b2RevoluteJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.referenceAngle = finiteOr(joint.referenceAngle, 0);
        def.enableLimit = joint.enableLimit;
        sortedLimits(joint, &def.lowerAngle, &def.upperAngle);
        def.enableMotor = joint.enableMotor;
        def.motorSpeed = finiteOr(joint.motorSpeed, 0);
        def.maxMotorTorque = nonNegative(joint.maxMotorTorque);
        return world.CreateJoint(&def);
    }
    case JOINT_PRISMATIC: {
        b2PrismaticJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.localAxisA = unitAxis(joint.localAxisA);
        def.referenceAngle = finiteOr(joint.referenceAngle, 0);
        def.enableLimit = joint.enableLimit;
        sortedLimits(joint, &def.lowerTranslation, &def.upperTranslation);
        def.enableMotor = joint.enableMotor;
        def.maxMotorForce = nonNegative(joint.maxMotorForce);
        def.motorSpeed = finiteOr(joint.motorSpeed, 0);
        return world.CreateJoint(&def);
    }
    case JOINT_DISTANCE: {
        b2DistanceJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.length = std::max(nonNegative(joint.length), b2_linearSlop);
        if (joint.frequency > 0 && std::isfinite(joint.frequency)) {
            // A spring without limits, as distance joints with a frequency always were.
            def.minLength = 0;
            def.maxLength = FLT_MAX;
            b2LinearStiffness(def.stiffness, def.damping, joint.frequency, nonNegative(joint.dampingRatio), bodyA,
                              bodyB);
        } else {
            def.minLength = def.length;
            def.maxLength = def.length;
        }
        return world.CreateJoint(&def);
    }
    case JOINT_ROPE: {
        b2DistanceJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.maxLength = std::max(nonNegative(joint.maxLength), b2_linearSlop);
        def.length = def.maxLength;
        def.minLength = 0;
        def.stiffness = 0;
        def.damping = 0;
        return world.CreateJoint(&def);
    }
    case JOINT_WHEEL: {
        b2WheelJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.localAxisA = unitAxis(joint.localAxisA);
        def.enableMotor = joint.enableMotor;
        def.motorSpeed = finiteOr(joint.motorSpeed, 0);
        def.maxMotorTorque = nonNegative(joint.maxMotorTorque);
        b2LinearStiffness(def.stiffness, def.damping, nonNegative(joint.springFrequency),
                          nonNegative(joint.springDampingRatio), bodyA, bodyB);
        return world.CreateJoint(&def);
    }
    case JOINT_WELD: {
        b2WeldJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.referenceAngle = finiteOr(joint.referenceAngle, 0);
        b2AngularStiffness(def.stiffness, def.damping, nonNegative(joint.frequency), nonNegative(joint.dampingRatio),
                           bodyA, bodyB);
        return world.CreateJoint(&def);
    }
    case JOINT_FRICTION: {
        b2FrictionJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        fillAnchors(def, joint);
        def.maxForce = nonNegative(joint.maxForce);
        def.maxTorque = nonNegative(joint.maxTorque);
        return world.CreateJoint(&def);
    }
    case JOINT_MOTOR: {
        b2MotorJointDef def;
        fillCommon(def, joint, bodyA, bodyB);
        def.linearOffset = toB2(joint.anchorA);
        def.angularOffset = finiteOr(joint.referenceAngle, 0);
        def.maxForce = nonNegative(joint.maxForce);
        def.maxTorque = nonNegative(joint.maxTorque);
        def.correctionFactor = std::clamp(finiteOr(joint.correctionFactor, 0.3f), 0.0f, 1.0f);
        return world.CreateJoint(&def);
    }
    default:
        return nullptr;
    }
}
