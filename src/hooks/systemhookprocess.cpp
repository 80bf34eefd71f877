#include "hooks/systemhookprocess.h"

#include "base/log.h"
#include "base/notify.h"

#include <QDir>

SystemHookProcess::SystemHookProcess(ResolvedSystemCommand command, QObject* parent)
    : QObject(parent), m_command(std::move(command))
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::finished, this, [this] { report(); });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        // A command that cannot start never finishes; other errors come with finished().
        if (error == QProcess::FailedToStart)
            report();
    });
}

void SystemHookProcess::launch()
{
    if (!m_command.error.isEmpty()) {
        m_errorText = m_command.error;
        report();
        return;
    }
    if (!m_command.workingDirectory.isEmpty() && !QDir(m_command.workingDirectory).exists()) {
        m_errorText = tr("The folder '%1' does not exist").arg(m_command.workingDirectory);
        report();
        return;
    }
    m_process.setWorkingDirectory(m_command.workingDirectory);
    m_process.start(m_command.program, m_command.arguments);
}

void SystemHookProcess::start(bool deleteWhenDone)
{
    m_deleteWhenDone = deleteWhenDone;
    launch();
}

bool SystemHookProcess::run(int timeoutMs)
{
    launch();
    if (!m_reported && m_process.state() != QProcess::NotRunning) {
        if (!m_process.waitForFinished(timeoutMs)) {
            m_errorText = tr("The command did not finish within %1 ms and was stopped").arg(timeoutMs);
            m_process.kill();
            m_process.waitForFinished(1000);
        }
    }
    // waitForFinished delivers finished() itself; a command that could not
    // start may not have been reported yet.
    if (!m_reported)
        report();
    return m_succeeded;
}

void SystemHookProcess::report()
{
    if (m_reported)
        return;
    m_reported = true;
    if (m_process.isOpen())
        m_output = QString::fromLocal8Bit(m_process.readAll()).trimmed();
    if (m_errorText.isEmpty()) {
        if (m_process.error() == QProcess::FailedToStart)
            m_errorText = m_process.errorString();
        else if (m_process.exitStatus() == QProcess::CrashExit)
            m_errorText = tr("The command crashed: %1").arg(m_process.errorString());
        else if (m_process.exitCode() != 0)
            m_errorText = tr("The command exited with code %1").arg(m_process.exitCode());
    }
    m_exitCode = m_process.exitStatus() == QProcess::NormalExit && m_process.error() != QProcess::FailedToStart
                     ? m_process.exitCode()
                     : -1;
    m_succeeded = m_errorText.isEmpty();
    if (m_succeeded) {
        if (!m_output.isEmpty())
            plaxLog(LOG_INFO, m_output);
    } else {
        plaxLog(LOG_ERROR, QStringLiteral("Error executing system command [%1]: %2").arg(m_command.display, m_errorText));
        if (!m_output.isEmpty())
            plaxLog(LOG_ERROR, m_output);
        QString text = tr("Error executing system command [%1]: %2").arg(m_command.display, m_errorText);
        if (!m_output.isEmpty())
            text += QStringLiteral("\n\n") + m_output;
        UserNotifier::show(UserNotifier::Kind::Warning, QStringLiteral("P.L.A.X"), text);
    }
    emit finished(m_succeeded);
    if (m_deleteWhenDone)
        deleteLater();
}
