#pragma once

#include <angelscript.h>

#include <QElapsedTimer>
#include <QString>

#include <functional>

class MetaItem;
class ScriptDocument;

/// Calls functions of a document's customising scripts (labels, filters)
/// one item after another. For its whole life it holds the process-wide
/// execution mutex, makes the document the current script document and
/// turns command recording off: these functions answer questions about the
/// scene and are not edits (a change one makes anyway is not recorded). One
/// context serves every call. A call that raises an exception or runs longer
/// than kCallTimeLimitMs fails, and the caller uses its default.
class DocumentScriptCall
{
public:
    /// Longest a single call may run before it is stopped.
    static constexpr qint64 kCallTimeLimitMs = 2000;

    /// How to take the execution mutex.
    enum class Lock
    {
        Wait,  ///< wait for a script running elsewhere to finish
        Try,   ///< give up at once when one runs (isReady() is then false)
    };

    /// Prepares calls on `document`'s engine.
    DocumentScriptCall(ScriptDocument& document, Lock lock);
    ~DocumentScriptCall();
    DocumentScriptCall(const DocumentScriptCall&) = delete;
    DocumentScriptCall& operator=(const DocumentScriptCall&) = delete;

    /// False when the mutex was busy (Lock::Try) or no context could be made.
    bool isReady() const { return m_context != nullptr; }

    /// Calls `function`, with `setArguments` setting its arguments on the
    /// prepared context. True when it ran to its end; the return value is
    /// then read from context(). Otherwise failure() says why.
    bool call(AngelScript::asIScriptFunction* function,
              const std::function<void(AngelScript::asIScriptContext&)>& setArguments);
    /// The context of the last call.
    AngelScript::asIScriptContext* context() const { return m_context; }
    /// Why the last call failed (the exception text, or that it took too long).
    const QString& failure() const { return m_failure; }

    /// Sets argument `index` to the handle of `item` (a body, fixture, ...).
    static void setItemArgument(AngelScript::asIScriptContext& context, int index, const MetaItem& item);
    /// Sets argument `index` to the world handle.
    static void setWorldArgument(AngelScript::asIScriptContext& context, int index);

private:
    static void lineCallback(AngelScript::asIScriptContext* context, void* self);

    ScriptDocument& m_document;
    bool m_locked = false;
    bool m_previousRecording = true;
    ScriptDocument* m_previousDocument = nullptr;
    AngelScript::asIScriptContext* m_context = nullptr;
    QElapsedTimer m_timer;
    bool m_timedOut = false;
    QString m_failure;
};
