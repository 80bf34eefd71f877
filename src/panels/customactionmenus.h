#pragma once

#include "hooks/customactionmenu.h"

#include <QObject>

#include <functional>

class EditorDocument;
class QMenu;

/// The custom action menus of the main window: the loaded layout tree
/// (reloaded lazily when a layout file changed), menus built from it with
/// each action enabled by the active document's selection, the choice of the
/// layout shown, and running an action's script on the active document as
/// one undo step.
class CustomActionMenus : public QObject
{
    Q_OBJECT

public:
    /// Settings key of the layout shown (a folder name; empty: all layouts).
    static constexpr const char* kLayoutKey = "actionmenu/layout";

    /// Menus over the layouts under `baseFolder`; `activeDocument` tells
    /// which document actions are enabled for and run on.
    CustomActionMenus(std::function<EditorDocument*()> activeDocument,
                      const QString& baseFolder = QLatin1String(CustomActionMenuLoader::kDefaultBaseFolder),
                      QObject* parent = nullptr);
    ~CustomActionMenus() override;

    /// The instance of the main window (null without one); the editor view
    /// fills its right-click menu through it.
    static CustomActionMenus* instance();

    /// Reloads the layouts when a file changed (MainWindow::loadCustomMenuActions).
    bool loadCustomMenuActions();
    /// Deletes the tree and its actions (MainWindow::clearCustomMenuActions).
    void clearCustomMenuActions();
    /// Appends to `menu` the tree of the layout shown, actions enabled by the
    /// selection; a disabled "No actions registered" when there is none.
    void buildCustomMenu(QMenu* menu);

    /// The loader with its tree.
    CustomActionMenuLoader& loader() { return m_loader; }
    /// The layout shown (empty: all).
    QString currentLayout() const;
    /// Shows one layout (empty: all) and remembers the choice.
    void setCurrentLayout(const QString& layout);
    /// Fills `menu` with a checkable entry per loaded layout and "All layouts".
    void buildLayoutMenu(QMenu* menu);

    /// Runs an action's script on the active document as one undo step
    /// named after the action, with "Running script..." shown meanwhile.
    /// False when there is no document, the file cannot be read or the
    /// script failed.
    bool runAction(CustomAction* action);

signals:
    /// A status bar text ("Running script...", empty when done).
    void statusMessage(const QString& text);
    /// An action finished running (with its result).
    void actionFinished(CustomAction* action, bool ok);

private:
    void addItems(QMenu* menu, const CustomActionMenuItem& item, EditorDocument* document, bool topLevel);
    void connectActions();

    std::function<EditorDocument*()> m_activeDocument;
    CustomActionMenuLoader m_loader;
};

/// Appends the custom menu of the main window to `menu` (nothing without
/// one). Editor views call it for their right-click menu.
void buildCustomMenu(QMenu* menu);
