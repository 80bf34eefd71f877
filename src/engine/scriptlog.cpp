#include "engine/scriptlog.h"

#include "base/log.h"
#include "base/settings.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRegularExpression>

namespace
{
QMutex s_rootMutex;
QString s_rootOverride;

QString timeText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString defaultBackupsRoot()
{
    return QFileInfo(openAppSettings()->fileName()).absolutePath() + QStringLiteral("/backups");
}
} // namespace

QString ScriptLog::backupsRoot()
{
    QMutexLocker lock(&s_rootMutex);
    return s_rootOverride.isEmpty() ? defaultBackupsRoot() : s_rootOverride;
}

void ScriptLog::setBackupsRoot(const QString& path)
{
    QMutexLocker lock(&s_rootMutex);
    s_rootOverride = path;
}

QString ScriptLog::backupFolderFor(const QString& sceneFilePath)
{
    QFileInfo scene(sceneFilePath);
    QByteArray dirHash = QCryptographicHash::hash(scene.absolutePath().toUtf8(), QCryptographicHash::Md5).toHex();
    return backupsRoot() + QLatin1Char('/') + scene.completeBaseName() + QLatin1Char('-')
           + QString::fromLatin1(dirHash.left(8));
}

void ScriptLog::start(const QString& sceneFilePath)
{
    m_path.clear();
    if (sceneFilePath.isEmpty())
        return;
    QString root = backupsRoot();
    QDir().mkpath(root);
    if (!QFileInfo(root).isDir()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not find backups directory : %1").arg(root));
        return;
    }
    QString folder = backupFolderFor(sceneFilePath);
    if (!QDir().mkpath(folder)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not create backup folder '%1'").arg(folder));
        return;
    }
    m_path = QStringLiteral("%1/%2-scriptLog.rs").arg(folder, QFileInfo(sceneFilePath).fileName());
    if (QFileInfo::exists(m_path))
        backUp();
    writeLine(QStringLiteral("//Started script log at %1").arg(timeText()), true);
}

int ScriptLog::backupsKept()
{
    bool ok = false;
    const int kept = openAppSettings()->value(QLatin1String(kBackupsSettingsKey), kDefaultBackupsKept).toInt(&ok);
    return ok && kept >= 0 ? kept : kDefaultBackupsKept;
}

void ScriptLog::backUp() const
{
    const int kept = backupsKept();
    const QFileInfo log(m_path);
    const QString base = log.completeBaseName(); // "<scene file>-scriptLog"
    QDir folder = log.absoluteDir();
    if (kept > 0) {
        // Time stamps sort like the times they stand for; a second backup
        // within the same millisecond gets a counter after the stamp.
        const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmsszzz"));
        QString name = QStringLiteral("%1-%2").arg(base, stamp);
        for (int n = 1; folder.exists(name + QStringLiteral(".rs")); ++n)
            name = QStringLiteral("%1-%2-%3").arg(base, stamp).arg(n, 3, 10, QLatin1Char('0'));
        if (!QFile::copy(m_path, folder.filePath(name + QStringLiteral(".rs"))))
            plaxLog(LOG_WARNING, QStringLiteral("Could not back up script log '%1'").arg(m_path));
    }

    // Compared without the extension, a stamp sorts before the same stamp
    // with a counter, so the list runs from oldest to newest.
    const QRegularExpression backupName(QStringLiteral("^%1-\\d{8}-\\d{9}(-\\d{3})?\\.rs$")
                                            .arg(QRegularExpression::escape(base)));
    QStringList backups;
    for (const QString& name : folder.entryList({base + QStringLiteral("-*.rs")}, QDir::Files, QDir::NoSort)) {
        if (backupName.match(name).hasMatch())
            backups.append(name.chopped(3));
    }
    backups.sort();
    for (qsizetype i = 0; i + kept < backups.size(); ++i) {
        if (!folder.remove(backups[i] + QStringLiteral(".rs")))
            plaxLog(LOG_WARNING, QStringLiteral("Could not remove old script log backup '%1'")
                                     .arg(folder.filePath(backups[i] + QStringLiteral(".rs"))));
    }
}

void ScriptLog::restart()
{
    if (!m_path.isEmpty())
        writeLine(QStringLiteral("//Restarted script log at %1").arg(timeText()), true);
}

void ScriptLog::append(const QString& scriptText)
{
    if (!m_path.isEmpty())
        writeLine(scriptText, false);
}

bool ScriptLog::writeLine(const QString& line, bool truncate)
{
    // The file stays open between lines: a script run can append a hundred
    // thousand commands, and opening the file for each would dominate.
    if (truncate || !m_file || m_file->fileName() != m_path) {
        m_file = std::make_unique<QFile>(m_path);
        QIODevice::OpenMode mode = QIODevice::WriteOnly | (truncate ? QIODevice::Truncate : QIODevice::Append);
        if (!m_file->open(mode)) {
            plaxLog(LOG_WARNING, QStringLiteral("Could not open file '%1' for writing").arg(m_path));
            m_file.reset();
            return false;
        }
    }
    m_file->write((line + QLatin1Char('\n')).toUtf8());
    // Flushed at once, so that the log is complete even if the program dies,
    // except during a script run, which flushes once at its end.
    if (m_holdDepth == 0)
        m_file->flush();
    return true;
}

void ScriptLog::holdFlushes()
{
    ++m_holdDepth;
}

void ScriptLog::releaseFlushes()
{
    if (--m_holdDepth == 0 && m_file)
        m_file->flush();
}
