#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <angelscript/scriptarray.h>
#include <angelscript/scriptdictionary.h>
#include <angelscript/scriptmath.h>
#include <angelscript/scriptstdstring.h>

using namespace AngelScript;

void registerScriptAddOns(ScriptRegistrar& reg)
{
    asIScriptEngine* engine = reg.engine();
    // The add-ons assert internally; afterwards the types they provide must exist.
    RegisterStdString(engine);
    RegisterScriptArray(engine, true);
    RegisterStdStringUtils(engine);
    RegisterScriptDictionary(engine);
    RegisterScriptMath(engine);
    for (const char* type : {"string", "array", "dictionary"})
        reg.check(engine->GetTypeInfoByName(type) ? 0 : asNO_FUNCTION, type);
}
