#include "script/scriptitemhandles.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

#include <cstddef>

void registerJoint(ScriptRegistrar& reg)
{
    reg.property("joint", "bool valid", offsetof(ScriptJoint, valid));
    reg.property("joint", "uint id", offsetof(ScriptJoint, id));
    registerItemHandleBasics<ScriptJoint>(reg);
}
