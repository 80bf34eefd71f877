#include "support/tempsettings.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

TemporarySettingsHome::TemporarySettingsHome() : m_dir(QDir::tempPath() + QStringLiteral("/plax-test-home-XXXXXX"))
{
    if (!m_dir.isValid()) {
        std::fprintf(stderr, "Could not create a temporary settings folder: %s\n",
                     qPrintable(m_dir.errorString()));
        std::exit(2);
    }
    const struct
    {
        const char* variable;
        const char* folder;
    } homes[] = {{"XDG_CONFIG_HOME", "config"},
                 {"XDG_DATA_HOME", "data"},
                 {"XDG_CACHE_HOME", "cache"},
                 {"XDG_STATE_HOME", "state"}};
    for (const auto& home : homes) {
        const QString folder = QDir(m_dir.path()).filePath(QLatin1String(home.folder));
        QDir().mkpath(folder);
        qputenv(home.variable, QFile::encodeName(folder));
    }
}

QString TemporarySettingsHome::configHome() const
{
    return QDir(m_dir.path()).filePath(QStringLiteral("config"));
}
