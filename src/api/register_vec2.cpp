#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptvec2.h"

#include <cstddef>
#include <new>
#include <string>

using namespace AngelScript;

namespace
{
void construct(ScriptVec2* self)
{
    new (self) ScriptVec2();
}

bool opEquals(const ScriptVec2* self, const ScriptVec2& o) { return *self == o; }
ScriptVec2 opAdd(const ScriptVec2* self, const ScriptVec2& o) { return *self + o; }
ScriptVec2 opSub(const ScriptVec2* self, const ScriptVec2& o) { return *self - o; }
ScriptVec2 opMul(const ScriptVec2* self, float f) { return *self * f; }
ScriptVec2 opDiv(const ScriptVec2* self, float f) { return {self->x / f, self->y / f}; }
ScriptVec2 opNeg(const ScriptVec2* self) { return {-self->x, -self->y}; }

// The compound assignments are declared const in the script API but, as in
// every other language, change the left-hand side.
ScriptVec2 opAddAssign(ScriptVec2* self, const ScriptVec2& o) { return *self = *self + o; }
ScriptVec2 opSubAssign(ScriptVec2* self, const ScriptVec2& o) { return *self = *self - o; }
ScriptVec2 opMulAssign(ScriptVec2* self, float f) { return *self = *self * f; }
ScriptVec2 opDivAssign(ScriptVec2* self, float f) { return *self = opDiv(self, f); }

ScriptVec2 set(ScriptVec2* self, float x, float y)
{
    *self = {x, y};
    return *self;
}

float length(ScriptVec2* self) { return self->length(); }
float normalize(ScriptVec2* self) { return self->normalize(); }
ScriptVec2 normalized(ScriptVec2* self) { return self->normalized(); }
float distanceTo(ScriptVec2* self, const ScriptVec2& o) { return self->distanceTo(o); }
ScriptVec2 projectOnto(ScriptVec2* self, const ScriptVec2& o) { return *self = self->projectedOnto(o); }
ScriptVec2 projectedOnto(ScriptVec2* self, const ScriptVec2& o) { return self->projectedOnto(o); }
float dot(ScriptVec2* self, const ScriptVec2& o) { return self->dot(o); }
float cross(ScriptVec2* self, const ScriptVec2& o) { return self->cross(o); }
ScriptVec2 rotatedBy(ScriptVec2* self, float radians) { return self->rotatedBy(radians); }

std::string& stringAssign(ScriptVec2 v, std::string* self) { return *self = v.toString(); }
std::string& stringAddAssign(ScriptVec2 v, std::string* self) { return *self += v.toString(); }
std::string stringAdd(ScriptVec2 v, const std::string* self) { return *self + v.toString(); }
std::string stringAddReversed(ScriptVec2 v, const std::string* self) { return v.toString() + *self; }

ScriptVec2 makeVec2(float x, float y) { return {x, y}; }
} // namespace

void declareVec2Type(ScriptRegistrar& reg)
{
    reg.objectType("vec2", sizeof(ScriptVec2),
                   asOBJ_VALUE | asOBJ_POD | asOBJ_APP_CLASS_ALLFLOATS | asGetTypeTraits<ScriptVec2>());
}

void registerVec2(ScriptRegistrar& reg)
{
    const char* t = "vec2";
    reg.behaviour(t, asBEHAVE_CONSTRUCT, "void f()", asFUNCTION(construct), asCALL_CDECL_OBJLAST);
    reg.property(t, "float x", offsetof(ScriptVec2, x));
    reg.property(t, "float y", offsetof(ScriptVec2, y));

    reg.method(t, "bool opEquals(const vec2 &in) const", asFUNCTION(opEquals), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opAdd(const vec2 &in) const", asFUNCTION(opAdd), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opSub(const vec2 &in) const", asFUNCTION(opSub), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opAddAssign(const vec2 &in) const", asFUNCTION(opAddAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opSubAssign(const vec2 &in) const", asFUNCTION(opSubAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opMul(const float) const", asFUNCTION(opMul), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opDiv(const float) const", asFUNCTION(opDiv), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opMulAssign(const float) const", asFUNCTION(opMulAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opDivAssign(const float) const", asFUNCTION(opDivAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opMul_r(const float) const", asFUNCTION(opMul), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 opNeg() const", asFUNCTION(opNeg), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 set(float, float)", asFUNCTION(set), asCALL_CDECL_OBJFIRST);
    reg.method(t, "float length()", asFUNCTION(length), asCALL_CDECL_OBJFIRST);
    reg.method(t, "float normalize()", asFUNCTION(normalize), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 normalized()", asFUNCTION(normalized), asCALL_CDECL_OBJFIRST);
    reg.method(t, "float distanceTo(const vec2 &in)", asFUNCTION(distanceTo), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 projectOnto(const vec2 &in)", asFUNCTION(projectOnto), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 projectedOnto(const vec2 &in)", asFUNCTION(projectedOnto), asCALL_CDECL_OBJFIRST);
    reg.method(t, "float dot(const vec2 &in)", asFUNCTION(dot), asCALL_CDECL_OBJFIRST);
    reg.method(t, "float cross(const vec2 &in)", asFUNCTION(cross), asCALL_CDECL_OBJFIRST);
    reg.method(t, "vec2 rotatedBy(float)", asFUNCTION(rotatedBy), asCALL_CDECL_OBJFIRST);

    reg.method("string", "string &opAssign(vec2)", asFUNCTION(stringAssign), asCALL_CDECL_OBJLAST);
    reg.method("string", "string &opAddAssign(vec2)", asFUNCTION(stringAddAssign), asCALL_CDECL_OBJLAST);
    reg.method("string", "string opAdd(vec2) const", asFUNCTION(stringAdd), asCALL_CDECL_OBJLAST);
    reg.method("string", "string opAdd_r(vec2) const", asFUNCTION(stringAddReversed), asCALL_CDECL_OBJLAST);

    reg.global("vec2 mv(float, float)", asFUNCTION(makeVec2), asCALL_CDECL);
}
