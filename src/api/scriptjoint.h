#pragma once

#include "api/scripthandles.h"

// The `joint` handle's own methods (the members it shares with the other
// item handles are in scriptitemhandles). Parameters that only some joint
// types have are refused on the others: a getter returns 0 (or false) and
// logs "<method> failed: wrong joint type", a setter changes nothing and
// logs the same with its own name. The scene keeps the authored values
// (length, frequency, damping ratio, rope length); physics/jointbuilder maps
// them onto Box2D.
namespace JointApi
{
/// Sets body A or B by id or handle. A missing body, or the joint's other
/// body, is refused ("Cannot set same body for both bodyA and bodyB of joint.").
void setBodyA(ScriptJoint* self, int bodyId);
void setBodyB(ScriptJoint* self, int bodyId);
void setBodyAH(ScriptJoint* self, const ScriptBody& body);
void setBodyBH(ScriptJoint* self, const ScriptBody& body);
ScriptBody getBodyA(ScriptJoint* self);
ScriptBody getBodyB(ScriptJoint* self);

void setLocalAnchorA(ScriptJoint* self, float x, float y);
void setLocalAnchorB(ScriptJoint* self, float x, float y);
void setLocalAnchorAV(ScriptJoint* self, ScriptVec2 p);
void setLocalAnchorBV(ScriptJoint* self, ScriptVec2 p);
void setCollideConnected(ScriptJoint* self, int on);
/// Revolute and prismatic joints.
void setEnableLimit(ScriptJoint* self, int on);
void setEnableLimitB(ScriptJoint* self, bool on);
/// Revolute, prismatic and wheel joints.
void setEnableMotor(ScriptJoint* self, int on);
void setEnableMotorB(ScriptJoint* self, bool on);
/// Revolute, prismatic, weld and motor joints.
void setReferenceAngle(ScriptJoint* self, float angle);
/// Revolute and prismatic joints.
void setLowerLimit(ScriptJoint* self, float value);
void setUpperLimit(ScriptJoint* self, float value);
/// Revolute, prismatic and wheel joints.
void setMotorSpeed(ScriptJoint* self, float value);
/// Revolute and wheel joints (their motor), friction and motor joints
/// (their maximum torque). Not negative.
void setMaxMotorTorque(ScriptJoint* self, float value);
/// Prismatic joints (their motor), friction and motor joints (their
/// maximum force). Not negative.
void setMaxMotorForce(ScriptJoint* self, float value);
/// Distance joints (their length) and rope joints (their maximum length). Not negative.
void setLength(ScriptJoint* self, float value);
/// Distance and weld joints, and the spring of wheel joints. Not negative.
void setFrequency(ScriptJoint* self, float value);
void setDampingRatio(ScriptJoint* self, float value);
/// Motor joints; 0 to 1.
void setCorrectionFactor(ScriptJoint* self, float value);
/// Prismatic and wheel joints.
void setLocalAxis(ScriptJoint* self, float x, float y);
void setLocalAxisV(ScriptJoint* self, ScriptVec2 axis);

/// Box2D's joint type number (revolute 1, prismatic 2, distance 3, wheel 7,
/// weld 8, friction 9, rope 10, motor 11).
int getType(ScriptJoint* self);
bool getCollideConnected(ScriptJoint* self);
float getLength(ScriptJoint* self);
ScriptVec2 getLocalAnchorA(ScriptJoint* self);
ScriptVec2 getLocalAnchorB(ScriptJoint* self);
ScriptVec2 getWorldAnchorA(ScriptJoint* self);
ScriptVec2 getWorldAnchorB(ScriptJoint* self);
float getFrequency(ScriptJoint* self);
float getDampingRatio(ScriptJoint* self);
float getReferenceAngle(ScriptJoint* self);
float getLowerLimit(ScriptJoint* self);
float getUpperLimit(ScriptJoint* self);
bool getEnableMotor(ScriptJoint* self);
bool getEnableLimit(ScriptJoint* self);
/// The stored axis, whatever the type (only prismatic and wheel joints use it).
ScriptVec2 getLocalAxis(ScriptJoint* self);
float getMotorSpeed(ScriptJoint* self);
float getMaxMotorTorque(ScriptJoint* self);
float getMaxMotorForce(ScriptJoint* self);
float getCorrectionFactor(ScriptJoint* self);
} // namespace JointApi
