#include "api/scriptitemhandles.h"
#include "api/scriptobject.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace ObjectApi;

void registerObject(ScriptRegistrar& reg)
{
    const char* t = "object";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptObject, valid));
    reg.property(t, "vec2 pos", offsetof(ScriptObject, pos));
    reg.property(t, "uint id", offsetof(ScriptObject, id));
    reg.property(t, "float angle", offsetof(ScriptObject, angle));
    registerItemHandleBasics<ScriptObject>(reg);

    reg.method(t, "string getFile()", asFUNCTION(getFile), cc);
    reg.method(t, "void setFile(const string &in)", asFUNCTION(setFile), cc);
    reg.method(t, "void setPosition(float, float)", asFUNCTION(setPosition), cc);
    reg.method(t, "void setPos(float, float)", asFUNCTION(setPosition), cc);
    reg.method(t, "void setPosition(vec2)", asFUNCTION(setPositionV), cc);
    reg.method(t, "void setPos(vec2)", asFUNCTION(setPositionV), cc);
    reg.method(t, "void setAngle(float)", asFUNCTION(setAngle), cc);
    reg.method(t, "void setScale(float)", asFUNCTION(setScale), cc);
    reg.method(t, "bool getFlip()", asFUNCTION(getFlip), cc);
    reg.method(t, "float getAngle()", asFUNCTION(getAngle), cc);
    reg.method(t, "float getScale()", asFUNCTION(getScale), cc);
    reg.method(t, "void setFlip(int)", asFUNCTION(setFlip), cc);
    reg.method(t, "void setFlip(bool)", asFUNCTION(setFlipB), cc);

    reg.global("object addObject(const string &in, vec2)", asFUNCTION(addObjectAt), asCALL_CDECL);
}
