#pragma once

#include "plax/values.h"

namespace plax
{
/// Joint types, numbered as Box2D's joint type enumeration.
enum class JointType
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

/// The word of a type in raw info ("revolute", ...); "unknown" for Unknown.
const char* jointTypeWord(JointType type);
/// The type of a raw-info word; Unknown for any other text.
JointType jointTypeFromWord(const char* word);

/// A joint's values as the author set them, before they meet a physics
/// engine: anchors in the bodies' local frames, frequencies and damping
/// ratios rather than stiffness, a rope's maximum length, limits in any order.
/// Every type's members are kept; a type reads only its own. The defaults
/// are those of a member missing from a file.
struct JointValues
{
    JointType type = JointType::Revolute;
    bool collideConnected = false;
    Vec2 anchorA;                  ///< local anchor on body A (a motor joint's linear offset)
    Vec2 anchorB;                  ///< local anchor on body B
    float referenceAngle = 0;      ///< revolute, prismatic, weld; a motor joint's angular offset
    bool enableLimit = false;
    float lowerLimit = 0;          ///< angle (revolute) or translation (prismatic)
    float upperLimit = 0;
    bool enableMotor = false;
    float motorSpeed = 0;
    float maxMotorTorque = 0;      ///< revolute, wheel
    float maxMotorForce = 0;       ///< prismatic
    Vec2 localAxisA{1, 0};         ///< prismatic, wheel
    float length = 1;              ///< distance
    float frequency = 0;           ///< distance, weld, mouse (Hz; 0 means rigid)
    float dampingRatio = 0;        ///< distance, weld, mouse
    float springFrequency = 0;     ///< wheel
    float springDampingRatio = 0;  ///< wheel
    float maxForce = 0;            ///< friction, motor, mouse
    float maxTorque = 0;           ///< friction, motor
    float maxLength = 1;           ///< rope
    float correctionFactor = 0.3f; ///< motor
    Vec2 groundAnchorA;            ///< pulley, world coordinates
    Vec2 groundAnchorB;            ///< pulley, world coordinates
    float lengthA = 0;             ///< pulley
    float lengthB = 0;             ///< pulley
    float ratio = 1;               ///< pulley, gear
    Vec2 target;                   ///< mouse, world coordinates
};
} // namespace plax
