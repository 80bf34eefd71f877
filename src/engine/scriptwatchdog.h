#pragma once

#include "engine/scriptlimits.h"
#include "engine/scriptmemorybudget.h"

#include <angelscript.h>

#include <QElapsedTimer>

#include <optional>

/// Stops runaway scripts. Attached to a context for one execution, it reads
/// the current limits (ScriptLimits) and aborts the execution when the
/// interface requests it (ScriptState::requestAbort), when calls nest deeper
/// than the call depth limit, when the run holds more memory than its budget
/// (ScriptMemoryBudget) or, in command-line mode, when the run takes longer
/// than the time limit. Execute then returns asEXECUTION_ABORTED (or, when a
/// limit of the engine itself was hit first, asEXECUTION_EXCEPTION), and
/// abortReason() tells which limit stopped it.
class ScriptWatchdog
{
public:
    /// Clears any earlier abort request, reads the limits, starts the clock
    /// and the memory budget on the calling thread and installs the line
    /// callback on the context. The time limit applies in batch mode only.
    void attach(AngelScript::asIScriptContext* context);
    /// Removes the line callback and ends the memory budget. Call on the
    /// thread that called attach(), after Execute returned.
    void detach(AngelScript::asIScriptContext* context);

    /// Why the execution that returned `executeResult` was stopped, None when
    /// it was not stopped by the watchdog, a limit or a request.
    ScriptAbortReason abortReason(int executeResult, AngelScript::asIScriptContext* context) const;
    /// Logs the message of a reason at ERROR level (nothing for None).
    void reportAbort(ScriptAbortReason reason) const;

    /// The limits read by attach().
    const ScriptLimits& limits() const { return m_limits; }
    /// The most bytes the run held at once (0 before attach()).
    qint64 peakMemoryBytes() const { return m_peakBytes; }

private:
    static void lineCallback(AngelScript::asIScriptContext* context, void* watchdog);

    ScriptLimits m_limits;
    QElapsedTimer m_timer;
    qint64 m_limitMs = 0;
    unsigned m_linesSinceCheck = 0;
    ScriptAbortReason m_stoppedFor = ScriptAbortReason::None;
    std::optional<ScriptMemoryBudget> m_budget;
    bool m_memoryExceeded = false;
    qint64 m_peakBytes = 0;
};
