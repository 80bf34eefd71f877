#include "api/scriptpath.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace PathApi;

void registerPath(ScriptRegistrar& reg)
{
    const char* t = "path";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptPath, valid));
    reg.property(t, "int type", offsetof(ScriptPath, type));
    reg.method(t, "bool opEquals(const path &in) const", asFUNCTION(opEquals), cc);
    reg.method(t, "void setType(int)", asFUNCTION(setType), cc);
    reg.method(t, "int getType()", asFUNCTION(getType), cc);
    reg.method(t, "void setRadius(float)", asFUNCTION(setRadius), cc);
    reg.method(t, "float getRadius()", asFUNCTION(getRadius), cc);
    reg.method(t, "void setMaxPoints(int)", asFUNCTION(setMaxPoints), cc);
    reg.method(t, "int getMaxPoints()", asFUNCTION(getMaxPoints), cc);
    reg.method(t, "void setMinAngle(int)", asFUNCTION(setMinAngle), cc);
    reg.method(t, "int getMinAngle()", asFUNCTION(getMinAngle), cc);
    reg.method(t, "void addControlPoint(int, vec2)", asFUNCTION(addControlPointV), cc);
    reg.method(t, "void addControlPoint(int, float, float)", asFUNCTION(addControlPoint), cc);
    reg.method(t, "void setControlPoint(int, vec2)", asFUNCTION(setControlPointV), cc);
    reg.method(t, "void setControlPoint(int, float, float)", asFUNCTION(setControlPoint), cc);
    reg.method(t, "void deleteControlPoint(int)", asFUNCTION(deleteControlPoint), cc);
    reg.method(t, "int getNumControlPoints()", asFUNCTION(getNumControlPoints), cc);
    reg.method(t, "vec2 getControlPoint(int)", asFUNCTION(getControlPoint), cc);
    reg.method(t, "vec2 getWorldControlPoint(int)", asFUNCTION(getWorldControlPoint), cc);

    reg.global("path getPath(int,int)", asFUNCTION(getPath), asCALL_CDECL);
}
