#include "api/scriptcustomprops.h"
#include "api/scriptfixture.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace FixtureApi;

void registerFixture(ScriptRegistrar& reg)
{
    const char* t = "fixture";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptFixture, valid));
    reg.property(t, "uint id", offsetof(ScriptFixture, id));

    reg.method(t, "bool opEquals(const fixture &in) const", asFUNCTION(opEquals), cc);
    reg.method(t, "void select()", asFUNCTION(FixtureApi::select), cc);
    reg.method(t, "void deselect()", asFUNCTION(deselect), cc);
    reg.method(t, "bool isSelected()", asFUNCTION(isSelected), cc);
    reg.method(t, "string getName()", asFUNCTION(getName), cc);
    reg.method(t, "void setName(const string &in)", asFUNCTION(setName), cc);
    reg.method(t, "void setFriction(float)", asFUNCTION(setFriction), cc);
    reg.method(t, "void setRestitution(float)", asFUNCTION(setRestitution), cc);
    reg.method(t, "void setDensity(float)", asFUNCTION(setDensity), cc);
    reg.method(t, "void setSensor(int)", asFUNCTION(setSensor), cc);
    reg.method(t, "void setFilterCategoryBits(int)", asFUNCTION(setFilterCategoryBits), cc);
    reg.method(t, "void setFilterMaskBits(int)", asFUNCTION(setFilterMaskBits), cc);
    reg.method(t, "void setFilterGroupIndex(int)", asFUNCTION(setFilterGroupIndex), cc);
    reg.method(t, "void setMass(float)", asFUNCTION(setMass), cc);
    reg.method(t, "vertex getVertex(int)", asFUNCTION(getVertex), cc);
    reg.method(t, "body getBody()", asFUNCTION(getBody), cc);
    reg.method(t, "void setVertex(int,float,float)", asFUNCTION(setVertex), cc);
    reg.method(t, "void setVertex(int,vec2)", asFUNCTION(setVertexV), cc);
    reg.method(t, "vertex addVertex(int,float,float)", asFUNCTION(addVertex), cc);
    reg.method(t, "vertex addVertex(int,vec2)", asFUNCTION(addVertexV), cc);
    reg.method(t, "void deleteVertex(int)", asFUNCTION(deleteVertex), cc);
    reg.method(t, "int getNumVertices()", asFUNCTION(getNumVertices), cc);
    reg.method(t, "vertex[]@ getVertices()", asFUNCTION(getVertices), cc);
    reg.method(t, "void setVertices(const vec2[] &in)", asFUNCTION(setVerticesFromPoints), cc);
    reg.method(t, "void setVertices(const vertex[] &in)", asFUNCTION(setVerticesFromVertices), cc);
    reg.method(t, "void delete()", asFUNCTION(deleteFixture), cc);
    reg.method(t, "void reverseWinding()", asFUNCTION(reverseWinding), cc);
    reg.method(t, "float getFriction()", asFUNCTION(getFriction), cc);
    reg.method(t, "float getRestitution()", asFUNCTION(getRestitution), cc);
    reg.method(t, "float getDensity()", asFUNCTION(getDensity), cc);
    reg.method(t, "bool isSensor()", asFUNCTION(isSensor), cc);
    reg.method(t, "int getFilterCategoryBits()", asFUNCTION(getFilterCategoryBits), cc);
    reg.method(t, "int getFilterMaskBits()", asFUNCTION(getFilterMaskBits), cc);
    reg.method(t, "int getFilterGroupIndex()", asFUNCTION(getFilterGroupIndex), cc);
    reg.method(t, "float getMass()", asFUNCTION(getMass), cc);
    reg.method(t, "shape[]@ getShapes()", asFUNCTION(getShapes), cc);
    reg.method(t, "shape getShape(int)", asFUNCTION(getShape), cc);
    registerCustomPropertyMethods<ScriptFixture>(reg, t);

    reg.global("fixture getFixture(int)", asFUNCTION(getFixture), asCALL_CDECL);
    reg.global("fixture getFixture(const string &in)", asFUNCTION(getFixtureByName), asCALL_CDECL);
    reg.global("fixture[]@ getFixtures(const string &in)", asFUNCTION(getFixtures), asCALL_CDECL);
    reg.global("fixture[]@ getSelectedFixtures()", asFUNCTION(getSelectedFixtures), asCALL_CDECL);
    reg.global("fixture[]@ sf()", asFUNCTION(getSelectedFixtures), asCALL_CDECL);
    reg.global("fixture[]@ getAllFixtures()", asFUNCTION(getAllFixtures), asCALL_CDECL);
    reg.global("fixture[]@ af()", asFUNCTION(getAllFixtures), asCALL_CDECL);
    reg.global("void select(const fixture[] &in)", asFUNCTION(selectAll), asCALL_CDECL);
    reg.global("void deselect(const fixture[] &in)", asFUNCTION(deselectAll), asCALL_CDECL);
    reg.global("void delete(const fixture[] &in)", asFUNCTION(deleteAll), asCALL_CDECL);
}
