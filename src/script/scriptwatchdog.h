#pragma once

#include <angelscript.h>

#include <QElapsedTimer>

/// Stops runaway scripts. Attached to a context before it executes, its line
/// callback aborts the execution when the interface has requested it
/// (ScriptState::requestAbort) or, in command-line mode, when the run has
/// taken longer than the time limit. Execute then returns
/// asEXECUTION_ABORTED and reportAbort() logs why at ERROR level.
class ScriptWatchdog
{
public:
    /// Environment variable overriding the batch time limit (seconds, 0 = none).
    static constexpr const char* kEnvironmentVariable = "PLAX_SCRIPT_TIMEOUT";
    /// Settings key of the batch time limit (seconds, 0 = none).
    static constexpr const char* kSettingsKey = "script/timeoutseconds";
    /// Limit used when neither is set.
    static constexpr int kDefaultLimitSeconds = 60;

    /// The batch time limit in seconds: the environment variable if set to a
    /// number, else the settings value if present, else the default.
    static int timeLimitSeconds();

    /// Clears any earlier abort request, starts the clock and installs the
    /// line callback on the context. The time limit applies in batch mode only.
    void attach(AngelScript::asIScriptContext* context);
    /// Logs why an execution that returned asEXECUTION_ABORTED was stopped.
    void reportAbort() const;

private:
    static void lineCallback(AngelScript::asIScriptContext* context, void* watchdog);

    QElapsedTimer m_timer;
    qint64 m_limitMs = 0;
    unsigned m_linesSinceCheck = 0;
    bool m_timedOut = false;
};
