#pragma once

#include <QMap>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

/// Result of one run of a command-line tool.
struct ToolRun
{
    int exitCode = -1;   ///< -1 when it could not start or crashed
    QString out;         ///< standard output
    QString err;         ///< standard error
};

/// Runs `program` with `arguments` in `folder` (empty: the current one),
/// with `environment` added to this process's environment, and waits for it.
inline ToolRun runTool(const QString& program, const QStringList& arguments, const QString& folder = QString(),
                       const QMap<QString, QString>& environment = {}, int timeoutMs = 300000)
{
    QProcess process;
    if (!folder.isEmpty())
        process.setWorkingDirectory(folder);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (auto it = environment.begin(); it != environment.end(); ++it)
        env.insert(it.key(), it.value());
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    ToolRun run;
    if (!process.waitForStarted()) {
        run.err = QStringLiteral("could not start %1").arg(program);
        return run;
    }
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

/// The path of a tool the test needs, or empty (the test then fails, naming
/// the Debian package that scripts/install-deps installs for it).
inline QString findTool(const QString& name)
{
    return QStandardPaths::findExecutable(name);
}
