#include "script/scriptitemhandles.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

#include <cstddef>

void registerImage(ScriptRegistrar& reg)
{
    reg.property("image", "bool valid", offsetof(ScriptImage, valid));
    reg.property("image", "vec2 center", offsetof(ScriptImage, center));
    reg.property("image", "uint id", offsetof(ScriptImage, id));
    registerItemHandleBasics<ScriptImage>(reg);
}
