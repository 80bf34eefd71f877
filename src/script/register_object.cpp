#include "script/scriptitemhandles.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

#include <cstddef>

void registerObject(ScriptRegistrar& reg)
{
    reg.property("object", "bool valid", offsetof(ScriptObject, valid));
    reg.property("object", "vec2 pos", offsetof(ScriptObject, pos));
    reg.property("object", "uint id", offsetof(ScriptObject, id));
    reg.property("object", "float angle", offsetof(ScriptObject, angle));
    registerItemHandleBasics<ScriptObject>(reg);
}
