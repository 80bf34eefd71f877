#include "api/scriptbody.h"
#include "api/scriptcustomprops.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace BodyApi;

void registerBody(ScriptRegistrar& reg)
{
    const char* t = "body";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptBody, valid));
    reg.property(t, "vec2 pos", offsetof(ScriptBody, pos));
    reg.property(t, "uint id", offsetof(ScriptBody, id));
    reg.property(t, "float angle", offsetof(ScriptBody, angle));

    reg.method(t, "bool opEquals(const body &in) const", asFUNCTION(opEquals), cc);
    reg.method(t, "void select()", asFUNCTION(BodyApi::select), cc);
    reg.method(t, "void deselect()", asFUNCTION(deselect), cc);
    reg.method(t, "bool isSelected()", asFUNCTION(isSelected), cc);
    reg.method(t, "string getName()", asFUNCTION(getName), cc);
    reg.method(t, "void setName(const string &in)", asFUNCTION(setName), cc);
    reg.method(t, "void setType(int)", asFUNCTION(setType), cc);
    reg.method(t, "void setPosition(float, float)", asFUNCTION(setPosition), cc);
    reg.method(t, "void setPos(float, float)", asFUNCTION(setPosition), cc);
    reg.method(t, "void setPosition(vec2)", asFUNCTION(setPositionV), cc);
    reg.method(t, "void setPos(vec2)", asFUNCTION(setPositionV), cc);
    reg.method(t, "void setAngle(float)", asFUNCTION(setAngle), cc);
    reg.method(t, "void setGravityScale(float)", asFUNCTION(setGravityScale), cc);
    reg.method(t, "void setAngularVelocity(float)", asFUNCTION(setAngularVelocity), cc);
    reg.method(t, "void setLinearDamping(float)", asFUNCTION(setLinearDamping), cc);
    reg.method(t, "void setAngularDamping(float)", asFUNCTION(setAngularDamping), cc);
    reg.method(t, "void setLinearVelocity(float, float)", asFUNCTION(setLinearVelocity), cc);
    reg.method(t, "void setLinearVelocity(vec2)", asFUNCTION(setLinearVelocityV), cc);
    reg.method(t, "void setBullet(int)", asFUNCTION(setBullet), cc);
    reg.method(t, "void setFixedRotation(int)", asFUNCTION(setFixedRotation), cc);
    reg.method(t, "void setSleepingAllowed(int)", asFUNCTION(setSleepingAllowed), cc);
    reg.method(t, "void setAwake(int)", asFUNCTION(setAwake), cc);
    reg.method(t, "void setActive(int)", asFUNCTION(setActive), cc);
    reg.method(t, "void setMass(float)", asFUNCTION(setMass), cc);
    reg.method(t, "fixture addFixture(int, const string &in)", asFUNCTION(addFixture), cc);
    reg.method(t, "void delete()", asFUNCTION(deleteBody), cc);
    reg.method(t, "vec2 getWorldPoint(vec2)", asFUNCTION(getWorldPoint), cc);
    reg.method(t, "vec2 getLocalPoint(vec2)", asFUNCTION(getLocalPoint), cc);
    reg.method(t, "vec2 getWorldVector(vec2)", asFUNCTION(getWorldVector), cc);
    reg.method(t, "vec2 getLocalVector(vec2)", asFUNCTION(getLocalVector), cc);
    reg.method(t, "vec2 getWorldCenter()", asFUNCTION(getWorldCenter), cc);
    reg.method(t, "vec2 getLocalCenter()", asFUNCTION(getLocalCenter), cc);
    reg.method(t, "fixture[]@ getFixtures()", asFUNCTION(getFixtures), cc);
    reg.method(t, "image[]@ getImages()", asFUNCTION(getImages), cc);
    reg.method(t, "sampler[]@ getSamplers()", asFUNCTION(getSamplers), cc);
    reg.method(t, "joint[]@ getJoints()", asFUNCTION(getJoints), cc);
    reg.method(t, "joint[]@ getJoints(const body &in)", asFUNCTION(getJointsWith), cc);
    reg.method(t, "int getType()", asFUNCTION(getType), cc);
    reg.method(t, "bool isBullet()", asFUNCTION(isBullet), cc);
    reg.method(t, "bool isFixedRotation()", asFUNCTION(isFixedRotation), cc);
    reg.method(t, "bool isSleepingAllowed()", asFUNCTION(isSleepingAllowed), cc);
    reg.method(t, "bool isAwake()", asFUNCTION(isAwake), cc);
    reg.method(t, "bool isActive()", asFUNCTION(isActive), cc);
    reg.method(t, "vec2 getLinearVelocity()", asFUNCTION(getLinearVelocity), cc);
    reg.method(t, "float getAngularVelocity()", asFUNCTION(getAngularVelocity), cc);
    reg.method(t, "float getLinearDamping()", asFUNCTION(getLinearDamping), cc);
    reg.method(t, "float getAngularDamping()", asFUNCTION(getAngularDamping), cc);
    reg.method(t, "float getGravityScale()", asFUNCTION(getGravityScale), cc);
    reg.method(t, "float getMass()", asFUNCTION(getMass), cc);
    reg.method(t, "float getAngle()", asFUNCTION(getAngle), cc);
    registerCustomPropertyMethods<ScriptBody>(reg, t);

    reg.global("body getBody(int)", asFUNCTION(getBody), asCALL_CDECL);
    reg.global("body getBody(const string &in)", asFUNCTION(getBodyByName), asCALL_CDECL);
    reg.global("body[]@ getBodies(const string &in)", asFUNCTION(getBodies), asCALL_CDECL);
    reg.global("body[]@ getSelectedBodies()", asFUNCTION(getSelectedBodies), asCALL_CDECL);
    reg.global("body[]@ sb()", asFUNCTION(getSelectedBodies), asCALL_CDECL);
    reg.global("body[]@ getAllBodies()", asFUNCTION(getAllBodies), asCALL_CDECL);
    reg.global("body[]@ ab()", asFUNCTION(getAllBodies), asCALL_CDECL);
    reg.global("body addBody(int, const string &in)", asFUNCTION(addBody), asCALL_CDECL);
    reg.global("void select(const body[] &in)", asFUNCTION(selectAll), asCALL_CDECL);
    reg.global("void deselect(const body[] &in)", asFUNCTION(deselectAll), asCALL_CDECL);
    reg.global("void delete(const body[] &in)", asFUNCTION(deleteAll), asCALL_CDECL);
}
