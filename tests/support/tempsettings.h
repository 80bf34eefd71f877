#pragma once

#include <QString>
#include <QTemporaryDir>

/// Gives a test process user folders of its own for the whole run: the XDG
/// configuration, data, cache and state homes point into a fresh temporary
/// folder that is removed at exit. Settings, script log backups and
/// anything else written "next to the user's settings" by the tests, or by
/// the plax binaries they start (which inherit the environment), therefore
/// never reach the user's home. Create it before the application object.
class TemporarySettingsHome
{
public:
    TemporarySettingsHome();
    /// The temporary folder holding the homes.
    QString path() const { return m_dir.path(); }
    /// The configuration home (XDG_CONFIG_HOME).
    QString configHome() const;

private:
    QTemporaryDir m_dir;
};
