// The player view in the real window: opened from the editor, played and
// paused, bodies dragged with the mouse, reloaded, closed.
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "mainwindowtesting.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "player/playerworld.h"
#include "support/guitesting.h"
#include "views/editorview.h"
#include "views/playerview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
class PlayerViewTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        if (HasFatalFailure())
            return;
        path = copyExample(dir);
        editor = window->workspace()->openFile(path);
        ASSERT_NE(editor, nullptr);
        editor->setView({0, 8}, 24);
    }

    PlayerView* openPlayer()
    {
        window->action("actionRunScene")->trigger();
        auto* player = qobject_cast<PlayerView*>(window->workspace()->activeView());
        EXPECT_NE(player, nullptr);
        if (player) {
            EXPECT_TRUE(QTest::qWaitForWindowExposed(player));
        }
        return player;
    }
    // The Box2D body of the document's body with a name.
    b2Body* body(PlayerView* player, const char* name)
    {
        PlayerWorld* world = player->simulation().world();
        const MetaItem* item = editor->document().world().registry(ItemKind::Body).findByName(name);
        for (size_t i = 0; world && item && i < world->bodyCount(); ++i) {
            if (world->sceneBodyId(i) == item->id())
                return world->body(i);
        }
        return nullptr;
    }

    QString path;
    EditorView* editor = nullptr;
};
} // namespace

TEST_F(PlayerViewTest, OpensFromTheEditorPlaysAndPausesWithItsStatusTexts)
{
    PlayerView* player = openPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(player->kindWord(), "player");
    EXPECT_EQ(player->stateName(), "player_idle");
    EXPECT_EQ(window->workspace()->views(&editor->document()).size(), 2);
    EXPECT_TRUE(window->logText().contains(QString("2 views now open for file '%1'").arg(path)));
    EXPECT_TRUE(window->logText().contains(QString("Opened player view of '%1'").arg(path)));
    EXPECT_EQ(player->camera().center, editor->camera().center) << "the player shows what the editor showed";
    ASSERT_NE(player->simulation().world(), nullptr);

    b2Body* ball = body(player, "ball");
    ASSERT_NE(ball, nullptr);
    const float start = ball->GetPosition().y;
    window->action("actionPlayPause")->trigger();
    EXPECT_TRUE(player->simulation().isPlaying());
    EXPECT_EQ(window->statusBar()->currentMessage(), "Playing scene");
    EXPECT_EQ(window->action("actionPlayPause")->text(), "&Pause");
    ASSERT_TRUE(waitFor([&] { return ball->GetPosition().y < start - 0.2f; })) << "the ball falls";
    QTest::keyClick(player, Qt::Key_Space);
    EXPECT_FALSE(player->simulation().isPlaying());
    EXPECT_EQ(window->statusBar()->currentMessage(), "Paused scene");
    const float paused = ball->GetPosition().y;
    EXPECT_FALSE(player->simulation().timer().isActive()) << "no ticks come while paused";
    QCoreApplication::processEvents();
    EXPECT_EQ(ball->GetPosition().y, paused) << "nothing moves while paused";
    QTest::keyClick(player, Qt::Key_Right);
    EXPECT_LT(ball->GetPosition().y, paused) << "one step";

    // Reload puts everything back where the scene has it.
    QTest::keyClick(player, Qt::Key_R);
    ball = body(player, "ball");
    ASSERT_NE(ball, nullptr);
    EXPECT_FLOAT_EQ(ball->GetPosition().y, start);
    EXPECT_EQ(player->simulation().stepsTaken(), 0);
    EXPECT_FALSE(editor->document().isModified()) << "a player never edits the document";
}

TEST_F(PlayerViewTest, DraggingPullsABodyTowardTheMouse)
{
    PlayerView* player = openPlayer();
    ASSERT_NE(player, nullptr);
    b2Body* crate = body(player, "crate");
    ASSERT_NE(crate, nullptr);
    const b2Vec2 start = crate->GetPosition();
    const QPoint grab = player->camera().toPixel({start.x, start.y}).toPoint();
    const QPoint target = player->camera().toPixel({start.x - 4, start.y + 6}).toPoint();
    QTest::mousePress(player, Qt::LeftButton, {}, grab);
    EXPECT_TRUE(player->simulation().mouseDrag().isDragging());
    QTest::mouseMove(player, target);
    window->action("actionPlayPause")->trigger();
    ASSERT_TRUE(waitFor([&] { return crate->GetPosition().y > start.y + 2; })) << "pulled up against gravity";
    EXPECT_LT(crate->GetPosition().x, start.x - 1);
    QTest::mouseRelease(player, Qt::LeftButton, {}, target);
    EXPECT_FALSE(player->simulation().mouseDrag().isDragging());
}

TEST_F(PlayerViewTest, ClosingWritesTheTogglesBackAndReuseShowsTheOpenPlayer)
{
    PlayerView* player = openPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_TRUE(player->simulation().toggles().showInfo);
    QTest::keyClick(player, Qt::Key_I);
    EXPECT_FALSE(player->simulation().toggles().showInfo);
    player->parentWidget()->close();
    ASSERT_TRUE(waitFor([&] { return window->workspace()->views(&editor->document()).size() == 1; }));
    EXPECT_TRUE(window->logText().contains(QString("Closed player view of '%1'").arg(path)));
    EXPECT_FALSE(openAppSettings()->value("player/showinfo", true).toBool());

    // With reuse on, running the scene again shows the one open player.
    openAppSettings()->setValue("workspace/reuseexistingplayerviews", true);
    window->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
    PlayerView* first = openPlayer();
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->simulation().toggles().showInfo) << "toggles come from the settings";
    window->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
    EXPECT_EQ(openPlayer(), first);
    EXPECT_EQ(window->workspace()->views(&editor->document()).size(), 2);
}
