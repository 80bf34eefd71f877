#include "api/scriptjoint.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "model/metaworld.h"
#include "sampling/samplerframe.h"

#include <initializer_list>
#include <type_traits>

namespace JointApi
{
namespace
{
using ScriptApi::toScript;

bool isAnyOf(const MetaJoint& j, std::initializer_list<JointType> types)
{
    for (JointType t : types)
        if (j.type == t)
            return true;
    return false;
}

void wrongType(const char* method)
{
    plaxLog(LOG_WARNING, "%s failed: wrong joint type", method);
}

// The field a type-dependent parameter lives in, or null for the types
// that do not have it.
float* lengthOf(MetaJoint& j)
{
    return j.type == JointType::Distance ? &j.length : j.type == JointType::Rope ? &j.maxLength : nullptr;
}
float* frequencyOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Distance, JointType::Weld}) ? &j.frequency : j.type == JointType::Wheel ? &j.springFrequency : nullptr;
}
float* dampingRatioOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Distance, JointType::Weld})  ? &j.dampingRatio
           : j.type == JointType::Wheel                   ? &j.springDampingRatio
                                                     : nullptr;
}
float* referenceAngleOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Revolute, JointType::Prismatic, JointType::Weld, JointType::Motor}) ? &j.referenceAngle : nullptr;
}
float* lowerLimitOf(MetaJoint& j) { return isAnyOf(j, {JointType::Revolute, JointType::Prismatic}) ? &j.lowerLimit : nullptr; }
float* upperLimitOf(MetaJoint& j) { return isAnyOf(j, {JointType::Revolute, JointType::Prismatic}) ? &j.upperLimit : nullptr; }
float* motorSpeedOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Revolute, JointType::Prismatic, JointType::Wheel}) ? &j.motorSpeed : nullptr;
}
float* maxMotorTorqueOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Revolute, JointType::Wheel})   ? &j.maxMotorTorque
           : isAnyOf(j, {JointType::Friction, JointType::Motor}) ? &j.maxTorque
                                                       : nullptr;
}
float* maxMotorForceOf(MetaJoint& j)
{
    return j.type == JointType::Prismatic                   ? &j.maxMotorForce
           : isAnyOf(j, {JointType::Friction, JointType::Motor}) ? &j.maxForce
                                                       : nullptr;
}
float* correctionFactorOf(MetaJoint& j) { return j.type == JointType::Motor ? &j.correctionFactor : nullptr; }
bool* enableLimitOf(MetaJoint& j) { return isAnyOf(j, {JointType::Revolute, JointType::Prismatic}) ? &j.enableLimit : nullptr; }
bool* enableMotorOf(MetaJoint& j)
{
    return isAnyOf(j, {JointType::Revolute, JointType::Prismatic, JointType::Wheel}) ? &j.enableMotor : nullptr;
}
Vec2* localAxisOf(MetaJoint& j) { return isAnyOf(j, {JointType::Prismatic, JointType::Wheel}) ? &j.localAxisA : nullptr; }

enum class Range
{
    Any,
    NonNegative,
    Unit,
};

template <class Field>
void setTyped(ScriptJoint* self, const char* method, Field* (*fieldOf)(MetaJoint&), float value, Range range)
{
    MetaJoint* j = ScriptApi::use(*self);
    if (!j)
        return;
    Field* field = fieldOf(*j);
    if (!field) {
        wrongType(method);
        return;
    }
    if constexpr (std::is_same_v<Field, bool>) {
        ScriptApi::setBool(*j, method, *field, value != 0);
    } else {
        if (!ScriptApi::isUsable(value, "joint", method))
            return;
        if ((range == Range::NonNegative || range == Range::Unit) && value < 0) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring negative value for joint::%1: %2").arg(method).arg(double(value)));
            return;
        }
        if (range == Range::Unit && value > 1) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring value above 1 for joint::%1: %2").arg(method).arg(double(value)));
            return;
        }
        ScriptApi::setFloat(*j, method, *field, value);
    }
}

template <class Field>
Field getTyped(ScriptJoint* self, const char* method, Field* (*fieldOf)(MetaJoint&))
{
    MetaJoint* j = ScriptApi::use(*self);
    if (!j)
        return Field();
    Field* field = fieldOf(*j);
    if (!field) {
        wrongType(method);
        return Field();
    }
    return *field;
}

void setBody(ScriptJoint* self, bool a, MetaBody* body)
{
    MetaJoint* j = ScriptApi::use(*self);
    if (!j)
        return;
    const char* setter = a ? "setBodyA" : "setBodyB";
    if (!body) {
        plaxLog(LOG_ERROR, "Could not find id for new body being set in joint");
        return;
    }
    MetaBody* other = a ? j->bodyB : j->bodyA;
    if (body == other) {
        plaxLog(LOG_ERROR, "Cannot set same body for both bodyA and bodyB of joint.");
        return;
    }
    ScriptApi::setBodyRef(*j, setter, a ? j->bodyA : j->bodyB, body);
}

MetaBody* bodyById(int id)
{
    MetaWorld* world = ScriptApi::world();
    return world && id > 0 ? world->findBody(ItemId(id)) : nullptr;
}

void setAnchor(ScriptJoint* self, bool a, Vec2 p)
{
    if (MetaJoint* j = ScriptApi::use(*self))
        ScriptApi::setVec(*j, a ? "setLocalAnchorA" : "setLocalAnchorB", a ? j->anchorA : j->anchorB, p);
}
} // namespace

void setBodyA(ScriptJoint* self, int id) { setBody(self, true, bodyById(id)); }
void setBodyB(ScriptJoint* self, int id) { setBody(self, false, bodyById(id)); }
void setBodyAH(ScriptJoint* self, const ScriptBody& b) { setBody(self, true, ScriptApi::find(b)); }
void setBodyBH(ScriptJoint* self, const ScriptBody& b) { setBody(self, false, ScriptApi::find(b)); }

ScriptBody getBodyA(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return ScriptApi::bodyHandle(j ? j->bodyA : nullptr);
}

ScriptBody getBodyB(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return ScriptApi::bodyHandle(j ? j->bodyB : nullptr);
}

void setLocalAnchorA(ScriptJoint* self, float x, float y) { setAnchor(self, true, {x, y}); }
void setLocalAnchorB(ScriptJoint* self, float x, float y) { setAnchor(self, false, {x, y}); }
void setLocalAnchorAV(ScriptJoint* self, ScriptVec2 p) { setAnchor(self, true, {p.x, p.y}); }
void setLocalAnchorBV(ScriptJoint* self, ScriptVec2 p) { setAnchor(self, false, {p.x, p.y}); }

void setCollideConnected(ScriptJoint* self, int on)
{
    if (MetaJoint* j = ScriptApi::use(*self))
        ScriptApi::setBool(*j, "setCollideConnected", j->collideConnected, on != 0);
}

void setEnableLimit(ScriptJoint* self, int on) { setTyped<bool>(self, "setEnableLimit", enableLimitOf, float(on != 0), Range::Any); }
void setEnableLimitB(ScriptJoint* self, bool on) { setEnableLimit(self, on ? 1 : 0); }
void setEnableMotor(ScriptJoint* self, int on) { setTyped<bool>(self, "setEnableMotor", enableMotorOf, float(on != 0), Range::Any); }
void setEnableMotorB(ScriptJoint* self, bool on) { setEnableMotor(self, on ? 1 : 0); }
void setReferenceAngle(ScriptJoint* self, float v) { setTyped<float>(self, "setReferenceAngle", referenceAngleOf, v, Range::Any); }
void setLowerLimit(ScriptJoint* self, float v) { setTyped<float>(self, "setLowerLimit", lowerLimitOf, v, Range::Any); }
void setUpperLimit(ScriptJoint* self, float v) { setTyped<float>(self, "setUpperLimit", upperLimitOf, v, Range::Any); }
void setMotorSpeed(ScriptJoint* self, float v) { setTyped<float>(self, "setMotorSpeed", motorSpeedOf, v, Range::Any); }
void setMaxMotorTorque(ScriptJoint* self, float v)
{
    setTyped<float>(self, "setMaxMotorTorque", maxMotorTorqueOf, v, Range::NonNegative);
}
void setMaxMotorForce(ScriptJoint* self, float v)
{
    setTyped<float>(self, "setMaxMotorForce", maxMotorForceOf, v, Range::NonNegative);
}
void setLength(ScriptJoint* self, float v) { setTyped<float>(self, "setLength", lengthOf, v, Range::NonNegative); }
void setFrequency(ScriptJoint* self, float v) { setTyped<float>(self, "setFrequency", frequencyOf, v, Range::NonNegative); }
void setDampingRatio(ScriptJoint* self, float v)
{
    setTyped<float>(self, "setDampingRatio", dampingRatioOf, v, Range::NonNegative);
}
void setCorrectionFactor(ScriptJoint* self, float v)
{
    setTyped<float>(self, "setCorrectionFactor", correctionFactorOf, v, Range::Unit);
}

void setLocalAxis(ScriptJoint* self, float x, float y)
{
    MetaJoint* j = ScriptApi::use(*self);
    if (!j)
        return;
    Vec2* axis = localAxisOf(*j);
    if (!axis) {
        wrongType("setLocalAxis");
        return;
    }
    ScriptApi::setVec(*j, "setLocalAxis", *axis, {x, y});
}
void setLocalAxisV(ScriptJoint* self, ScriptVec2 axis) { setLocalAxis(self, axis.x, axis.y); }

int getType(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? int(j->type) : 0;
}

bool getCollideConnected(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j && j->collideConnected;
}

ScriptVec2 getLocalAnchorA(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? toScript(j->anchorA) : ScriptVec2();
}

ScriptVec2 getLocalAnchorB(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? toScript(j->anchorB) : ScriptVec2();
}

ScriptVec2 getWorldAnchorA(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? toScript(bodyToWorld(j->bodyA, j->anchorA)) : ScriptVec2();
}

ScriptVec2 getWorldAnchorB(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? toScript(bodyToWorld(j->bodyB, j->anchorB)) : ScriptVec2();
}

float getLength(ScriptJoint* self) { return getTyped<float>(self, "getLength", lengthOf); }
float getFrequency(ScriptJoint* self) { return getTyped<float>(self, "getFrequency", frequencyOf); }
float getDampingRatio(ScriptJoint* self) { return getTyped<float>(self, "getDampingRatio", dampingRatioOf); }
float getReferenceAngle(ScriptJoint* self) { return getTyped<float>(self, "getReferenceAngle", referenceAngleOf); }
float getLowerLimit(ScriptJoint* self) { return getTyped<float>(self, "getLowerLimit", lowerLimitOf); }
float getUpperLimit(ScriptJoint* self) { return getTyped<float>(self, "getUpperLimit", upperLimitOf); }
bool getEnableMotor(ScriptJoint* self) { return getTyped<bool>(self, "getEnableMotor", enableMotorOf); }
bool getEnableLimit(ScriptJoint* self) { return getTyped<bool>(self, "getEnableLimit", enableLimitOf); }
float getMotorSpeed(ScriptJoint* self) { return getTyped<float>(self, "getMotorSpeed", motorSpeedOf); }
float getMaxMotorTorque(ScriptJoint* self) { return getTyped<float>(self, "getMaxMotorTorque", maxMotorTorqueOf); }
float getMaxMotorForce(ScriptJoint* self) { return getTyped<float>(self, "getMaxMotorForce", maxMotorForceOf); }
float getCorrectionFactor(ScriptJoint* self) { return getTyped<float>(self, "getCorrectionFactor", correctionFactorOf); }

ScriptVec2 getLocalAxis(ScriptJoint* self)
{
    MetaJoint* j = ScriptApi::use(*self);
    return j ? toScript(j->localAxisA) : ScriptVec2();
}
} // namespace JointApi
