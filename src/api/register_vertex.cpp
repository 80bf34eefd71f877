#include "api/scriptfixture.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace VertexApi;

void registerVertex(ScriptRegistrar& reg)
{
    const char* t = "vertex";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptVertex, valid));
    reg.property(t, "uint index", offsetof(ScriptVertex, index));
    reg.property(t, "vec2 pos", offsetof(ScriptVertex, pos));
    reg.property(t, "vec2 wpos", offsetof(ScriptVertex, wpos));
    reg.property(t, "float x", offsetof(ScriptVertex, x));
    reg.property(t, "float y", offsetof(ScriptVertex, y));
    reg.property(t, "float wx", offsetof(ScriptVertex, wx));
    reg.property(t, "float wy", offsetof(ScriptVertex, wy));

    reg.method(t, "bool opEquals(const vertex &in) const", asFUNCTION(opEquals), cc);
    reg.method(t, "void select()", asFUNCTION(VertexApi::select), cc);
    reg.method(t, "void deselect()", asFUNCTION(deselect), cc);
    reg.method(t, "bool isSelected()", asFUNCTION(isSelected), cc);
    reg.method(t, "void setPos(float, float)", asFUNCTION(setPos), cc);
    reg.method(t, "void setPos(vec2)", asFUNCTION(setPosV), cc);
    reg.method(t, "void setWorldPos(float, float)", asFUNCTION(setWorldPos), cc);
    reg.method(t, "void setWorldPos(vec2)", asFUNCTION(setWorldPosV), cc);
    reg.method(t, "fixture getFixture()", asFUNCTION(getFixture), cc);
    reg.method(t, "void delete()", asFUNCTION(deleteVertex), cc);
    reg.method(t, "vertex next()", asFUNCTION(next), cc);
    reg.method(t, "vertex prev()", asFUNCTION(prev), cc);

    reg.global("vertex getVertex(int,int)", asFUNCTION(getVertex), asCALL_CDECL);
    reg.global("vertex getVertex(const string &in, int)", asFUNCTION(getVertexByName), asCALL_CDECL);
    reg.global("vertex[]@ getVertices(const string &in)", asFUNCTION(getVertices), asCALL_CDECL);
    reg.global("vertex[]@ getSelectedVertices()", asFUNCTION(getSelectedVertices), asCALL_CDECL);
    reg.global("vertex[]@ sv()", asFUNCTION(getSelectedVertices), asCALL_CDECL);
    reg.global("vertex[]@ getAllVertices()", asFUNCTION(getAllVertices), asCALL_CDECL);
    reg.global("vertex[]@ av()", asFUNCTION(getAllVertices), asCALL_CDECL);
    reg.global("void select(const vertex[] &in)", asFUNCTION(selectAll), asCALL_CDECL);
    reg.global("void deselect(const vertex[] &in)", asFUNCTION(deselectAll), asCALL_CDECL);
    reg.global("void delete(const vertex[] &in)", asFUNCTION(deleteAll), asCALL_CDECL);
}
