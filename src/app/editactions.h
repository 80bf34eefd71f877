#pragma once

#include "base/types.h"
#include "editing/editmode.h"
#include "model/metajoint.h"
#include "model/metashape.h"

#include <QObject>

#include <array>

class EditorView;
class EditorWorkspace;
class QAction;
class QActionGroup;
class QMenu;
class QToolBar;
class QWidget;

/// The editing actions of the main window, acting on the active editor
/// view: the seven edit modes (B, F, V, J, I, P, O), adding bodies,
/// fixtures, joints, images and object instances, deleting, renaming, copy,
/// paste and duplicate, selecting all, reversing the winding of fixtures,
/// moving, rotating and scaling. Each goes through the script API and is one
/// undo step. Actions are enabled for the selection they need; the same
/// actions fill the editor view's context menu.
class EditActions : public QObject
{
    Q_OBJECT

public:
    /// Actions of `window`'s workspace; dialogs open over `window`.
    EditActions(QWidget* window, EditorWorkspace* workspace);

    /// Puts the actions into the Edit and Tools menus and the mode toolbar.
    void populate(QMenu* edit, QMenu* tools, QToolBar* modes);
    /// Fills a context menu for a right click at `world` in the active view.
    void fillContextMenu(QMenu* menu, Vec2 world);
    /// The action of an edit mode.
    QAction* modeAction(EditMode mode) const { return m_modes[size_t(mode)]; }
    /// Follows the active view: checks its mode and enables what applies.
    void update();

    /// Copies the selection of the active view's mode to the system clipboard.
    void copy();
    /// Pastes the system clipboard into the active document.
    void paste();
    /// Duplicates the selection in place and starts moving it.
    void duplicate();
    /// Deletes the selection of the active view's mode.
    void deleteSelection();

signals:
    /// A message for the status bar.
    void statusMessage(const QString& text, int timeoutMs);

private:
    QAction* make(const char* name, const QString& text, const QKeySequence& key, const QString& tip);
    EditorView* view() const;
    /// Adds a circle or a 1 x 1 box (`box`) at once, or starts drawing a
    /// polygon, line or loop point by point.
    void addFixture(ShapeType shapeType, bool box);
    void addJoint(JointType jointType);
    void addImage();
    void addObject();
    void rename();
    void selectAll();
    void reverseWinding();
    void traceSamplers();
    void fixturesFromPaths();

    QWidget* m_window;
    EditorWorkspace* m_workspace;
    QActionGroup* m_modeGroup;
    std::array<QAction*, kEditModeCount> m_modes{};
    QAction* m_copy = nullptr;
    QAction* m_paste = nullptr;
    QAction* m_duplicate = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_rename = nullptr;
    QAction* m_selectAll = nullptr;
    QAction* m_reverse = nullptr;
    QAction* m_move = nullptr;
    QAction* m_rotate = nullptr;
    QAction* m_scale = nullptr;
    QAction* m_addBody = nullptr;
    QAction* m_addImage = nullptr;
    QAction* m_addObject = nullptr;
    QAction* m_trace = nullptr;
    QAction* m_pathFixtures = nullptr;
    QMenu* m_fixtureMenu = nullptr;
    QMenu* m_jointMenu = nullptr;
    Vec2 m_contextPoint;
    bool m_contextPointSet = false;
};
