#include "api/scriptitemhandles.h"
#include "api/scriptjoint.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace JointApi;

void registerJoint(ScriptRegistrar& reg)
{
    const char* t = "joint";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptJoint, valid));
    reg.property(t, "uint id", offsetof(ScriptJoint, id));
    registerItemHandleBasics<ScriptJoint>(reg);

    reg.method(t, "void setBodyA(int)", asFUNCTION(setBodyA), cc);
    reg.method(t, "void setBodyB(int)", asFUNCTION(setBodyB), cc);
    reg.method(t, "void setBodyA(const body& in)", asFUNCTION(setBodyAH), cc);
    reg.method(t, "void setBodyB(const body& in)", asFUNCTION(setBodyBH), cc);
    reg.method(t, "body getBodyA()", asFUNCTION(getBodyA), cc);
    reg.method(t, "body getBodyB()", asFUNCTION(getBodyB), cc);
    reg.method(t, "void setLocalAnchorA(float, float)", asFUNCTION(setLocalAnchorA), cc);
    reg.method(t, "void setLocalAnchorB(float, float)", asFUNCTION(setLocalAnchorB), cc);
    reg.method(t, "void setLocalAnchorA(vec2)", asFUNCTION(setLocalAnchorAV), cc);
    reg.method(t, "void setLocalAnchorB(vec2)", asFUNCTION(setLocalAnchorBV), cc);
    reg.method(t, "void setCollideConnected(int)", asFUNCTION(setCollideConnected), cc);
    reg.method(t, "void setEnableLimit(int)", asFUNCTION(setEnableLimit), cc);
    reg.method(t, "void setEnableMotor(int)", asFUNCTION(setEnableMotor), cc);
    reg.method(t, "void setEnableLimit(bool)", asFUNCTION(setEnableLimitB), cc);
    reg.method(t, "void setEnableMotor(bool)", asFUNCTION(setEnableMotorB), cc);
    reg.method(t, "void setReferenceAngle(float)", asFUNCTION(setReferenceAngle), cc);
    reg.method(t, "void setLowerLimit(float)", asFUNCTION(setLowerLimit), cc);
    reg.method(t, "void setUpperLimit(float)", asFUNCTION(setUpperLimit), cc);
    reg.method(t, "void setMotorSpeed(float)", asFUNCTION(setMotorSpeed), cc);
    reg.method(t, "void setMaxMotorTorque(float)", asFUNCTION(setMaxMotorTorque), cc);
    reg.method(t, "void setMaxMotorForce(float)", asFUNCTION(setMaxMotorForce), cc);
    reg.method(t, "void setLength(float)", asFUNCTION(setLength), cc);
    reg.method(t, "void setFrequency(float)", asFUNCTION(setFrequency), cc);
    reg.method(t, "void setDampingRatio(float)", asFUNCTION(setDampingRatio), cc);
    reg.method(t, "void setCorrectionFactor(float)", asFUNCTION(setCorrectionFactor), cc);
    reg.method(t, "void setLocalAxis(float, float)", asFUNCTION(setLocalAxis), cc);
    reg.method(t, "void setLocalAxis(vec2)", asFUNCTION(setLocalAxisV), cc);
    reg.method(t, "int getType()", asFUNCTION(getType), cc);
    reg.method(t, "bool getCollideConnected()", asFUNCTION(getCollideConnected), cc);
    reg.method(t, "float getLength()", asFUNCTION(getLength), cc);
    reg.method(t, "vec2 getLocalAnchorA()", asFUNCTION(getLocalAnchorA), cc);
    reg.method(t, "vec2 getLocalAnchorB()", asFUNCTION(getLocalAnchorB), cc);
    reg.method(t, "vec2 getWorldAnchorA()", asFUNCTION(getWorldAnchorA), cc);
    reg.method(t, "vec2 getWorldAnchorB()", asFUNCTION(getWorldAnchorB), cc);
    reg.method(t, "float getFrequency()", asFUNCTION(getFrequency), cc);
    reg.method(t, "float getDampingRatio()", asFUNCTION(getDampingRatio), cc);
    reg.method(t, "float getReferenceAngle()", asFUNCTION(getReferenceAngle), cc);
    reg.method(t, "float getLowerLimit()", asFUNCTION(getLowerLimit), cc);
    reg.method(t, "float getUpperLimit()", asFUNCTION(getUpperLimit), cc);
    reg.method(t, "bool getEnableMotor()", asFUNCTION(getEnableMotor), cc);
    reg.method(t, "bool getEnableLimit()", asFUNCTION(getEnableLimit), cc);
    reg.method(t, "vec2 getLocalAxis()", asFUNCTION(getLocalAxis), cc);
    reg.method(t, "float getMotorSpeed()", asFUNCTION(getMotorSpeed), cc);
    reg.method(t, "float getMaxMotorTorque()", asFUNCTION(getMaxMotorTorque), cc);
    reg.method(t, "float getMaxMotorForce()", asFUNCTION(getMaxMotorForce), cc);
    reg.method(t, "float getCorrectionFactor()", asFUNCTION(getCorrectionFactor), cc);
}
