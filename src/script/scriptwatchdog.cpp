#include "script/scriptwatchdog.h"

#include "base/flags.h"
#include "base/log.h"
#include "script/scriptstate.h"

#include <QSettings>

using namespace AngelScript;

namespace
{
// Checking the clock on every statement would slow tight loops down; every
// 256th statement is often enough for a limit counted in seconds.
constexpr unsigned kLinesPerClockCheck = 256;
} // namespace

int ScriptWatchdog::timeLimitSeconds()
{
    bool ok = false;
    int seconds = qEnvironmentVariableIntValue(kEnvironmentVariable, &ok);
    if (ok && seconds >= 0)
        return seconds;
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("quoxel2d"), QStringLiteral("plax"));
    seconds = settings.value(QLatin1String(kSettingsKey), kDefaultLimitSeconds).toInt(&ok);
    return ok && seconds >= 0 ? seconds : kDefaultLimitSeconds;
}

void ScriptWatchdog::attach(asIScriptContext* context)
{
    ScriptState::clearAbortRequest();
    m_limitMs = AppFlags::isBatchMode() ? qint64(timeLimitSeconds()) * 1000 : 0;
    m_linesSinceCheck = 0;
    m_timedOut = false;
    m_timer.start();
    context->SetLineCallback(asFUNCTION(lineCallback), this, asCALL_CDECL);
}

void ScriptWatchdog::lineCallback(asIScriptContext* context, void* watchdog)
{
    auto* self = static_cast<ScriptWatchdog*>(watchdog);
    if (ScriptState::isAbortRequested()) {
        context->Abort();
        return;
    }
    if (self->m_limitMs <= 0 || ++self->m_linesSinceCheck < kLinesPerClockCheck)
        return;
    self->m_linesSinceCheck = 0;
    if (self->m_timer.elapsed() > self->m_limitMs) {
        self->m_timedOut = true;
        context->Abort();
    }
}

void ScriptWatchdog::reportAbort() const
{
    if (m_timedOut) {
        plaxLog(LOG_ERROR,
                QStringLiteral("Script aborted after %1 seconds. The limit can be raised with the environment "
                               "variable %2 or the setting \"%3\" (0 means no limit).")
                    .arg(m_limitMs / 1000)
                    .arg(QLatin1String(kEnvironmentVariable), QLatin1String(kSettingsKey)));
    } else {
        plaxLog(LOG_ERROR, "Script aborted on request.");
    }
}
