#include "app/autosave.h"

#include "app/editorworkspace.h"
#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/scriptlog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{
const QString kBackupName = QStringLiteral("autosave.plax");
const QString kNoteName = QStringLiteral("autosave.source");

QString noteFor(const QString& backupPath)
{
    return QFileInfo(backupPath).dir().filePath(kNoteName);
}
} // namespace

AutoSaver::AutoSaver(EditorWorkspace* workspace) : QObject(workspace), m_workspace(workspace)
{
    connect(&m_timer, &QTimer::timeout, this, [this] { saveNow(); });
    settingsChanged();
    connect(workspace, &EditorWorkspace::documentClosing, this, [](EditorDocument* document) { discard(*document); });
    connect(workspace, &EditorWorkspace::documentSaved, this, [](EditorDocument* document) { discard(*document); });
}

void AutoSaver::settingsChanged()
{
    const int minutes = intervalMinutes();
    if (minutes > 0)
        m_timer.start(minutes * 60 * 1000);
    else
        m_timer.stop();
}

int AutoSaver::intervalMinutes()
{
    return openAppSettings()->value(QStringLiteral("workspace/autosaveminutes"), 5).toInt();
}

QString AutoSaver::folderFor(const EditorDocument& document)
{
    if (document.filePath().isEmpty())
        return QDir(ScriptLog::backupsRoot()).filePath(QStringLiteral("untitled-%1").arg(document.identity()));
    return ScriptLog::backupFolderFor(document.filePath());
}

QString AutoSaver::backupPathFor(const EditorDocument& document)
{
    return QDir(folderFor(document)).filePath(kBackupName);
}

int AutoSaver::saveNow()
{
    int written = 0;
    for (EditorDocument* document : m_workspace->documents()) {
        if (!document->isModified())
            continue;
        const QString folder = folderFor(*document);
        QDir().mkpath(folder);
        const QString backup = backupPathFor(*document);
        if (!document->save(backup, false)) {
            plaxLog(LOG_WARNING, QStringLiteral("Autosave of '%1' failed").arg(EditorWorkspace::displayName(*document)));
            continue;
        }
        QFile note(noteFor(backup));
        if (note.open(QIODevice::WriteOnly | QIODevice::Truncate))
            note.write(document->filePath().toUtf8());
        plaxLog(LOG_DEBUG, QStringLiteral("Autosaved '%1' to '%2'").arg(EditorWorkspace::displayName(*document), backup));
        ++written;
    }
    return written;
}

void AutoSaver::discard(const EditorDocument& document)
{
    discardBackup(backupPathFor(document));
}

void AutoSaver::discardBackup(const QString& backupPath)
{
    QFile::remove(backupPath);
    QFile::remove(noteFor(backupPath));
}

QList<AutoSaver::Recoverable> AutoSaver::findRecoverable()
{
    QList<Recoverable> found;
    const QDir root(ScriptLog::backupsRoot());
    for (const QString& name : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QDir folder(root.filePath(name));
        const QString backup = folder.filePath(kBackupName);
        QFile note(folder.filePath(kNoteName));
        if (!QFileInfo::exists(backup) || !note.open(QIODevice::ReadOnly))
            continue;
        const QString original = QString::fromUtf8(note.readAll()).trimmed();
        const QFileInfo originalInfo(original);
        if (!original.isEmpty() && originalInfo.exists() &&
            originalInfo.lastModified() >= QFileInfo(backup).lastModified())
            continue;
        found.append({original, backup});
    }
    return found;
}
