#include "api/scriptfixture.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace ShapeApi;

void registerShape(ScriptRegistrar& reg)
{
    const char* t = "shape";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptShape, valid));
    reg.property(t, "int type", offsetof(ScriptShape, type));
    reg.method(t, "bool opEquals(const shape &in) const", asFUNCTION(opEquals), cc);
    reg.method(t, "void setType(int)", asFUNCTION(setType), cc);
    reg.method(t, "void setRadius(float)", asFUNCTION(setRadius), cc);
    reg.method(t, "float getRadius()", asFUNCTION(getRadius), cc);
    reg.global("shape getShape(int,int)", asFUNCTION(getShape), asCALL_CDECL);
}
