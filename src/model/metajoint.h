#pragma once

#include "model/metaitem.h"

class MetaBody;

/// Joint types, numbered as Box2D's joint type enumeration (distance 3, rope 10).
enum class JointType : int
{
    Unknown = 0,
    Revolute = 1,
    Prismatic = 2,
    Distance = 3,
    Pulley = 4,
    Mouse = 5,
    Gear = 6,
    Wheel = 7,
    Weld = 8,
    Friction = 9,
    Rope = 10,
    Motor = 11,
};

/// A joint between two bodies. Anchors are in the bodies' local coordinates.
/// Every type's parameters are kept, so changing the type loses nothing.
class MetaJoint : public MetaItem
{
public:
    MetaJoint() : MetaItem(ItemKind::Joint) {}

    JointType type = JointType::Revolute;
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
    /// Type for a scene-file word; JointType::Unknown for any other text.
    static JointType typeFromWord(const QString& word);
};
