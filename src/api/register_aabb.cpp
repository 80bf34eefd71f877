#include "api/scriptaabb.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>
#include <new>

using namespace AngelScript;

namespace
{
void construct(ScriptAabb* self)
{
    new (self) ScriptAabb();
}

bool opEquals(const ScriptAabb* self, const ScriptAabb& o) { return *self == o; }
ScriptAabb opAdd(const ScriptAabb* self, const ScriptAabb& o) { return *self + o; }
// Declared const in the script API, yet it grows the left-hand side.
ScriptAabb opAddAssign(ScriptAabb* self, const ScriptAabb& o) { return *self = *self + o; }

// The bounds come in the order of the properties: lx, ux, ly, uy.
ScriptAabb set(ScriptAabb* self, float lx, float ux, float ly, float uy)
{
    *self = {lx, ux, ly, uy};
    return *self;
}

ScriptAabb makeAabb(float lx, float ux, float ly, float uy) { return {lx, ux, ly, uy}; }
} // namespace

void declareAabbType(ScriptRegistrar& reg)
{
    reg.objectType("aabb", sizeof(ScriptAabb),
                   asOBJ_VALUE | asOBJ_POD | asOBJ_APP_CLASS_ALLFLOATS | asGetTypeTraits<ScriptAabb>());
}

void registerAabb(ScriptRegistrar& reg)
{
    const char* t = "aabb";
    reg.behaviour(t, asBEHAVE_CONSTRUCT, "void f()", asFUNCTION(construct), asCALL_CDECL_OBJLAST);
    reg.property(t, "float lx", offsetof(ScriptAabb, lx));
    reg.property(t, "float ux", offsetof(ScriptAabb, ux));
    reg.property(t, "float ly", offsetof(ScriptAabb, ly));
    reg.property(t, "float uy", offsetof(ScriptAabb, uy));

    reg.method(t, "bool opEquals(const aabb &in) const", asFUNCTION(opEquals), asCALL_CDECL_OBJFIRST);
    reg.method(t, "aabb opAdd(const aabb &in) const", asFUNCTION(opAdd), asCALL_CDECL_OBJFIRST);
    reg.method(t, "aabb opAddAssign(const aabb &in) const", asFUNCTION(opAddAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "aabb set(float, float, float, float)", asFUNCTION(set), asCALL_CDECL_OBJFIRST);

    reg.global("aabb maabb(float, float, float, float)", asFUNCTION(makeAabb), asCALL_CDECL);
}
