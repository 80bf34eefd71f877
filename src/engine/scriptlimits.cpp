#include "engine/scriptlimits.h"

#include "base/settings.h"
#include "engine/scriptmemorybudget.h"

using namespace AngelScript;

namespace
{
// The watchdog aborts at the configured depth; the engine's own limit sits a
// few frames above so that its "Stack overflow" exception only fires when
// the watchdog could not step in.
constexpr int kEngineDepthMargin = 8;

int nonNegative(const QVariant& value, int fallback)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    return ok && number >= 0 ? number : fallback;
}
} // namespace

ScriptLimits ScriptLimits::current()
{
    ScriptLimits limits;
    const std::unique_ptr<QSettings> settings = openAppSettings();
    bool ok = false;
    const int environmentSeconds = qEnvironmentVariableIntValue(kTimeEnvironmentVariable, &ok);
    if (ok && environmentSeconds >= 0)
        limits.timeSeconds = environmentSeconds;
    else
        limits.timeSeconds = nonNegative(settings->value(QLatin1String(kTimeSettingsKey)), kDefaultTimeSeconds);
    limits.callDepth = nonNegative(settings->value(QLatin1String(kCallDepthSettingsKey)), kDefaultCallDepth);
    limits.memoryMiB = nonNegative(settings->value(QLatin1String(kMemorySettingsKey)), kDefaultMemoryMiB);
    return limits;
}

QString scriptAbortMessage(ScriptAbortReason reason, const ScriptLimits& limits)
{
    const QString settingsFile = openAppSettings()->fileName();
    switch (reason) {
    case ScriptAbortReason::None: return QString();
    case ScriptAbortReason::Requested: return QStringLiteral("Script aborted on request.");
    case ScriptAbortReason::TimeLimit:
        return QStringLiteral("Script aborted: the time limit of %1 seconds was reached. Raise it with the "
                              "environment variable %2 or the setting \"%3\" in '%4' (0 means no limit).")
            .arg(limits.timeSeconds)
            .arg(QLatin1String(ScriptLimits::kTimeEnvironmentVariable),
                 QLatin1String(ScriptLimits::kTimeSettingsKey), settingsFile);
    case ScriptAbortReason::StackLimit:
        return QStringLiteral("Script aborted: the call stack limit of %1 nested calls was reached (endless "
                              "recursion?). Raise it with the setting \"%2\" in '%3' (0 means no limit).")
            .arg(limits.callDepth)
            .arg(QLatin1String(ScriptLimits::kCallDepthSettingsKey), settingsFile);
    case ScriptAbortReason::MemoryLimit:
        return QStringLiteral("Script aborted: the memory limit of %1 MiB for one script run was reached. "
                              "Raise it with the setting \"%2\" in '%3' (0 means no limit).")
            .arg(limits.memoryMiB)
            .arg(QLatin1String(ScriptLimits::kMemorySettingsKey), settingsFile);
    }
    return QString();
}

void applyCallDepthLimit(asIScriptEngine* engine, int callDepth)
{
    if (!engine)
        return;
    engine->SetEngineProperty(asEP_MAX_CALL_STACK_SIZE, callDepth > 0 ? asPWORD(callDepth + kEngineDepthMargin) : 0);
    engine->SetEngineProperty(asEP_INIT_CALL_STACK_SIZE, callDepth > 0 ? asPWORD(callDepth + kEngineDepthMargin) : 10);
}

asIScriptEngine* createLimitedScriptEngine()
{
    ScriptMemoryBudget::install();
    asIScriptEngine* engine = asCreateScriptEngine(ANGELSCRIPT_VERSION);
    applyCallDepthLimit(engine, ScriptLimits::current().callDepth);
    return engine;
}
