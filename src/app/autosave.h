#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

class EditorDocument;
class EditorWorkspace;

/// Never losing work: every few minutes (setting "workspace/autosaveminutes",
/// 5 by default, 0 turns it off) each modified document is written as a copy
/// into its backup folder, beside a note naming its file. The copy goes when
/// the document is saved or closed; one that is left behind (the program
/// ended without closing it) and is newer than its file is offered for
/// recovery at the next start.
class AutoSaver : public QObject
{
    Q_OBJECT

public:
    /// An autosaved copy that can be recovered.
    struct Recoverable
    {
        /// The scene file it belongs to (empty for a scene never saved).
        QString originalPath;
        /// The autosaved copy.
        QString backupPath;
    };

    /// Autosaves the documents of `workspace` on a timer.
    explicit AutoSaver(EditorWorkspace* workspace);
    /// Takes a changed interval from the settings.
    void settingsChanged();

    /// Writes a copy of every modified document now; returns how many were written.
    int saveNow();
    /// Folder holding a document's autosaved copy.
    static QString folderFor(const EditorDocument& document);
    /// Path of a document's autosaved copy.
    static QString backupPathFor(const EditorDocument& document);
    /// Removes a document's autosaved copy (after a save or a close).
    static void discard(const EditorDocument& document);
    /// Removes an autosaved copy and its note.
    static void discardBackup(const QString& backupPath);
    /// Autosaved copies newer than their files (or whose files are gone).
    static QList<Recoverable> findRecoverable();
    /// Minutes between autosaves from the settings.
    static int intervalMinutes();

private:
    EditorWorkspace* m_workspace;
    QTimer m_timer;
};
