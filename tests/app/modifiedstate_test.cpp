// "Modified" means the scene differs from its file, seen the way a user meets
// it: the "*" in the title, the question when the last view closes, re-open's
// confirmation, autosave and quitting; after drags, script runs, saves, undo
// and redo in every order.
#include "app/autosave.h"
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "mainwindowtesting.h"
#include "model/metaworld.h"
#include "support/guitesting.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <functional>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTimer>
#include <QUndoStack>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
class ModifiedStateTest : public MainWindowTest
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

    QString title() const { return window->mdiArea()->subWindowList().front()->windowTitle(); }
    MetaBody* crate() { return static_cast<MetaBody*>(doc->world().registry(ItemKind::Body).findByName("crate")); }
    QPoint pixel(Vec2 world) const { return view->camera().toPixel(world).toPoint(); }

    // Drags the crate by the mouse, as a person moves it.
    void dragCrate(QPoint by)
    {
        const QPoint from = pixel(crate()->position);
        QTest::mouseClick(view, Qt::LeftButton, {}, from);
        QTest::mousePress(view, Qt::LeftButton, {}, from);
        for (const QPoint step : {QPoint(by.x() / 4, by.y() / 4), by}) {
            QMouseEvent move(QEvent::MouseMove, from + step, view->mapToGlobal(from + step), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(view, &move);
        }
        QTest::mouseRelease(view, Qt::LeftButton, {}, from + by);
    }
    void save() { window->action("actionSave")->trigger(); }
    void undo() { window->action("actionUndo")->trigger(); }
    void redo() { window->action("actionRedo")->trigger(); }

    // Runs `call`; a message box it shows is answered with `answer` and
    // described in the result (nothing outlives the call).
    static BoxSeen boxDuring(const std::function<void()>& call, QMessageBox::StandardButton answer)
    {
        BoxSeen seen;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&seen, answer] {
            QWidget* modal = QApplication::activeModalWidget();
            auto* box = qobject_cast<QMessageBox*>(modal);
            if (!box) {
                // Only a question may come: anything else fails and is closed.
                if (modal) {
                    ADD_FAILURE() << "expected a message box, but this came: " << describeDialog(modal).toStdString();
                    modal->close();
                }
                return;
            }
            seen = {true, box->windowTitle(), box->text()};
            if (QAbstractButton* button = box->button(answer)) {
                button->click();
            } else {
                ADD_FAILURE() << "the message box has no button " << int(answer) << ": "
                              << describeDialog(box).toStdString();
                box->reject();
            }
        });
        watch.start(20);
        call();
        return seen;
    }
    // Closes the last view, answering a question with `answer`; true when one came.
    bool closeAnswering(QMessageBox::StandardButton answer)
    {
        const BoxSeen seen = boxDuring([this] { window->mdiArea()->subWindowList().front()->close(); }, answer);
        if (seen.seen) {
            EXPECT_EQ(seen.title, "Unsaved document");
        }
        return seen.seen;
    }

    QString path;
    EditorView* view = nullptr;
    EditorDocument* doc = nullptr;
};
} // namespace

TEST_F(ModifiedStateTest, ADragSavedAndUndoneDiffersFromTheFileAndClosingAsks)
{
    const Vec2 start = crate()->position;
    dragCrate({90, -30});
    ASSERT_NE(crate()->position.x, start.x) << "the drag moved the crate";
    EXPECT_EQ(title(), "demo.plax*");
    save();
    EXPECT_EQ(title(), "demo.plax");
    const Vec2 saved = crate()->position;

    undo();
    EXPECT_FLOAT_EQ(crate()->position.x, start.x) << "the crate is back where it was";
    EXPECT_TRUE(doc->isModified()) << "the file still has it moved";
    EXPECT_EQ(title(), "demo.plax*");
    EXPECT_TRUE(closeAnswering(QMessageBox::Cancel)) << "the undo is not lost silently";
    ASSERT_EQ(window->mdiArea()->subWindowList().size(), 1) << "cancel keeps the view";

    redo();
    EXPECT_FLOAT_EQ(crate()->position.x, saved.x);
    EXPECT_FALSE(doc->isModified()) << "the scene is the file again";
    EXPECT_EQ(title(), "demo.plax");
    EXPECT_FALSE(closeAnswering(QMessageBox::Cancel)) << "nothing to lose";
    EXPECT_TRUE(waitFor([&] { return window->mdiArea()->subWindowList().isEmpty(); }));
}

TEST_F(ModifiedStateTest, AScriptRunSavedAndUndoneIsWrittenByAutosaveAndMakesQuittingAsk)
{
    ASSERT_TRUE(doc->scripting().runOneShot("getBody('crate').setAngle(1.5);", QString()));
    EXPECT_EQ(title(), "demo.plax*");
    save();
    EXPECT_EQ(title(), "demo.plax");
    AutoSaver saver(window->workspace());
    EXPECT_EQ(saver.saveNow(), 0) << "a saved scene needs no copy";

    undo();
    EXPECT_FLOAT_EQ(crate()->angle, 0.3f);
    EXPECT_EQ(title(), "demo.plax*");
    EXPECT_EQ(saver.saveNow(), 1) << "the undone run is a change the file lacks";
    AutoSaver::discard(*doc);

    // Quitting asks too; Cancel keeps the window and the document.
    bool closed = true;
    const BoxSeen seen = boxDuring([&] { closed = window->close(); }, QMessageBox::Cancel);
    EXPECT_FALSE(closed);
    EXPECT_TRUE(seen.seen);
    EXPECT_EQ(seen.title, "Unsaved document");
    EXPECT_EQ(window->workspace()->documents().size(), 1);
}

TEST_F(ModifiedStateTest, SaveUndoRedoAndSelectionsAfterASave)
{
    ASSERT_TRUE(doc->scripting().runOneShot("getBody('crate').setAngle(1.0);", QString()));
    ASSERT_TRUE(doc->scripting().runOneShot("getBody('crate').setAngle(2.0);", QString()));
    save();
    undo();
    EXPECT_EQ(title(), "demo.plax*");
    undo();
    EXPECT_EQ(title(), "demo.plax*");
    redo();
    redo();
    EXPECT_EQ(title(), "demo.plax");

    // Selecting after the save changes nothing in the file.
    QTest::mouseClick(view, Qt::LeftButton, {}, pixel(crate()->position));
    ASSERT_EQ(doc->selection().count(ItemKind::Body), 1u);
    EXPECT_FALSE(doc->undoStack().isClean());
    EXPECT_FALSE(doc->isModified());
    EXPECT_EQ(title(), "demo.plax");

    // Undoing the selection and then the saved change: modified again.
    undo();
    EXPECT_EQ(title(), "demo.plax");
    undo();
    EXPECT_EQ(title(), "demo.plax*");

    // A new step after undoing past the save leaves no way back to the file.
    QTest::mouseClick(view, Qt::LeftButton, {}, pixel(crate()->position));
    EXPECT_EQ(doc->undoStack().cleanIndex(), -1);
    EXPECT_EQ(title(), "demo.plax*");
}

TEST_F(ModifiedStateTest, ReopenAsksOnlyWhenChangesWouldBeLost)
{
    ASSERT_TRUE(doc->scripting().runOneShot("getBody('crate').setAngle(1.0);", QString()));
    save();
    undo();
    bool reopened = true;
    const BoxSeen asked = boxDuring([&] { reopened = window->workspace()->reopenActive(true); }, QMessageBox::No);
    EXPECT_FALSE(reopened);
    EXPECT_TRUE(asked.seen);
    EXPECT_EQ(asked.title, "Re-open file");
    EXPECT_FLOAT_EQ(crate()->angle, 0.3f) << "No keeps the document as it is";

    redo();
    ASSERT_FALSE(doc->isModified());
    // A document equal to its file reloads without a question.
    const BoxSeen unasked = boxDuring([&] { reopened = window->workspace()->reopenActive(true); }, QMessageBox::No);
    EXPECT_TRUE(reopened);
    EXPECT_FALSE(unasked.seen);
    EXPECT_FLOAT_EQ(crate()->angle, 1.0f);
    EXPECT_EQ(doc->undoStack().count(), 0);
}
