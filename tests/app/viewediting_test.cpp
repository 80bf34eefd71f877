// Editing in the view as a person does it: clicks at the pixels where items
// are drawn, drags, keys and typed values, menus; every action is one undo
// step with its own text.
#include "app/editactions.h"
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "io/scenewriter.h"
#include "mainwindowtesting.h"
#include "model/metaworld.h"
#include "sampling/samplerframe.h"
#include "support/guitesting.h"
#include "support/testfiles.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <cmath>

using namespace GuiTesting;

namespace
{
class ViewEditingTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        if (HasFatalFailure())
            return;
        path = copyExample(dir);
        view = window->workspace()->openFile(path);
        ASSERT_NE(view, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view));
        view->setView({0, 8}, 24);
        view->setFocus();
        doc = &view->document();
    }

    MetaBody* body(const char* name)
    {
        return static_cast<MetaBody*>(doc->world().registry(ItemKind::Body).findByName(name));
    }
    QPoint pixel(Vec2 world) const { return view->camera().toPixel(world).toPoint(); }
    QString lastText() const { return doc->undoStack().text(doc->undoStack().index() - 1); }
    int steps() const { return doc->undoStack().index(); }
    void click(Vec2 world, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(view, Qt::LeftButton, modifiers, pixel(world));
    }
    void mode(const char* action) { window->action(action)->trigger(); }
    void run(const QString& script) { ASSERT_TRUE(doc->scripting().runOneShot(script, QString())); }
    // A mouse move with the buttons and keys held (QTest's move carries no keys).
    void moveTo(QPointF at, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = {})
    {
        QMouseEvent move(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, buttons, modifiers);
        QApplication::sendEvent(view, &move);
    }
    QByteArray savedBytes() { return TestFiles::savedScene(doc->world(), dir.filePath("check.plax")); }
    static Vec2 worldOf(const MetaBody& b, Vec2 local)
    {
        const float c = std::cos(b.angle), s = std::sin(b.angle);
        return {b.position.x + c * local.x - s * local.y, b.position.y + s * local.x + c * local.y};
    }

    QString path;
    EditorView* view = nullptr;
    EditorDocument* doc = nullptr;
};
} // namespace

TEST_F(ViewEditingTest, EachModePicksItsOwnKindAtThePixelsWhereItIsDrawn)
{
    const Vec2 crate = body("crate")->position;
    click(crate);
    EXPECT_EQ(doc->selection().items(ItemKind::Body), std::vector<ItemId>{body("crate")->id()});
    EXPECT_EQ(lastText(), "body selection");

    // The mode keys switch the mode; scripts see it.
    QTest::keyClick(view, Qt::Key_F);
    EXPECT_EQ(view->editMode(), EditMode::Fixtures);
    EXPECT_EQ(editModeWord(doc->editorState().editMode), "fixtures");
    EXPECT_TRUE(window->action("actionFixturesMode")->isChecked());
    const MetaFixture* box = body("crate")->fixtures().front().get();
    click(crate);
    EXPECT_EQ(doc->selection().items(ItemKind::Fixture), std::vector<ItemId>{box->id()});
    EXPECT_EQ(lastText(), "fixture selection");

    // Vertices of the selected fixture.
    QTest::keyClick(view, Qt::Key_V);
    const Vec2 corner = worldOf(*body("crate"), box->vertices()[2]);
    click(corner);
    ASSERT_EQ(doc->selection().vertices().size(), 1u);
    EXPECT_EQ(doc->selection().vertices().front().index, 2);
    EXPECT_EQ(lastText(), "vertex selection");

    // A joint by its anchor.
    QTest::keyClick(view, Qt::Key_J);
    const MetaJoint* joint = doc->world().joints().front().get();
    click(worldOf(*joint->bodyA, joint->anchorA));
    EXPECT_EQ(doc->selection().items(ItemKind::Joint), std::vector<ItemId>{joint->id()});
    EXPECT_EQ(lastText(), "joint selection");

    // An image anywhere inside its picture.
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(Qt::green);
    ASSERT_TRUE(picture.save(dir.filePath("green.png")));
    run(QStringLiteral("addImage(0, '{\"name\":\"pic\",\"file\":\"%1\",\"center\":{\"x\":-12,\"y\":15},"
                       "\"scale\":2,\"body\":0}');")
            .arg(dir.filePath("green.png")));
    QTest::keyClick(view, Qt::Key_I);
    SCOPED_TRACE("image");
    click({-12.3f, 15.2f});
    EXPECT_EQ(doc->selection().count(ItemKind::Image), 1u);
    EXPECT_EQ(lastText(), "image selection");

    // Clicking where nothing of the mode lies clears its selection.
    click({15, 20});
    EXPECT_EQ(doc->selection().count(ItemKind::Image), 0u);
    EXPECT_EQ(lastText(), "image deselection");
    EXPECT_EQ(doc->selection().count(ItemKind::Body), 1u) << "other kinds keep their selection";
}

TEST_F(ViewEditingTest, OverlappingItemsAreOfferedInAMenuByNameAndKind)
{
    // A second body exactly over the crate.
    run("body b = duplicate(getBody('crate')); b.setName('twin');");
    QStringList seen;
    chooseInNextMenu(1, &seen);
    click(body("crate")->position);
    ASSERT_EQ(seen.size(), 2) << seen.join(", ").toStdString();
    EXPECT_EQ(seen[0], "twin (body)") << "the topmost first";
    EXPECT_EQ(seen[1], "crate (body)");
    EXPECT_EQ(doc->selection().items(ItemKind::Body), std::vector<ItemId>{body("crate")->id()});

    // Closing the menu without a choice changes nothing.
    const int before = steps();
    chooseInNextMenu(-1);
    click(body("crate")->position);
    EXPECT_EQ(steps(), before);
}

TEST_F(ViewEditingTest, DraggingMovesTheBodyByTheDistanceDraggedAndCtrlSnapsToTheGrid)
{
    MetaBody* crate = body("crate");
    const Vec2 start = crate->position;
    click(start);
    const int before = steps();
    const QPoint from = pixel(start);
    QTest::mousePress(view, Qt::LeftButton, {}, from);
    moveTo(from + QPoint(20, 0), Qt::LeftButton);
    moveTo(from + QPoint(100, -40), Qt::LeftButton);
    EXPECT_EQ(view->stateName(), "editor_translate");
    QTest::mouseRelease(view, Qt::LeftButton, {}, from + QPoint(100, -40));
    const double perPixel = view->camera().worldPerPixel();
    EXPECT_NEAR(crate->position.x - start.x, 100 * perPixel, 1e-3);
    EXPECT_NEAR(crate->position.y - start.y, 40 * perPixel, 1e-3);
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(lastText(), "translation of 1 body");

    // With Ctrl the move is a whole number of grid steps (0.5 by default).
    const Vec2 second = crate->position;
    const QPoint at = pixel(second);
    QTest::mousePress(view, Qt::LeftButton, {}, at);
    moveTo(at + QPoint(10, 0), Qt::LeftButton, Qt::ControlModifier);
    moveTo(at + QPoint(77, 33), Qt::LeftButton, Qt::ControlModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, at + QPoint(77, 33), view->mapToGlobal(at + QPoint(77, 33)),
                        Qt::LeftButton, Qt::NoButton, Qt::ControlModifier);
    QApplication::sendEvent(view, &release);
    const float dx = crate->position.x - second.x, dy = crate->position.y - second.y;
    EXPECT_NEAR(std::remainder(dx, 0.5f), 0, 1e-4);
    EXPECT_NEAR(std::remainder(dy, 0.5f), 0, 1e-4);
    EXPECT_NEAR(dx, 77 * perPixel, 0.26);
    EXPECT_NEAR(dy, -33 * perPixel, 0.26);
    EXPECT_EQ(steps(), before + 2);
}

TEST_F(ViewEditingTest, TypedValuesRotateAndRefusedValuesChangeNothing)
{
    MetaBody* ball = body("ball");
    click(ball->position);
    const float angle = ball->angle;
    QTest::keyClick(view, Qt::Key_R);
    EXPECT_EQ(view->stateName(), "editor_rotate");
    QTest::keyClicks(view, "90");
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_NEAR(ball->angle - angle, M_PI / 2, 1e-6);
    EXPECT_EQ(lastText(), "rotation of 1 body");
    EXPECT_EQ(view->stateName(), "editor_idle");

    // A scale by 0 is refused with a message in the status bar.
    const int before = steps();
    const QByteArray bytes = savedBytes();
    QTest::keyClick(view, Qt::Key_S);
    QTest::keyClicks(view, "0");
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(steps(), before);
    EXPECT_EQ(savedBytes(), bytes);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("scale by 0")) << window->statusBar()->currentMessage().toStdString();

    // Escape puts a previewed move back.
    QTest::keyClick(view, Qt::Key_G);
    QTest::keyClicks(view, "5,5");
    EXPECT_NE(savedBytes(), bytes) << "the preview moves the ball";
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(savedBytes(), bytes);
    EXPECT_EQ(steps(), before);
}

TEST_F(ViewEditingTest, ABoxDragSelectsWhatLiesInsideAndCtrlRemoves)
{
    // The ball (-2, 8, radius 0.5) and the crate (-6, 5) lie in the box from (-8, 10) to (-1, 3).
    const QPoint a = pixel({-8, 10}), b = pixel({-1, 3});
    QTest::mousePress(view, Qt::LeftButton, {}, a);
    moveTo(a + QPoint(10, 10), Qt::LeftButton);
    moveTo(b, Qt::LeftButton);
    EXPECT_EQ(view->stateName(), "editor_boxselect");
    QTest::mouseRelease(view, Qt::LeftButton, {}, b);
    std::vector<ItemId> selected = doc->selection().items(ItemKind::Body);
    std::sort(selected.begin(), selected.end());
    EXPECT_EQ(selected, (std::vector<ItemId>{body("crate")->id(), body("ball")->id()}));
    EXPECT_EQ(lastText(), "body selection");

    // Ctrl and a box around the ball alone takes it out.
    const QPoint c = pixel({-3, 9}), d = pixel({-1, 7});
    QTest::mousePress(view, Qt::LeftButton, Qt::ControlModifier, c);
    moveTo(c + QPoint(10, 10), Qt::LeftButton, Qt::ControlModifier);
    moveTo(d, Qt::LeftButton, Qt::ControlModifier);
    QTest::mouseRelease(view, Qt::LeftButton, Qt::ControlModifier, d);
    EXPECT_EQ(doc->selection().items(ItemKind::Body), std::vector<ItemId>{body("crate")->id()});
    EXPECT_EQ(lastText(), "body deselection");
}

TEST_F(ViewEditingTest, BodiesPolygonsAndJointsAreMadeWithTheMouseOneStepEach)
{
    run("setCursor(14, 18);");
    const size_t bodies = doc->world().bodies().size();
    window->action("actionAddBody")->trigger();
    ASSERT_EQ(doc->world().bodies().size(), bodies + 1);
    EXPECT_EQ(lastText(), "add body");
    MetaBody* made = doc->world().bodies().back().get();
    EXPECT_FLOAT_EQ(made->position.x, 14);
    EXPECT_FLOAT_EQ(made->position.y, 18);

    // A polygon by three clicks and Enter goes onto the selected new body.
    window->findChild<QAction*>("actionAddFixturepolygon")->trigger();
    EXPECT_EQ(view->stateName(), "editor_draw");
    const std::vector<Vec2> points{{12, 16}, {16, 16}, {14, 19}};
    for (const Vec2& p : points)
        QTest::mouseClick(view, Qt::LeftButton, {}, pixel(p));
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(lastText(), "add fixture");
    ASSERT_EQ(made->fixtures().size(), 2u);
    const MetaFixture& drawn = *made->fixtures().back();
    ASSERT_EQ(drawn.vertices().size(), 3u);
    const double tolerance = view->camera().worldPerPixel();
    for (size_t i = 0; i < 3; ++i) {
        const Vec2 w = worldOf(*made, drawn.vertices()[i]);
        EXPECT_NEAR(w.x, points[i].x, tolerance);
        EXPECT_NEAR(w.y, points[i].y, tolerance);
    }

    // A revolute joint between two selected bodies, at the cursor.
    mode("actionBodiesMode");
    click(body("crate")->position);
    click(body("ball")->position, Qt::ShiftModifier);
    run("setCursor(-4, 6.5);");
    window->findChild<QAction*>("actionAddJointrevolute")->trigger();
    EXPECT_EQ(lastText(), "add joint");
    const MetaJoint* joint = doc->world().joints().back().get();
    EXPECT_EQ(joint->type, JointType::Revolute);
    EXPECT_EQ(view->editMode(), EditMode::Joints);
    const Vec2 anchor = worldOf(*joint->bodyA, joint->anchorA);
    EXPECT_NEAR(anchor.x, -4, 1e-4);
    EXPECT_NEAR(anchor.y, 6.5, 1e-4);
}

TEST_F(ViewEditingTest, DeleteAndCopyPasteAreOneStepEachAndUndoRestoresTheSavedBytes)
{
    QFile original(path);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    const QByteArray bytes = savedBytes();
    const int start = steps();

    click(body("crate")->position);
    window->action("actionDelete")->trigger();
    EXPECT_EQ(lastText(), "delete 1 body");
    EXPECT_EQ(body("crate"), nullptr);
    window->action("actionUndo")->trigger();
    ASSERT_NE(body("crate"), nullptr);

    window->action("actionCopy")->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("{\"metabody\":["));
    const size_t bodies = doc->world().bodies().size();
    window->action("actionPaste")->trigger();
    EXPECT_EQ(lastText(), "paste 1 body");
    EXPECT_EQ(doc->world().bodies().size(), bodies + 1);

    // Text that is not scene JSON is refused with a message.
    const int before = steps();
    QApplication::clipboard()->setText("just words");
    window->action("actionPaste")->trigger();
    EXPECT_EQ(steps(), before);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("no scene items"));

    while (steps() > start)
        window->action("actionUndo")->trigger();
    EXPECT_EQ(savedBytes(), bytes);
}

TEST_F(ViewEditingTest, DroppedImagesAreAddedAndOtherFilesAreIgnoredWithAMessage)
{
    QImage picture(8, 8, QImage::Format_ARGB32);
    picture.fill(Qt::blue);
    ASSERT_TRUE(picture.save(dir.filePath("blue.png")));
    const QString text = writeFile(dir, "readme.txt", "words");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(dir.filePath("blue.png")), QUrl::fromLocalFile(text)});
    const QPointF at = pixel({5, 15});
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view, &drop);
    ASSERT_EQ(doc->world().images().size(), 1u);
    EXPECT_EQ(lastText(), "add images");
    EXPECT_NEAR(doc->world().images().front()->center.x, 5, 0.1);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("readme.txt"));
}

TEST_F(ViewEditingTest, SamplerPathsAreTracedEditedAndTurnedIntoFixturesOneStepEach)
{
    QImage sprite(64, 64, QImage::Format_ARGB32);
    sprite.fill(Qt::transparent);
    {
        QPainter painter(&sprite);
        painter.setBrush(Qt::red);
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(QRectF(8, 8, 48, 48));
    }
    ASSERT_TRUE(sprite.save(dir.filePath("disc.png")));
    run(QStringLiteral("sampler s = addSampler(mv(10, 16)); s.setFile('%1'); s.setHeight(4); s.setBody(getBody('ground'));"
                       "s.setCenter(10, 16); s.setOutputWidth(64); s.setOutputHeight(64); s.select();")
            .arg(dir.filePath("disc.png")));
    ASSERT_EQ(doc->world().samplers().size(), 1u);
    // Tracing replaces the sampler's record, and undo may too: always the current one.
    const auto current = [this] { return doc->world().samplers().front().get(); };
    QTest::keyClick(view, Qt::Key_P);
    EXPECT_EQ(view->editMode(), EditMode::Samplers);

    int before = steps();
    window->action("actionTraceSampler")->trigger();
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(lastText(), "trace outline of sampler");
    ASSERT_EQ(current()->paths.size(), 1u) << "one disc, one outline";
    const size_t points = current()->paths.front().controlPoints.size();
    ASSERT_GE(points, 8u);

    // Drag the first control point 30 pixels to the right.
    const SamplerFrame frame = SamplerFrame::of(*current());
    const Vec2 first = frame.toWorld(current()->paths.front().controlPoints[0]);
    const QPoint from = pixel(first);
    QTest::mousePress(view, Qt::LeftButton, {}, from);
    moveTo(from + QPoint(15, 0), Qt::LeftButton);
    moveTo(from + QPoint(30, 0), Qt::LeftButton);
    QTest::mouseRelease(view, Qt::LeftButton, {}, from + QPoint(30, 0));
    EXPECT_EQ(lastText(), "move control point");
    const Vec2 moved = frame.toWorld(current()->paths.front().controlPoints[0]);
    EXPECT_NEAR(moved.x - first.x, 30 * view->camera().worldPerPixel(), 1e-3);

    // A double click between two points inserts one; Shift takes it away again.
    const Vec2 a = frame.toWorld(current()->paths.front().controlPoints[2]);
    const Vec2 b = frame.toWorld(current()->paths.front().controlPoints[3]);
    QTest::mouseDClick(view, Qt::LeftButton, {}, pixel({(a.x + b.x) / 2, (a.y + b.y) / 2}));
    EXPECT_EQ(lastText(), "insert control point");
    ASSERT_EQ(current()->paths.front().controlPoints.size(), points + 1);
    QTest::mouseDClick(view, Qt::LeftButton, Qt::ShiftModifier, pixel(frame.toWorld(current()->paths.front().controlPoints[3])));
    EXPECT_EQ(lastText(), "delete control point");
    EXPECT_EQ(current()->paths.front().controlPoints.size(), points);

    before = steps();
    const size_t fixtures = doc->world().fixtureCount();
    window->action("actionFixturesFromPaths")->trigger();
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(lastText(), "fixtures from paths");
    EXPECT_EQ(doc->world().fixtureCount(), fixtures + 1);

    // Each edit is one step back: fixtures, delete, insert, move.
    for (int i = 0; i < 4; ++i)
        doc->undoStack().undo();
    EXPECT_EQ(doc->world().fixtureCount(), fixtures);
    ASSERT_EQ(current()->paths.front().controlPoints.size(), points);
    const Vec2 back = frame.toWorld(current()->paths.front().controlPoints[0]);
    EXPECT_NEAR(back.x, first.x, 1e-4);
    EXPECT_NEAR(back.y, first.y, 1e-4);
}
