#pragma once

#include "model/metaitem.h"

class MetaBody;

/// Joint types, numbered as Box2D's joint type enumeration (distance 3, rope 10).
enum JointType : int
{
    JOINT_UNKNOWN = 0,
    JOINT_REVOLUTE = 1,
    JOINT_PRISMATIC = 2,
    JOINT_DISTANCE = 3,
    JOINT_PULLEY = 4,
    JOINT_MOUSE = 5,
    JOINT_GEAR = 6,
    JOINT_WHEEL = 7,
    JOINT_WELD = 8,
    JOINT_FRICTION = 9,
    JOINT_ROPE = 10,
    JOINT_MOTOR = 11,
};

/// A joint between two bodies. Anchors are in the bodies' local coordinates.
/// Every type's parameters are kept, so changing the type loses nothing.
class MetaJoint : public MetaItem
{
public:
    MetaJoint() : MetaItem(ItemKind::Joint) {}

    JointType type = JOINT_REVOLUTE;
    MetaBody* bodyA = nullptr;
    MetaBody* bodyB = nullptr;
    Vec2 anchorA;
    Vec2 anchorB;
    bool collideConnected = false;

    float referenceAngle = 0;
    bool enableLimit = false;
    float lowerLimit = 0;
    float upperLimit = 0;
    bool enableMotor = false;
    float motorSpeed = 0;
    float maxMotorTorque = 0;
    float maxMotorForce = 0;
    Vec2 localAxisA{1, 0};
    float length = 1;
    float frequency = 0;
    float dampingRatio = 0;
    float springFrequency = 0;
    float springDampingRatio = 0;
    float maxForce = 0;
    float maxTorque = 0;
    float maxLength = 1;
    float correctionFactor = 0.3f;

    /// Scene-file word of a type ("revolute", ...); empty for types a scene cannot hold.
    static QString typeWord(JointType type);
    /// Type for a scene-file word; JOINT_UNKNOWN for any other text.
    static JointType typeFromWord(const QString& word);
};
