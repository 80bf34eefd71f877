#pragma once

#include <QObject>
#include <QPointer>

class CollisionFilterTable;
class CustomActionMenus;
class CustomPropertyTable;
class EditorDocument;
class ExportedPropertyTable;
class HelpBrowser;
class MainWindow;
class QAction;
class QDockWidget;
class QKeySequence;
class QMenu;
class ScriptEditorPanel;
class ScriptLibrary;
class TipsDialog;
class UpdateCheck;

/// Everything about writing and using scripts in the main window, and the
/// remaining panels and dialogs: the custom action menu ("Actions" in the
/// menu bar), the script editor, script library and help docks, the custom
/// property, collision filter and exported property tables, preferences,
/// about, tips, the update check and feedback. It installs the script
/// machinery's interface hooks (busy indicator, clearing the script output,
/// error rows, the library's current file) and routes what a building live
/// script logs to the script output panel.
class ScriptTooling : public QObject
{
    Q_OBJECT

public:
    /// Adds the docks, menus and actions to `window`.
    explicit ScriptTooling(MainWindow* window);
    ~ScriptTooling() override;

signals:
    /// The preferences dialog wrote new settings.
    void preferencesChanged();

public:
    /// The tooling of a main window, or null.
    static ScriptTooling* of(const MainWindow* window);

    /// At start-up: the tips (unless turned off), shown without blocking
    /// once the main window is up, and the update check (when turned on).
    void startUp();
    /// Shows the tip window (one at a time; it never blocks the editor).
    /// `quietly` leaves the keyboard with the main window (at start-up);
    /// otherwise the tips take it (Help > Tip of the day).
    TipsDialog* showTips(bool quietly);
    /// The tip window while it is open, else null.
    TipsDialog* tipsWindow() const;

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
    /// The update check.
    UpdateCheck* updateCheck() const { return m_updateCheck; }

    /// Opens the preferences dialog (modal).
    void showPreferences();
    /// Opens the preferences dialog (modal) on the working-directory field.
    void showWorkingDirectoryPreferences();
    /// Opens the project's issue page in the browser; false without one.
    bool sendFeedback();

private:
    QDockWidget* addDock(QWidget* widget, const QString& objectName, const QString& title, Qt::DockWidgetArea area,
                         const QKeySequence& key);
    void createDocks();
    void createMenus();
    void installHooks();
    void activeDocumentChanged(EditorDocument* document);
    void fillCustomMenu();
    void showTipsOnceShown(int stepsLeft);

    /// How long the start-up tips wait for the main window to show: steps of a tenth of a second.
    static constexpr int kTipsWaitSteps = 100;
    static constexpr int kTipsWaitStepMs = 100;

    MainWindow* m_window;
    CustomActionMenus* m_customMenus;
    QMenu* m_customMenu = nullptr;
    QMenu* m_layoutMenu = nullptr;
    ScriptEditorPanel* m_editor = nullptr;
    ScriptLibrary* m_library = nullptr;
    HelpBrowser* m_help = nullptr;
    CustomPropertyTable* m_customProperties = nullptr;
    CollisionFilterTable* m_collisionFilter = nullptr;
    ExportedPropertyTable* m_exportedProperties = nullptr;
    UpdateCheck* m_updateCheck = nullptr;
    bool m_updateCheckQuiet = false;
    QPointer<TipsDialog> m_tips;
};
