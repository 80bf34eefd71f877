#include "api/scriptaabb.h"
#include "api/scriptcolor.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptvec2.h"
#include "base/version.h"
#include "engine/scriptoutput.h"

#include <angelscript/scriptarray.h>

#include <string>

using namespace AngelScript;

namespace
{
const char* const kStringPrintDisabled = "Printing strings in plaxscript is disabled in the trial version.";

void printString(const std::string& text)
{
    if (Version::kTrial) {
        ScriptOutput::print(QString::fromLatin1(kStringPrintDisabled));
        return;
    }
    ScriptOutput::print(QString::fromStdString(text));
}

void printInt(int value) { ScriptOutput::print(QString::number(value)); }
void printBool(bool value) { ScriptOutput::print(value ? QStringLiteral("true") : QStringLiteral("false")); }
void printFloat(float value) { ScriptOutput::print(QString::number(double(value), 'g', 6)); }
void printVec2(ScriptVec2 value) { ScriptOutput::print(QString::fromStdString(value.toString())); }
void printColor(ScriptColor value) { ScriptOutput::print(QString::fromStdString(value.str1())); }
void printAabb(ScriptAabb value) { ScriptOutput::print(QString::fromStdString(value.toString())); }

// Each element of a string array is printed as a line of its own.
void printStringArray(const CScriptArray& array)
{
    if (Version::kTrial) {
        ScriptOutput::print(QString::fromLatin1(kStringPrintDisabled));
        return;
    }
    for (asUINT i = 0; i < array.GetSize(); ++i)
        ScriptOutput::print(QString::fromStdString(*static_cast<const std::string*>(array.At(i))));
}
} // namespace

void registerPrintFunctions(ScriptRegistrar& reg)
{
    reg.global("void print(const string &in)", asFUNCTION(printString), asCALL_CDECL);
    reg.global("void print(int)", asFUNCTION(printInt), asCALL_CDECL);
    reg.global("void print(bool)", asFUNCTION(printBool), asCALL_CDECL);
    reg.global("void print(float)", asFUNCTION(printFloat), asCALL_CDECL);
    reg.global("void print(vec2)", asFUNCTION(printVec2), asCALL_CDECL);
    reg.global("void print(color)", asFUNCTION(printColor), asCALL_CDECL);
    reg.global("void print(aabb)", asFUNCTION(printAabb), asCALL_CDECL);
    reg.global("void print(const string[] &in)", asFUNCTION(printStringArray), asCALL_CDECL);
}
