#include "api/scripthandles.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>
#include <new>

using namespace AngelScript;

namespace
{
template <class Handle>
void construct(Handle* self)
{
    new (self) Handle();
}

// Handles of at most 16 bytes hold only integers and travel in registers as such.
template <class Handle>
void declare(ScriptRegistrar& reg, const char* name)
{
    asDWORD flags = asOBJ_VALUE | asOBJ_POD | asGetTypeTraits<Handle>();
    if (sizeof(Handle) <= 16)
        flags |= asOBJ_APP_CLASS_ALLINTS;
    reg.objectType(name, sizeof(Handle), flags);
    reg.behaviour(name, asBEHAVE_CONSTRUCT, "void f()", asFUNCTION(construct<Handle>), asCALL_CDECL_OBJLAST);
}
} // namespace

void declareHandleTypes(ScriptRegistrar& reg)
{
    declare<ScriptBody>(reg, "body");
    declare<ScriptVertex>(reg, "vertex");
    declare<ScriptFixture>(reg, "fixture");
    declare<ScriptJoint>(reg, "joint");
    declare<ScriptShape>(reg, "shape");
    declare<ScriptImage>(reg, "image");
    declare<ScriptSampler>(reg, "sampler");
    declare<ScriptPath>(reg, "path");
    declare<ScriptWorld>(reg, "world");
    declare<ScriptObject>(reg, "object");
}
