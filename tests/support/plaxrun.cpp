#include "support/plaxrun.h"

#include "support/schemacheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>

PlaxSandbox::PlaxSandbox()
{
    QDir(m_dir.path()).mkpath(QStringLiteral("config-home"));
}

QString PlaxSandbox::path(const QString& name) const
{
    return QDir(m_dir.path()).absoluteFilePath(name);
}

QString PlaxSandbox::write(const QString& name, const QByteArray& content) const
{
    const QString file = path(name);
    QDir().mkpath(QFileInfo(file).absolutePath());
    QFile f(file);
    if (f.open(QIODevice::WriteOnly))
        f.write(content);
    return file;
}

QByteArray PlaxSandbox::read(const QString& name) const
{
    QFile f(path(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QString PlaxSandbox::settingsFolder() const
{
    return path(QStringLiteral("config-home/quoxel2d"));
}

void PlaxSandbox::setSetting(const QString& key, const QVariant& value) const
{
    QSettings settings(settingsFolder() + QStringLiteral("/plax.ini"), QSettings::IniFormat);
    settings.setValue(key, value);
}

PlaxRun PlaxSandbox::run(const QStringList& arguments, const QMap<QString, QString>& environment) const
{
    QProcess process;
    process.setWorkingDirectory(m_dir.path());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config-home")));
    env.remove(QStringLiteral("DISPLAY"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (auto it = environment.begin(); it != environment.end(); ++it)
        env.insert(it.key(), it.value());
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(PLAX_BINARY), arguments);
    PlaxRun result;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    result.log = QString::fromUtf8(read(QStringLiteral("plax.log")));
    // What plax wrote must satisfy the schemas editors check files with.
    // Devices and pipes ("-e /dev/stdout") are not files to read back.
    for (qsizetype i = 0; result.exitCode == 0 && i + 1 < arguments.size(); ++i) {
        const bool rawInfo = arguments[i] == QLatin1String("-e");
        if (!rawInfo && arguments[i] != QLatin1String("-r"))
            continue;
        const QFileInfo output(QDir(m_dir.path()).absoluteFilePath(arguments[i + 1]));
        if (!output.isFile())
            continue;
        const QString problem =
            fileSchemaViolation(rawInfo ? FileSchema::RawInfo : FileSchema::Scene, output.absoluteFilePath());
        if (!problem.isEmpty()) {
            result.exitCode = kPlaxSchemaViolation;
            result.err += QStringLiteral("\nschema violation: ") + problem;
        }
    }
    return result;
}
