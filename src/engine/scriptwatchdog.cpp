#include "engine/scriptwatchdog.h"

#include "base/flags.h"
#include "base/log.h"
#include "engine/scriptstate.h"

#include <cstring>

using namespace AngelScript;

namespace
{
// Checking the clock on every statement would slow tight loops down; every
// 256th statement is often enough for a limit counted in seconds.
constexpr unsigned kLinesPerClockCheck = 256;

// The exception text the engine raises when its own call stack limit is hit.
constexpr const char* kEngineStackOverflow = "Stack overflow";
} // namespace

void ScriptWatchdog::attach(asIScriptContext* context)
{
    ScriptState::clearAbortRequest();
    m_limits = ScriptLimits::current();
    m_limitMs = AppFlags::isBatchMode() ? qint64(m_limits.timeSeconds) * 1000 : 0;
    m_linesSinceCheck = 0;
    m_stoppedFor = ScriptAbortReason::None;
    m_memoryExceeded = false;
    m_peakBytes = 0;
    applyCallDepthLimit(context->GetEngine(), m_limits.callDepth);
    m_budget.emplace(context, m_limits.memoryBytes());
    m_timer.start();
    context->SetLineCallback(asFUNCTION(lineCallback), this, asCALL_CDECL);
}

void ScriptWatchdog::detach(asIScriptContext* context)
{
    context->ClearLineCallback();
    if (m_budget) {
        m_memoryExceeded = m_budget->exceeded();
        m_peakBytes = m_budget->peakBytes();
        m_budget.reset();
    }
}

void ScriptWatchdog::lineCallback(asIScriptContext* context, void* watchdog)
{
    auto* self = static_cast<ScriptWatchdog*>(watchdog);
    if (ScriptState::isAbortRequested()) {
        self->m_stoppedFor = ScriptAbortReason::Requested;
        context->Abort();
        return;
    }
    if (self->m_limits.callDepth > 0 && context->GetCallstackSize() > asUINT(self->m_limits.callDepth)) {
        self->m_stoppedFor = ScriptAbortReason::StackLimit;
        context->Abort();
        return;
    }
    if (self->m_limitMs <= 0 || ++self->m_linesSinceCheck < kLinesPerClockCheck)
        return;
    self->m_linesSinceCheck = 0;
    if (self->m_timer.elapsed() > self->m_limitMs) {
        self->m_stoppedFor = ScriptAbortReason::TimeLimit;
        context->Abort();
    }
}

ScriptAbortReason ScriptWatchdog::abortReason(int executeResult, asIScriptContext* context) const
{
    if (executeResult == asEXECUTION_FINISHED)
        return ScriptAbortReason::None;
    // Going over the budget aborts the run, but a refused block may surface
    // first as an "Out of memory" exception: either way the budget stopped it.
    const bool exceeded = m_budget ? m_budget->exceeded() : m_memoryExceeded;
    if (exceeded)
        return ScriptAbortReason::MemoryLimit;
    if (m_stoppedFor != ScriptAbortReason::None)
        return m_stoppedFor;
    if (executeResult == asEXECUTION_EXCEPTION) {
        const char* text = context->GetExceptionString();
        return text && std::strcmp(text, kEngineStackOverflow) == 0 ? ScriptAbortReason::StackLimit
                                                                    : ScriptAbortReason::None;
    }
    // Aborted by someone else (a nested run passing on a request, say).
    return executeResult == asEXECUTION_ABORTED ? ScriptAbortReason::Requested : ScriptAbortReason::None;
}

void ScriptWatchdog::reportAbort(ScriptAbortReason reason) const
{
    if (reason != ScriptAbortReason::None)
        plaxLog(LOG_ERROR, scriptAbortMessage(reason, m_limits));
}
