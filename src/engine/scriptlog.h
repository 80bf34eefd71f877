#pragma once

#include <QFile>
#include <QString>

#include <memory>

/// A document's script log: a plaxscript file recording every edit made to
/// the document, so that the editing can be replayed. It lives in the
/// document's backup folder as "%1/%2-scriptLog.rs" (folder, scene file name).
///
/// Backups are kept next to the user's settings: the backups root is the
/// folder "backups" in the directory of the application's INI settings file
/// (QSettings IniFormat, UserScope, "quoxel2d", "plax"), typically
/// ~/.config/quoxel2d/backups. It is created on first use. Each scene gets a
/// folder of its own below it, named after the scene's base name plus a short
/// hash of the scene's directory, so equally named scenes in different
/// folders do not share a log. Only the newest backups of a log are kept
/// (the setting kBackupsSettingsKey, default kDefaultBackupsKept).
class ScriptLog
{
public:
    /// Settings key of the number of log backups kept per scene (0 = none).
    static constexpr const char* kBackupsSettingsKey = "script/scriptlogbackups";
    /// Number of backups kept when the setting is absent or unreadable.
    static constexpr int kDefaultBackupsKept = 10;
    /// The number of backups kept per scene, from the settings.
    static int backupsKept();

    /// The backups root (the override if one is set).
    static QString backupsRoot();
    /// Overrides the backups root (tests, portable installs); empty restores the default.
    static void setBackupsRoot(const QString& path);
    /// The backup folder of a scene file.
    static QString backupFolderFor(const QString& sceneFilePath);

    /// Starts the log of a scene: an existing log is first copied to a
    /// time-stamped backup beside it (and the oldest backups beyond
    /// backupsKept() are removed), then the log is rewritten with the line
    /// "//Started script log at %1". Does nothing for an empty path.
    void start(const QString& sceneFilePath);
    /// Truncates the log and writes "//Restarted script log at %1".
    void restart();
    /// Appends a script text as one line. Does nothing before start().
    void append(const QString& scriptText);

    /// Keeps appended lines buffered until the matching releaseFlushes()
    /// (a script run appends many lines; each flush is a system call).
    void holdFlushes();
    /// Ends holdFlushes(); the last release flushes the buffered lines.
    void releaseFlushes();

    /// Path of the log file, empty when no log is kept.
    const QString& path() const { return m_path; }

private:
    void backUp() const;
    bool writeLine(const QString& line, bool truncate);

    QString m_path;
    std::unique_ptr<QFile> m_file;
    int m_holdDepth = 0;
};
