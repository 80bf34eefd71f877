#pragma once

#include "objects/documentexport.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class EditorDocument;
class EditorWorkspace;
class QAction;
class QMenu;
class QWidget;
class ScriptHooksManager;

/// The editor's exports and what runs around them: "Export raw info..." and
/// "Export C++ source..." of the active document (each raising the hook
/// events before and after and starting the scene's after-export command),
/// the scene's script and export command settings, and the script hooks
/// dialog. It keeps the ScriptHooksManager of the working folder's
/// "config/scripthooks.json" for the life of the window.
class ExportActions : public QObject
{
    Q_OBJECT

public:
    /// Actions of `window`'s workspace.
    ExportActions(QWidget* window, EditorWorkspace* workspace);
    ~ExportActions() override;

    /// Puts the export and scene settings actions into the file menu.
    void populateFile(QMenu* file);
    /// Puts the hooks dialog into the tools menu.
    void populateTools(QMenu* tools);
    /// Enables what applies to the active document.
    void update();

    /// Exports the active document to `path` (no file dialog); false when
    /// there is none or the file could not be written (the user is told).
    bool exportTo(ExportKind kind, const QString& path);
    /// The hook manager.
    ScriptHooksManager& hooks() const { return *m_hooks; }
    /// The file the document was last exported to, or where it would go.
    QString exportPathOf(EditorDocument& document) const;

signals:
    /// A message for the status bar.
    void statusMessage(const QString& text, int timeoutMs);

private:
    void exportWithDialog(ExportKind kind);

    QWidget* m_window;
    EditorWorkspace* m_workspace;
    std::unique_ptr<ScriptHooksManager> m_hooks;
    QHash<const EditorDocument*, QString> m_lastExport;
    QList<QAction*> m_documentActions;
};
