#pragma once

#include "hooks/systemcommand.h"

#include <QObject>
#include <QProcess>

/// Runs one resolved system command and reports how it went. A command that
/// cannot start, crashes or ends with a non-zero exit code logs "Error
/// executing system command [%1]: %2" at ERROR level with the command and
/// the reason, then what the command wrote (standard output and error
/// together) at ERROR level; a command that succeeds logs what it wrote at
/// INFO level. In the editor a failure is also shown in a message box
/// (UserNotifier). Nothing of this ever fails the export it follows.
class SystemHookProcess : public QObject
{
    Q_OBJECT

public:
    /// A process for `command`; nothing starts yet.
    explicit SystemHookProcess(ResolvedSystemCommand command, QObject* parent = nullptr);

    /// Starts the command and returns at once; finished() follows. The
    /// object deletes itself later once reported when `deleteWhenDone` is set.
    void start(bool deleteWhenDone = false);
    /// Runs the command to its end (or `timeoutMs`, -1 for no limit, after
    /// which it is killed) and reports. True when it succeeded.
    bool run(int timeoutMs = -1);

    /// True when the command ran and exited with code 0 (after finishing).
    bool succeeded() const { return m_succeeded; }
    /// The exit code (-1 when it did not exit normally).
    int exitCode() const { return m_exitCode; }
    /// Why it failed, empty when it succeeded.
    const QString& errorText() const { return m_errorText; }
    /// What the command wrote.
    const QString& output() const { return m_output; }
    /// The command.
    const ResolvedSystemCommand& command() const { return m_command; }

signals:
    /// The command ended (or could not start) and has been reported.
    void finished(bool succeeded);

private:
    void launch();
    void report();

    ResolvedSystemCommand m_command;
    QProcess m_process;
    bool m_reported = false;
    bool m_deleteWhenDone = false;
    bool m_succeeded = false;
    int m_exitCode = -1;
    QString m_errorText;
    QString m_output;
};
