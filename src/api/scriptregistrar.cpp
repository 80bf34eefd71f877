#include "api/scriptregistrar.h"

#include "base/log.h"

#include <QtGlobal>

using namespace AngelScript;

void ScriptRegistrar::check(int r, const char* what)
{
    if (r >= 0)
        return;
    ++m_failures;
    plaxLog(LOG_FATAL, "Script registration failed (%d): %s", r, what);
    Q_ASSERT(r >= 0);
}

void ScriptRegistrar::objectType(const char* name, int byteSize, asDWORD flags)
{
    check(m_engine->RegisterObjectType(name, byteSize, flags), name);
}

void ScriptRegistrar::property(const char* type, const char* declaration, int byteOffset)
{
    check(m_engine->RegisterObjectProperty(type, declaration, byteOffset), declaration);
}

void ScriptRegistrar::method(const char* type, const char* declaration, const asSFuncPtr& function,
                             asDWORD callConv)
{
    check(m_engine->RegisterObjectMethod(type, declaration, function, callConv), declaration);
}

void ScriptRegistrar::behaviour(const char* type, asEBehaviours behaviour, const char* declaration,
                                const asSFuncPtr& function, asDWORD callConv)
{
    check(m_engine->RegisterObjectBehaviour(type, behaviour, declaration, function, callConv), declaration);
}

void ScriptRegistrar::global(const char* declaration, const asSFuncPtr& function, asDWORD callConv)
{
    check(m_engine->RegisterGlobalFunction(declaration, function, callConv), declaration);
}
