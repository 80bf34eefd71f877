#pragma once

#include <angelscript.h>

/// Wraps the registration calls of one engine and checks every result. A
/// failed registration is logged at FATAL level with its declaration and trips
/// the assertion "r >= 0" in debug builds; release builds keep going and the
/// failure count tells the caller that the API is incomplete.
class ScriptRegistrar
{
public:
    /// Registers on the given engine (not owned).
    explicit ScriptRegistrar(AngelScript::asIScriptEngine* engine) : m_engine(engine) {}

    /// The engine being registered on.
    AngelScript::asIScriptEngine* engine() const { return m_engine; }

    /// Registers an object type.
    void objectType(const char* name, int byteSize, AngelScript::asDWORD flags);
    /// Registers an object property at a byte offset.
    void property(const char* type, const char* declaration, int byteOffset);
    /// Registers an object method.
    void method(const char* type, const char* declaration, const AngelScript::asSFuncPtr& function,
                AngelScript::asDWORD callConv);
    /// Registers an object behaviour (constructor and the like).
    void behaviour(const char* type, AngelScript::asEBehaviours behaviour, const char* declaration,
                   const AngelScript::asSFuncPtr& function, AngelScript::asDWORD callConv);
    /// Registers a global function.
    void global(const char* declaration, const AngelScript::asSFuncPtr& function, AngelScript::asDWORD callConv);

    /// Checks the result of a registration made directly on the engine.
    void check(int r, const char* what);

    /// Number of failed registrations so far.
    int failures() const { return m_failures; }

private:
    AngelScript::asIScriptEngine* m_engine;
    int m_failures = 0;
};
