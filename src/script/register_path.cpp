#include "script/scripthandles.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;

namespace
{
bool opEquals(const ScriptPath* self, const ScriptPath& other)
{
    return self->valid == other.valid && self->sampler == other.sampler && self->index == other.index;
}
} // namespace

void registerPath(ScriptRegistrar& reg)
{
    reg.property("path", "bool valid", offsetof(ScriptPath, valid));
    reg.property("path", "int type", offsetof(ScriptPath, type));
    reg.method("path", "bool opEquals(const path &in) const", asFUNCTION(opEquals), asCALL_CDECL_OBJFIRST);
}
