#include "api/scriptcustomprops.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptworld.h"

#include <cstddef>

using namespace AngelScript;
using namespace WorldApi;

void registerWorld(ScriptRegistrar& reg)
{
    registerCustomPropertyMethods<ScriptWorld>(reg, "world");
    reg.global("world getWorld()", asFUNCTION(getWorld), asCALL_CDECL);
}

void registerWorldFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("vec2 getGravity()", asFUNCTION(getGravity), cc);
    reg.global("void setGravity(float,float)", asFUNCTION(setGravity), cc);
    reg.global("void setGravity(vec2)", asFUNCTION(setGravityV), cc);
    reg.global("void setSimulationStepsPerSecond(float)", asFUNCTION(setSimulationStepsPerSecond), cc);
    reg.global("void setSimulationPositionIterations(int)", asFUNCTION(setSimulationPositionIterations), cc);
    reg.global("void setSimulationVelocityIterations(int)", asFUNCTION(setSimulationVelocityIterations), cc);

    reg.global("bool addCustomProperty(const string &in, const string &in, const string &in, const string &in)",
               asFUNCTION(addCustomProperty), cc);
    reg.global("bool removeCustomProperty(const string &in, const string &in)", asFUNCTION(removeCustomProperty), cc);
    reg.global("bool setCustomPropertyNames(const string &in, const string &in, const string &in, const string &in)",
               asFUNCTION(setCustomPropertyNames), cc);
    reg.global("string[]@ getCustomProperties(const string &in)", asFUNCTION(getCustomProperties), cc);
    reg.global("bool insertCustomPropertyComboboxEntry(const string &in, const string &in, const string &in, int)",
               asFUNCTION(insertCustomPropertyComboboxEntry), cc);
    reg.global("bool insertCustomPropertyComboboxEntry(const string &in, const string &in, const string &in)",
               asFUNCTION(appendCustomPropertyComboboxEntry), cc);
    reg.global("bool removeCustomPropertyComboboxEntry(const string &in, const string &in, int)",
               asFUNCTION(removeCustomPropertyComboboxEntry), cc);
    reg.global("void setCollisionBitplaneName(int, const string &in)", asFUNCTION(setCollisionBitplaneName), cc);
    reg.global("string getCollisionBitplaneName(int)", asFUNCTION(getCollisionBitplaneName), cc);
}

void registerEditorStateFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("vec2 cursor()", asFUNCTION(getCursor), cc);
    reg.global("vec2 getCursor()", asFUNCTION(getCursor), cc);
    reg.global("void setCursor(float,float)", asFUNCTION(setCursor), cc);
    reg.global("void setCursor(vec2)", asFUNCTION(setCursorV), cc);
    reg.global("vec2 getMousePos()", asFUNCTION(getMousePos), cc);
    reg.global("void setViewCenter(float, float)", asFUNCTION(setViewCenter), cc);
    reg.global("void setViewCenter(vec2)", asFUNCTION(setViewCenterV), cc);
    reg.global("void setViewHeight(float)", asFUNCTION(setViewHeight), cc);
    reg.global("vec2 getViewCenter()", asFUNCTION(getViewCenter), cc);
    reg.global("float getViewHeight()", asFUNCTION(getViewHeight), cc);
    reg.global("float getViewPixelHeight()", asFUNCTION(getViewPixelHeight), cc);
    reg.global("string getCurrentEditMode()", asFUNCTION(getCurrentEditMode), cc);
    reg.global("bool isCtrlKeyDown()", asFUNCTION(isCtrlKeyDown), cc);
    reg.global("bool isAltKeyDown()", asFUNCTION(isAltKeyDown), cc);
    reg.global("string getCurrentActionMenuFolder()", asFUNCTION(getCurrentActionMenuFolder), cc);
}
