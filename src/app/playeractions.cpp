#include "app/playeractions.h"

#include "app/actionicons.h"
#include "app/editorworkspace.h"
#include "views/editorview.h"
#include "views/playerview.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QToolBar>

PlayerActions::PlayerActions(QWidget* window, EditorWorkspace* workspace)
    : QObject(window), m_window(window), m_workspace(workspace)
{
    m_run = make("actionRunScene", tr("&Run scene"), ActionIcons::own(QStringLiteral("run-scene")),
                 QKeySequence(Qt::CTRL | Qt::Key_Return), tr("Open a player view that simulates the scene"));
    connect(m_run, &QAction::triggered, this, [this] {
        if (auto* editor = qobject_cast<EditorView*>(m_workspace->activeView()))
            emit editor->openPlayerView(editor);
        update();
    });
    m_play = make("actionPlayPause", tr("&Play"), playIcon(), QKeySequence(),
                  tr("Play or pause the simulation (Space in the player view)"));
    connect(m_play, &QAction::triggered, this, [this] {
        if (PlayerView* p = player())
            p->togglePlay();
        update();
    });
    m_step = make("actionStep", tr("&Single step"),
                  ActionIcons::themed(QStringLiteral("media-skip-forward"), QStringLiteral("step")), QKeySequence(),
                  tr("Advance the paused simulation by one step (Right arrow in the player view)"));
    connect(m_step, &QAction::triggered, this, [this] {
        if (PlayerView* p = player())
            p->singleStep();
    });
    m_reload = make("actionReloadScene", tr("Re&load"),
                    ActionIcons::themed(QStringLiteral("view-refresh"), QStringLiteral("reload")), QKeySequence(),
                    tr("Build the simulation from the scene again (R in the player view)"));
    connect(m_reload, &QAction::triggered, this, [this] {
        if (PlayerView* p = player())
            p->reload();
    });
    m_fast = make("actionFastSpeed", tr("&Fast speed"),
                  ActionIcons::themed(QStringLiteral("media-seek-forward"), QStringLiteral("fast")), QKeySequence(),
                  tr("Step four times as often (F in the player view)"));
    m_fast->setCheckable(true);
    connect(m_fast, &QAction::triggered, this, [this] {
        if (PlayerView* p = player())
            p->toggleFast();
        update();
    });
    m_keep = make("actionKeepResult", tr("&Keep the result"), QIcon(), QKeySequence(),
                  tr("Write the simulated positions, angles and velocities into the scene as one undo step "
                     "(K in the player view)"));
    connect(m_keep, &QAction::triggered, this, [this] {
        if (PlayerView* p = player())
            p->keepResult();
    });
    update();
}

QIcon PlayerActions::playIcon()
{
    return ActionIcons::themed(QStringLiteral("media-playback-start"), QStringLiteral("play"));
}

QIcon PlayerActions::pauseIcon()
{
    return ActionIcons::themed(QStringLiteral("media-playback-pause"), QStringLiteral("pause"));
}

QAction* PlayerActions::make(const char* name, const QString& text, const QIcon& icon, const QKeySequence& key,
                             const QString& tip)
{
    auto* action = new QAction(text, m_window);
    action->setObjectName(QString::fromLatin1(name));
    action->setIcon(icon);
    action->setShortcut(key);
    action->setToolTip(tip);
    action->setStatusTip(tip);
    m_window->addAction(action);
    return action;
}

void PlayerActions::populate(QMenu* menu, QToolBar* toolbar)
{
    for (QAction* action : {m_run, m_play, m_step, m_reload, m_fast, m_keep}) {
        menu->addAction(action);
        if (action != m_keep)
            toolbar->addAction(action);
    }
}

PlayerView* PlayerActions::player() const
{
    return qobject_cast<PlayerView*>(m_workspace->activeView());
}

void PlayerActions::watch(PlayerView* view)
{
    connect(view, &PlayerView::playingChanged, this, &PlayerActions::update);
    connect(view, &PlayerView::statusMessage, this, &PlayerActions::statusMessage);
}

void PlayerActions::update()
{
    PlayerView* p = player();
    m_run->setEnabled(qobject_cast<EditorView*>(m_workspace->activeView()) != nullptr);
    for (QAction* action : {m_play, m_step, m_reload, m_fast, m_keep})
        action->setEnabled(p != nullptr);
    const bool playing = p && p->simulation().isPlaying();
    m_play->setText(playing ? tr("&Pause") : tr("&Play"));
    m_play->setIcon(playing ? pauseIcon() : playIcon());
    m_step->setEnabled(p && !playing);
    m_fast->setChecked(p && p->simulation().scheduler().isFast());
}
