#pragma once

#include <angelscript.h>

#include <QString>

/// Why a script execution was stopped before its end.
enum class ScriptAbortReason
{
    None,         ///< not stopped (it finished, raised an exception or failed otherwise)
    Requested,    ///< the interface asked it to stop
    TimeLimit,    ///< it ran longer than the batch time limit
    StackLimit,   ///< its calls nested deeper than the call stack limit
    MemoryLimit,  ///< it held more memory than its budget
};

/// The limits that stop runaway scripts, read from the application settings
/// (and, for the batch time limit, the environment). A value of 0 switches a
/// limit off.
struct ScriptLimits
{
    /// Environment variable overriding the batch time limit (seconds).
    static constexpr const char* kTimeEnvironmentVariable = "PLAX_SCRIPT_TIMEOUT";
    /// Settings key of the batch time limit (seconds).
    static constexpr const char* kTimeSettingsKey = "script/timeoutseconds";
    /// Batch time limit used when neither is set.
    static constexpr int kDefaultTimeSeconds = 60;
    /// Settings key of the deepest allowed nesting of script function calls.
    static constexpr const char* kCallDepthSettingsKey = "script/maxcalldepth";
    /// Call depth limit used when the setting is absent.
    static constexpr int kDefaultCallDepth = 10000;
    /// Settings key of the memory budget of one script run (MiB).
    static constexpr const char* kMemorySettingsKey = "script/memorylimitmb";
    /// Memory budget used when the setting is absent (MiB).
    static constexpr int kDefaultMemoryMiB = 1024;

    /// Batch time limit in seconds (the interface has its stop action instead).
    int timeSeconds = kDefaultTimeSeconds;
    /// Deepest allowed nesting of script function calls.
    int callDepth = kDefaultCallDepth;
    /// Memory budget of one script run in MiB.
    int memoryMiB = kDefaultMemoryMiB;

    /// The current limits: the time limit from the environment variable if it
    /// holds a number, else from the settings; the others from the settings.
    /// Missing, negative or unreadable values give the defaults.
    static ScriptLimits current();
    /// The memory budget in bytes (0 = none).
    qint64 memoryBytes() const { return qint64(memoryMiB) * 1024 * 1024; }
};

/// The ERROR message that explains why a script was stopped and, for a
/// limit, which value was reached and how to raise it. Empty for None.
QString scriptAbortMessage(ScriptAbortReason reason, const ScriptLimits& limits);

/// Creates a script engine with the limits in force: the engine's memory
/// functions count what scripts allocate (installed once per process) and
/// the engine refuses calls nested deeper than the call depth limit. Returns
/// null when the engine cannot be created.
AngelScript::asIScriptEngine* createLimitedScriptEngine();

/// Sets the engine's own call stack limit for `callDepth` nested calls. The
/// watchdog stops a script a little earlier; this is the backstop for calls
/// that do not pass its line callback.
void applyCallDepthLimit(AngelScript::asIScriptEngine* engine, int callDepth);
