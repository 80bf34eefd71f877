#pragma once

#include "api/scripthandles.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <string>
#include <vector>

// The `fixture`, `shape` and `vertex` handles' methods and their global
// functions. Editor tools and panels call these same functions.
namespace FixtureApi
{
bool opEquals(const ScriptFixture* self, const ScriptFixture& other);
void select(ScriptFixture* self);
void deselect(ScriptFixture* self);
bool isSelected(ScriptFixture* self);
std::string getName(ScriptFixture* self);
void setName(ScriptFixture* self, const std::string& name);
void setFriction(ScriptFixture* self, float value);
void setRestitution(ScriptFixture* self, float value);
void setDensity(ScriptFixture* self, float value);
void setSensor(ScriptFixture* self, int on);
void setFilterCategoryBits(ScriptFixture* self, int bits);
void setFilterMaskBits(ScriptFixture* self, int bits);
void setFilterGroupIndex(ScriptFixture* self, int group);
/// Sets the density that gives the fixture this mass.
void setMass(ScriptFixture* self, float mass);
ScriptVertex getVertex(ScriptFixture* self, int index);
ScriptBody getBody(ScriptFixture* self);
void setVertex(ScriptFixture* self, int index, float x, float y);
void setVertexV(ScriptFixture* self, int index, ScriptVec2 p);
ScriptVertex addVertex(ScriptFixture* self, int index, float x, float y);
ScriptVertex addVertexV(ScriptFixture* self, int index, ScriptVec2 p);
void deleteVertex(ScriptFixture* self, int index);
int getNumVertices(ScriptFixture* self);
AngelScript::CScriptArray* getVertices(ScriptFixture* self);
/// Replaces the vertex list, recorded as vertex moves, additions and deletions.
void setVerticesFromPoints(ScriptFixture* self, const AngelScript::CScriptArray& points);
void setVerticesFromVertices(ScriptFixture* self, const AngelScript::CScriptArray& vertices);
void deleteFixture(ScriptFixture* self);
void reverseWinding(ScriptFixture* self);
float getFriction(ScriptFixture* self);
float getRestitution(ScriptFixture* self);
float getDensity(ScriptFixture* self);
bool isSensor(ScriptFixture* self);
int getFilterCategoryBits(ScriptFixture* self);
int getFilterMaskBits(ScriptFixture* self);
int getFilterGroupIndex(ScriptFixture* self);
float getMass(ScriptFixture* self);
AngelScript::CScriptArray* getShapes(ScriptFixture* self);
ScriptShape getShape(ScriptFixture* self, int index);

ScriptFixture getFixture(int id);
ScriptFixture getFixtureByName(const std::string& name);
AngelScript::CScriptArray* getFixtures(const std::string& name);
AngelScript::CScriptArray* getSelectedFixtures();
AngelScript::CScriptArray* getAllFixtures();
void selectAll(const AngelScript::CScriptArray& fixtures);
void deselectAll(const AngelScript::CScriptArray& fixtures);
void deleteAll(const AngelScript::CScriptArray& fixtures);
} // namespace FixtureApi

namespace ShapeApi
{
bool opEquals(const ScriptShape* self, const ScriptShape& other);
/// Shape type 0 circle, 1 polygon, 2 line, 3 loop, under the shape rules.
void setType(ScriptShape* self, int type);
void setRadius(ScriptShape* self, float radius);
float getRadius(ScriptShape* self);
ScriptShape getShape(int fixtureId, int index);
} // namespace ShapeApi

namespace VertexApi
{
bool opEquals(const ScriptVertex* self, const ScriptVertex& other);
void select(ScriptVertex* self);
void deselect(ScriptVertex* self);
bool isSelected(ScriptVertex* self);
void setPos(ScriptVertex* self, float x, float y);
void setPosV(ScriptVertex* self, ScriptVec2 p);
void setWorldPos(ScriptVertex* self, float x, float y);
void setWorldPosV(ScriptVertex* self, ScriptVec2 p);
ScriptFixture getFixture(ScriptVertex* self);
void deleteVertex(ScriptVertex* self);
ScriptVertex next(ScriptVertex* self);
ScriptVertex prev(ScriptVertex* self);

ScriptVertex getVertex(int fixtureId, int index);
ScriptVertex getVertexByName(const std::string& fixtureName, int index);
AngelScript::CScriptArray* getVertices(const std::string& fixtureName);
AngelScript::CScriptArray* getSelectedVertices();
AngelScript::CScriptArray* getAllVertices();
void selectAll(const AngelScript::CScriptArray& vertices);
void deselectAll(const AngelScript::CScriptArray& vertices);
void deleteAll(const AngelScript::CScriptArray& vertices);
} // namespace VertexApi

class MetaFixture;

// Recorded edits of a fixture's vertex list, shared by the fixture and
// vertex handles and the transforms.
namespace VertexEdits
{
/// Moves vertex `index` to `p` (body coordinates).
void move(MetaFixture& fixture, int index, Vec2 p);
/// Inserts a vertex at `index`; false when refused.
bool insert(MetaFixture& fixture, int index, Vec2 p);
/// Removes vertex `index` unless the shapes need it.
void remove(MetaFixture& fixture, int index);
/// Replaces the whole list with moves, insertions and deletions.
void replaceAll(MetaFixture& fixture, const std::vector<Vec2>& points);
} // namespace VertexEdits
