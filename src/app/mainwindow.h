#pragma once

#include "base/types.h"

#include <QMainWindow>
#include <QStringList>

class AutoSaver;
class EditActions;
class ExportActions;
class PlayerActions;
class ScriptTooling;
class EditorView;
class QToolBar;
class EditorDocument;
class EditorWorkspace;
class ItemsTree;
class MessageLogPanel;
class PropertiesPanel;
class QAction;
class QDockWidget;
class QMdiArea;
class QMenu;
class QPlainTextEdit;
class QUndoView;
class QShowEvent;

/// The editor's main window: the workspace's multiple-document area, the
/// menus and toolbars, the panels (items, properties, script output, undo
/// stack, message log) as docks that the View menu can always show again,
/// and the status bar. Its geometry and dock state persist in the settings;
/// a first start (or View > Reset layout) gives it the standard arrangement
/// of DockLayout over most of the screen. It shows the log in its panel and
/// the core's messages as message boxes.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Creates the window and restores its saved geometry and state.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// The multiple-document area holding the views.
    QMdiArea* mdiArea() const { return m_mdiArea; }
    /// The documents and views.
    EditorWorkspace* workspace() const { return m_workspace; }
    /// Every message the message log panel holds, whatever its level filter shows.
    QString logText() const;
    /// The message log panel.
    MessageLogPanel* messageLog() const { return m_logPanel; }
    /// Puts the docks and toolbars back in their standard places (View > Reset layout).
    void resetLayout();
    /// The action of a menu entry by its object name (tests, toolbars), or null.
    QAction* action(const QString& objectName) const;
    /// The editing actions (modes, adding, clipboard, ...).
    EditActions* editActions() const { return m_editActions; }
    /// The recent-files menu.
    QMenu* recentFilesMenu() const { return m_recentMenu; }
    /// Opens `files` (named on the command line) or, when there are none, the
    /// documents given by PLAX_OPEN (a list of paths) or, when the setting
    /// asks for it, those open at the last exit; then offers to recover
    /// autosaved documents.
    void openStartupDocuments(const QStringList& files = {});

public slots:
    /// Appends one accepted log message to the message log panel.
    void appendLogMessage(int level, const QString& text);
    /// Shows the open dialog.
    void openFileDialog();
    /// Saves the active document (asking for a file when it has none).
    bool save();
    /// Saves the active document under a new name.
    bool saveAs();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createPanels();
    void createMenus();
    QDockWidget* addPanel(QWidget* widget, const QString& objectName, Qt::DockWidgetArea area, const QKeySequence& key);
    void activeDocumentChanged(EditorDocument* document);
    void connectEditorView(EditorView* view);
    void showContextMenu(EditorView* view, const QPoint& globalPos, Vec2 world);
    void updateRecentFilesMenu(const QStringList& files);
    void updateDockTitles();
    void installNotifier();
    void restoreSettings();
    void placeOnScreen();
    void saveSettings() const;
    QStringList openDocumentPaths() const;

    QMdiArea* m_mdiArea;
    EditorWorkspace* m_workspace;
    AutoSaver* m_autoSaver;
    EditActions* m_editActions = nullptr;
    PlayerActions* m_playerActions = nullptr;
    ExportActions* m_exportActions = nullptr;
    ScriptTooling* m_scriptTooling = nullptr;
    QToolBar* m_modeToolBar = nullptr;
    QMetaObject::Connection m_stackConnection;
    MessageLogPanel* m_logPanel;
    QPlainTextEdit* m_scriptOutput;
    ItemsTree* m_itemsTree;
    PropertiesPanel* m_properties;
    QUndoView* m_undoView;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QDockWidget* m_itemsDock = nullptr;
    QDockWidget* m_propertiesDock = nullptr;
    QDockWidget* m_scriptDock = nullptr;
    QDockWidget* m_logDock = nullptr;
    QDockWidget* m_undoDock = nullptr;
    /// The standard layout still waits for the window's first size.
    bool m_sizeDocksWhenShown = false;
};
