#include "script/scriptitemhandles.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

#include <cstddef>

void registerSampler(ScriptRegistrar& reg)
{
    reg.property("sampler", "bool valid", offsetof(ScriptSampler, valid));
    reg.property("sampler", "vec2 center", offsetof(ScriptSampler, center));
    reg.property("sampler", "uint id", offsetof(ScriptSampler, id));
    registerItemHandleBasics<ScriptSampler>(reg);
}
