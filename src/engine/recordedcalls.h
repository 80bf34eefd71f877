#pragma once

#include <angelscript.h>

#include <QString>

#include <cstdint>
#include <unordered_map>
#include <vector>

class ScriptDocument;

/// Runs the scripts that edit commands record, statements such as
/// "getBody(5).setAngle(0.3);", without compiling them: each statement calls
/// a registered item look-up with an id and then a registered method of the
/// item it returns, with literal numbers or flags as arguments, straight
/// through a script context. Undo and redo replay such scripts, often of
/// thousands of statements, and compiling them took most of their time.
///
/// A text is taken only when every statement has that form and every name
/// resolves to exactly one registered function whose parameters take the
/// literals as the compiler would convert them (whole numbers to any
/// number, decimals to float or double, true and false to bool); any other
/// text is left to the compiler, which runs it the same way.
class RecordedCalls
{
public:
    /// Calls resolved against `engine` (which must outlive this).
    explicit RecordedCalls(AngelScript::asIScriptEngine* engine) : m_engine(engine) {}

    /// Reads `text` into calls; false (and no calls) when any part of it is
    /// not a recorded call this can make.
    bool parse(const QString& text);

    /// Makes the parsed calls in order as one script run for `document` (see
    /// executeScriptCalls): an exception stops the run and is reported as a
    /// script's would be. True when every call finished.
    bool run(ScriptDocument* document, const QString& macroText);

private:
    struct Argument
    {
        int typeId = 0;          // the parameter's primitive type
        std::uint64_t bits = 0;  // the value in that type's bytes
    };
    struct Call
    {
        AngelScript::asIScriptFunction* lookup = nullptr;
        int id = 0;
        AngelScript::asIScriptFunction* method = nullptr;
        size_t firstArgument = 0;
    };
    struct Literal
    {
        enum Kind { Whole, Decimal, Flag } kind = Whole;
        std::int64_t whole = 0;
        double decimal = 0;
        bool flag = false;
    };

    AngelScript::asIScriptFunction* lookupFunction(const QByteArray& name);
    AngelScript::asIScriptFunction* methodOf(AngelScript::asIScriptFunction* lookup, const QByteArray& name,
                                             const std::vector<Literal>& literals);
    static bool convert(const Literal& literal, int typeId, Argument* out);

    AngelScript::asIScriptEngine* m_engine;
    std::vector<Call> m_calls;
    std::vector<Argument> m_arguments;
    std::unordered_map<std::string, AngelScript::asIScriptFunction*> m_lookups;
};
