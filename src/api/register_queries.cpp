#include "api/scriptqueries.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptvec2.h"
#include "base/log.h"

#include <string>

using namespace AngelScript;

namespace
{
ScriptQueryHooks& hooks()
{
    static ScriptQueryHooks s_hooks;
    return s_hooks;
}

void noDialog(const char* function)
{
    plaxLog(LOG_WARNING, "%s has no dialog to show here; the script gets the default answer", function);
}

// Cancelled dialogs and missing ones both give the default.
template <class T, class Hook, class... Args>
T ask(const Hook& hook, const char* function, T fallback, Args&&... args)
{
    if (!hook) {
        noDialog(function);
        return fallback;
    }
    return hook(std::forward<Args>(args)...).value_or(fallback);
}

std::string openFile(const std::string& prompt)
{
    return ask<QString>(hooks().openFile, "queryOpenFile", QString(), QString::fromStdString(prompt)).toStdString();
}

float numericWith(const std::string& prompt, float initial)
{
    return ask<float>(hooks().numericValue, "queryNumericValue", initial, QString::fromStdString(prompt), initial);
}
float numeric(const std::string& prompt) { return numericWith(prompt, 0); }

ScriptVec2 vectorWith(const std::string& prompt, float x, float y)
{
    const Vec2 v = ask<Vec2>(hooks().vectorValue, "queryVectorValue", Vec2{x, y}, QString::fromStdString(prompt), Vec2{x, y});
    return {v.x, v.y};
}
ScriptVec2 vector(const std::string& prompt) { return vectorWith(prompt, 0, 0); }

std::string stringWith(const std::string& prompt, const std::string& initial)
{
    const QString start = QString::fromStdString(initial);
    return ask<QString>(hooks().stringValue, "queryStringValue", start, QString::fromStdString(prompt), start).toStdString();
}
std::string string(const std::string& prompt) { return stringWith(prompt, std::string()); }

bool yesNo(const std::string& prompt)
{
    return ask<bool>(hooks().yesNo, "queryYesNo", false, QString::fromStdString(prompt));
}
} // namespace

void ScriptQueryHooks::install(ScriptQueryHooks installedHooks)
{
    hooks() = std::move(installedHooks);
}

const ScriptQueryHooks& ScriptQueryHooks::installed()
{
    return hooks();
}

void registerQueryFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("string queryOpenFile(const string &in)", asFUNCTION(openFile), cc);
    reg.global("float queryNumericValue(const string &in)", asFUNCTION(numeric), cc);
    reg.global("float queryNumericValue(const string &in, float)", asFUNCTION(numericWith), cc);
    reg.global("vec2 queryVectorValue(const string &in)", asFUNCTION(vector), cc);
    reg.global("vec2 queryVectorValue(const string &in, float, float)", asFUNCTION(vectorWith), cc);
    reg.global("string queryStringValue(const string &in)", asFUNCTION(string), cc);
    reg.global("string queryStringValue(const string &in, const string &in)", asFUNCTION(stringWith), cc);
    reg.global("bool queryYesNo(const string &in)", asFUNCTION(yesNo), cc);
}
