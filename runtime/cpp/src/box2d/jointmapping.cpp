#include "plax/box2d/jointmapping.h"

#include <box2d/box2d.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace plax
{
namespace
{
b2Vec2 toB2(Vec2 v)
{
    return {v.x, v.y};
}

float finiteOr(float v, float fallback)
{
    return std::isfinite(v) ? v : fallback;
}

b2Vec2 finiteVec(Vec2 v)
{
    return {finiteOr(v.x, 0), finiteOr(v.y, 0)};
}

float nonNegative(float v)
{
    return std::isfinite(v) && v > 0 ? v : 0.0f;
}

// Stiffness and damping from very large frequencies overflow; Box2D asserts
// on values that are not finite in some joints.
void finiteSpring(float& stiffness, float& damping)
{
    for (float* v : {&stiffness, &damping})
        *v = std::isnan(*v) ? 0.0f : std::min(*v, FLT_MAX);
}

b2Vec2 unitAxis(Vec2 axis)
{
    b2Vec2 a = toB2(axis);
    if (!std::isfinite(a.x) || !std::isfinite(a.y) || a.Normalize() < b2_epsilon)
        return b2Vec2(1, 0);
    return a;
}

void fillCommon(b2JointDef& def, const JointValues& j, b2Body* bodyA, b2Body* bodyB)
{
    def.bodyA = bodyA;
    def.bodyB = bodyB;
    def.collideConnected = j.collideConnected;
}

template <typename Def>
void fillAnchors(Def& def, const JointValues& j)
{
    def.localAnchorA = finiteVec(j.anchorA);
    def.localAnchorB = finiteVec(j.anchorB);
}

void sortedLimits(const JointValues& j, float* lower, float* upper)
{
    *lower = finiteOr(j.lowerLimit, 0);
    *upper = finiteOr(j.upperLimit, 0);
    if (*lower > *upper)
        std::swap(*lower, *upper);
}

b2Joint* createGear(b2World& world, const JointValues& j, b2Joint* joint1, b2Joint* joint2)
{
    const auto coupled = [](const b2Joint* joint) {
        return joint && (joint->GetType() == e_revoluteJoint || joint->GetType() == e_prismaticJoint);
    };
    if (!coupled(joint1) || !coupled(joint2) || joint1 == joint2 || joint1->GetBodyB() == joint2->GetBodyB() ||
        joint1->GetBodyB()->GetType() != b2_dynamicBody || joint2->GetBodyB()->GetType() != b2_dynamicBody)
        return nullptr;
    b2GearJointDef def;
    def.bodyA = joint1->GetBodyB();
    def.bodyB = joint2->GetBodyB();
    def.collideConnected = j.collideConnected;
    def.joint1 = joint1;
    def.joint2 = joint2;
    def.ratio = finiteOr(j.ratio, 1);
    return world.CreateJoint(&def);
}
} // namespace

b2Joint* createBox2DJoint(b2World& world, const JointValues& j, b2Body* bodyA, b2Body* bodyB, b2Joint* joint1,
                          b2Joint* joint2)
{
    if (j.type == JointType::Gear)
        return createGear(world, j, joint1, joint2);
    if (!bodyA || !bodyB || bodyA == bodyB)
        return nullptr;
    switch (j.type) {
    case JointType::Revolute: {
        b2RevoluteJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.referenceAngle = finiteOr(j.referenceAngle, 0);
        def.enableLimit = j.enableLimit;
        sortedLimits(j, &def.lowerAngle, &def.upperAngle);
        def.enableMotor = j.enableMotor;
        def.motorSpeed = finiteOr(j.motorSpeed, 0);
        def.maxMotorTorque = nonNegative(j.maxMotorTorque);
        return world.CreateJoint(&def);
    }
    case JointType::Prismatic: {
        b2PrismaticJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.localAxisA = unitAxis(j.localAxisA);
        def.referenceAngle = finiteOr(j.referenceAngle, 0);
        def.enableLimit = j.enableLimit;
        sortedLimits(j, &def.lowerTranslation, &def.upperTranslation);
        def.enableMotor = j.enableMotor;
        def.maxMotorForce = nonNegative(j.maxMotorForce);
        def.motorSpeed = finiteOr(j.motorSpeed, 0);
        return world.CreateJoint(&def);
    }
    case JointType::Distance: {
        b2DistanceJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.length = std::max(nonNegative(j.length), b2_linearSlop);
        if (j.frequency > 0 && std::isfinite(j.frequency)) {
            // A spring without limits, as distance joints with a frequency always were.
            def.minLength = 0;
            def.maxLength = FLT_MAX;
            b2LinearStiffness(def.stiffness, def.damping, j.frequency, nonNegative(j.dampingRatio), bodyA, bodyB);
            finiteSpring(def.stiffness, def.damping);
        } else {
            def.minLength = def.length;
            def.maxLength = def.length;
        }
        return world.CreateJoint(&def);
    }
    case JointType::Rope: {
        b2DistanceJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.maxLength = std::max(nonNegative(j.maxLength), b2_linearSlop);
        def.length = def.maxLength;
        def.minLength = 0;
        def.stiffness = 0;
        def.damping = 0;
        return world.CreateJoint(&def);
    }
    case JointType::Wheel: {
        b2WheelJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.localAxisA = unitAxis(j.localAxisA);
        def.enableMotor = j.enableMotor;
        def.motorSpeed = finiteOr(j.motorSpeed, 0);
        def.maxMotorTorque = nonNegative(j.maxMotorTorque);
        b2LinearStiffness(def.stiffness, def.damping, nonNegative(j.springFrequency),
                          nonNegative(j.springDampingRatio), bodyA, bodyB);
        finiteSpring(def.stiffness, def.damping);
        return world.CreateJoint(&def);
    }
    case JointType::Weld: {
        b2WeldJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.referenceAngle = finiteOr(j.referenceAngle, 0);
        b2AngularStiffness(def.stiffness, def.damping, nonNegative(j.frequency), nonNegative(j.dampingRatio), bodyA,
                           bodyB);
        finiteSpring(def.stiffness, def.damping);
        return world.CreateJoint(&def);
    }
    case JointType::Friction: {
        b2FrictionJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.maxForce = nonNegative(j.maxForce);
        def.maxTorque = nonNegative(j.maxTorque);
        return world.CreateJoint(&def);
    }
    case JointType::Motor: {
        b2MotorJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        def.linearOffset = finiteVec(j.anchorA);
        def.angularOffset = finiteOr(j.referenceAngle, 0);
        def.maxForce = nonNegative(j.maxForce);
        def.maxTorque = nonNegative(j.maxTorque);
        def.correctionFactor = std::clamp(finiteOr(j.correctionFactor, 0.3f), 0.0f, 1.0f);
        return world.CreateJoint(&def);
    }
    case JointType::Pulley: {
        b2PulleyJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        fillAnchors(def, j);
        def.groundAnchorA = finiteVec(j.groundAnchorA);
        def.groundAnchorB = finiteVec(j.groundAnchorB);
        def.lengthA = nonNegative(j.lengthA);
        def.lengthB = nonNegative(j.lengthB);
        const float ratio = finiteOr(j.ratio, 1);
        def.ratio = std::fabs(ratio) > b2_epsilon ? ratio : 1.0f;
        return world.CreateJoint(&def);
    }
    case JointType::Mouse: {
        b2MouseJointDef def;
        fillCommon(def, j, bodyA, bodyB);
        // Box2D takes body B's anchor where the target starts.
        def.target = bodyB->GetWorldPoint(finiteVec(j.anchorB));
        def.maxForce = nonNegative(j.maxForce);
        b2LinearStiffness(def.stiffness, def.damping, nonNegative(j.frequency), nonNegative(j.dampingRatio), bodyA,
                          bodyB);
        finiteSpring(def.stiffness, def.damping);
        auto* joint = static_cast<b2MouseJoint*>(world.CreateJoint(&def));
        const b2Vec2 target = finiteVec(j.target);
        if (target != def.target)
            joint->SetTarget(target);
        return joint;
    }
    default:
        return nullptr;
    }
}
} // namespace plax
