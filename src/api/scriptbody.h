#pragma once

#include "api/scripthandles.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <string>

// The `body` handle's methods and the global body functions of plaxscript.
// Editor tools and panels call these same functions (inside a
// ScriptDocumentScope), so their changes are recorded like a script's.
namespace BodyApi
{
bool opEquals(const ScriptBody* self, const ScriptBody& other);
void select(ScriptBody* self);
void deselect(ScriptBody* self);
bool isSelected(ScriptBody* self);
std::string getName(ScriptBody* self);
void setName(ScriptBody* self, const std::string& name);
/// Body type 0 static, 1 kinematic, 2 dynamic; other values are refused.
void setType(ScriptBody* self, int type);
void setPosition(ScriptBody* self, float x, float y);
void setPositionV(ScriptBody* self, ScriptVec2 p);
void setAngle(ScriptBody* self, float angle);
void setGravityScale(ScriptBody* self, float value);
void setAngularVelocity(ScriptBody* self, float value);
void setLinearDamping(ScriptBody* self, float value);
void setAngularDamping(ScriptBody* self, float value);
void setLinearVelocity(ScriptBody* self, float x, float y);
void setLinearVelocityV(ScriptBody* self, ScriptVec2 v);
void setBullet(ScriptBody* self, int on);
void setFixedRotation(ScriptBody* self, int on);
void setSleepingAllowed(ScriptBody* self, int on);
void setAwake(ScriptBody* self, int on);
void setActive(ScriptBody* self, int on);
/// Sets the mass override ("massData-mass"; 0 uses the fixtures' mass).
void setMass(ScriptBody* self, float mass);
ScriptFixture addFixture(ScriptBody* self, int id, const std::string& json);
void deleteBody(ScriptBody* self);
ScriptVec2 getWorldPoint(ScriptBody* self, ScriptVec2 local);
ScriptVec2 getLocalPoint(ScriptBody* self, ScriptVec2 world);
ScriptVec2 getWorldVector(ScriptBody* self, ScriptVec2 local);
ScriptVec2 getLocalVector(ScriptBody* self, ScriptVec2 world);
ScriptVec2 getWorldCenter(ScriptBody* self);
ScriptVec2 getLocalCenter(ScriptBody* self);
AngelScript::CScriptArray* getFixtures(ScriptBody* self);
AngelScript::CScriptArray* getImages(ScriptBody* self);
AngelScript::CScriptArray* getSamplers(ScriptBody* self);
AngelScript::CScriptArray* getJoints(ScriptBody* self);
AngelScript::CScriptArray* getJointsWith(ScriptBody* self, const ScriptBody& other);
int getType(ScriptBody* self);
bool isBullet(ScriptBody* self);
bool isFixedRotation(ScriptBody* self);
bool isSleepingAllowed(ScriptBody* self);
bool isAwake(ScriptBody* self);
bool isActive(ScriptBody* self);
ScriptVec2 getLinearVelocity(ScriptBody* self);
float getAngularVelocity(ScriptBody* self);
float getLinearDamping(ScriptBody* self);
float getAngularDamping(ScriptBody* self);
float getGravityScale(ScriptBody* self);
/// The override when set, otherwise the mass Box2D gives the fixtures.
float getMass(ScriptBody* self);
float getAngle(ScriptBody* self);

/// Global functions.
ScriptBody getBody(int id);
ScriptBody getBodyByName(const std::string& name);
AngelScript::CScriptArray* getBodies(const std::string& name);
AngelScript::CScriptArray* getSelectedBodies();
AngelScript::CScriptArray* getAllBodies();
ScriptBody addBody(int id, const std::string& json);
void selectAll(const AngelScript::CScriptArray& bodies);
void deselectAll(const AngelScript::CScriptArray& bodies);
void deleteAll(const AngelScript::CScriptArray& bodies);
} // namespace BodyApi
