#pragma once

#include <QObject>

class EditorWorkspace;
class QIcon;
class PlayerView;
class QAction;
class QMenu;
class QToolBar;
class QWidget;

/// The actions that run the scene: open a player view of the active editor
/// view's document (Ctrl+Return), and for the active player view play and
/// pause, single step, reload, the fast mode and keeping the result in the
/// document. The player view's own keys do the same while it has the focus.
class PlayerActions : public QObject
{
    Q_OBJECT

public:
    /// Actions of `window`'s workspace.
    PlayerActions(QWidget* window, EditorWorkspace* workspace);

    /// Puts the actions into a menu and a toolbar.
    void populate(QMenu* menu, QToolBar* toolbar);
    /// Follows the active view: enables what applies, shows play or pause.
    void update();
    /// Connects a newly opened player view (its state changes update the actions).
    void watch(PlayerView* view);

signals:
    /// A message for the status bar.
    void statusMessage(const QString& text, int timeoutMs);

private:
    PlayerView* player() const;
    QAction* make(const char* name, const QString& text, const QIcon& icon, const QKeySequence& key,
                  const QString& tip);
    static QIcon playIcon();
    static QIcon pauseIcon();

    QWidget* m_window;
    EditorWorkspace* m_workspace;
    QAction* m_run;
    QAction* m_play;
    QAction* m_step;
    QAction* m_reload;
    QAction* m_fast;
    QAction* m_keep;
};
