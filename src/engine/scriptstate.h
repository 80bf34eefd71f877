#pragma once

#include <angelscript.h>

#include <QRecursiveMutex>

/// Process-wide state of script execution. Only one script executes at a
/// time in the process (the execution mutex); the values below belong to it.
namespace ScriptState
{
/// The offset added to every row the engine reports (default -1).
int lineOffset();
/// Sets the offset.
void setLineOffset(int offset);

/// 1 while the live script builds or its main executes: log messages issued
/// meanwhile belong in the script output panel rather than the general log.
int scriptOutputFlag();
/// Sets the script-output flag.
void setScriptOutputFlag(int flag);

/// Held around every Execute, so that no two documents execute at once.
/// Recursive so that a script that causes another script run on the same
/// thread (an export filter during an export, say) does not deadlock.
QRecursiveMutex& executionMutex();

/// The context executing now, or null.
AngelScript::asIScriptContext* currentContext();
/// Sets the context executing now.
void setCurrentContext(AngelScript::asIScriptContext* context);

/// Asks the running script (if any) to stop at its next statement. Used by
/// the interface's stop action; cleared when the next execution starts.
void requestAbort();
/// Clears an abort request.
void clearAbortRequest();
/// True when an abort has been requested.
bool isAbortRequested();
} // namespace ScriptState

/// Sets the line offset for a scope and restores the previous value after it.
class LineOffsetScope
{
public:
    /// Sets the offset to `offset`.
    explicit LineOffsetScope(int offset) : m_previous(ScriptState::lineOffset()) { ScriptState::setLineOffset(offset); }
    ~LineOffsetScope() { ScriptState::setLineOffset(m_previous); }
    LineOffsetScope(const LineOffsetScope&) = delete;
    LineOffsetScope& operator=(const LineOffsetScope&) = delete;

private:
    int m_previous;
};
