#pragma once

#include <QObject>

#include <functional>

class CollisionFilterTable;
class CustomActionMenus;
class CustomPropertyTable;
class EditorDocument;
class EditorWorkspace;
class ExportedPropertyTable;
class HelpBrowser;
class QAction;
class QDockWidget;
class QKeySequence;
class QMainWindow;
class QMdiArea;
class QMenu;
class QPlainTextEdit;
class ScriptEditorPanel;
class ScriptLibrary;

/// What the script tooling works with in the main window, handed over
/// typed by the window that owns it.
struct ScriptToolingPlaces
{
    /// The window the docks and menus go into.
    QMainWindow* window = nullptr;
    /// The documents; the docks follow the active one.
    EditorWorkspace* workspace = nullptr;
    /// The area of the scene views (repaints stop while a script asks).
    QMdiArea* sceneArea = nullptr;
    /// The script output panel and its dock.
    QPlainTextEdit* output = nullptr;
    QDockWidget* outputDock = nullptr;
    /// Shows one log message in the message log panel (called on the
    /// interface thread).
    std::function<void(int level, const QString& text)> appendLog;
};

/// Writing and using scripts in the main window: the custom action menu
/// ("Actions" in the menu bar), the Scripts menu, the script editor, script
/// library and help docks, and the custom property, collision filter and
/// exported property tables. It installs the script machinery's interface
/// hooks (busy indicator, clearing the script output, error rows, the
/// library's current file) and routes what a building live script logs to
/// the script output panel.
class ScriptTooling : public QObject
{
    Q_OBJECT

public:
    /// Adds the docks to the window of `places`.
    explicit ScriptTooling(const ScriptToolingPlaces& places);
    ~ScriptTooling() override;

    /// Inserts the Actions and Scripts menus before `before` in the menu bar,
    /// the docks' toggles at the end of `view`, and "P.L.A.X help" into
    /// `help` before `about`.
    void populate(QMenu* view, QMenu* before, QMenu* help, QAction* about);

    /// The custom action menus.
    CustomActionMenus* customMenus() const { return m_customMenus; }
    /// The "Actions" menu of the menu bar.
    QMenu* customMenu() const { return m_customMenu; }
    /// The panels.
    ScriptEditorPanel* scriptEditor() const { return m_editor; }
    ScriptLibrary* scriptLibrary() const { return m_library; }
    HelpBrowser* helpBrowser() const { return m_help; }
    CustomPropertyTable* customPropertyTable() const { return m_customProperties; }
    CollisionFilterTable* collisionFilterTable() const { return m_collisionFilter; }
    ExportedPropertyTable* exportedPropertyTable() const { return m_exportedProperties; }
    /// The docks of the script editor and the script library.
    QDockWidget* scriptEditorDock() const { return m_editorDock; }
    QDockWidget* scriptLibraryDock() const { return m_libraryDock; }
    /// The docks of the three tables and the help, in that order.
    QList<QDockWidget*> tableAndHelpDocks() const { return m_tableAndHelpDocks; }

private:
    QDockWidget* addDock(QWidget* widget, const QString& objectName, const QString& title, Qt::DockWidgetArea area,
                         const QKeySequence& key);
    void createDocks();
    void installHooks();
    void activeDocumentChanged(EditorDocument* document);
    void fillCustomMenu();
    void showHelp();

    ScriptToolingPlaces m_places;
    QMainWindow* m_window;
    CustomActionMenus* m_customMenus;
    QMenu* m_customMenu = nullptr;
    QMenu* m_layoutMenu = nullptr;
    ScriptEditorPanel* m_editor = nullptr;
    ScriptLibrary* m_library = nullptr;
    HelpBrowser* m_help = nullptr;
    CustomPropertyTable* m_customProperties = nullptr;
    CollisionFilterTable* m_collisionFilter = nullptr;
    ExportedPropertyTable* m_exportedProperties = nullptr;
    QList<QDockWidget*> m_docks;
    QDockWidget* m_helpDock = nullptr;
    QDockWidget* m_editorDock = nullptr;
    QDockWidget* m_libraryDock = nullptr;
    QList<QDockWidget*> m_tableAndHelpDocks;
};
