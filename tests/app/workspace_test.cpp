// The editor window driven as a person would: opening, titles, selecting with
// the mouse, editing in the properties panel, undo through the menu, saving.
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "mainwindowtesting.h"
#include "app/recentfiles.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "panels/propertiespanel.h"
#include "script/scriptapisupport.h"
#include "script/scriptbody.h"
#include "support/guitesting.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTemporaryDir>
#include <QUndoGroup>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
class WorkspaceTest : public MainWindowTest
{
protected:
    EditorWorkspace& workspace() { return *window->workspace(); }
    QList<QMdiSubWindow*> subWindows() { return window->mdiArea()->subWindowList(); }
    EditorView* activeView() { return qobject_cast<EditorView*>(workspace().activeView()); }

    EditorView* openExample()
    {
        EditorView* view = workspace().openFile(copyExample(dir));
        EXPECT_NE(view, nullptr);
        if (view) {
            EXPECT_TRUE(QTest::qWaitForWindowExposed(view));
        }
        return view;
    }

};
} // namespace

TEST_F(WorkspaceTest, OpeningTheExampleShowsItTitledByItsFileName)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    ASSERT_EQ(subWindows().size(), 1);
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax");
    EXPECT_EQ(workspace().activeDocument()->world().bodies().size(), 8u);
    EXPECT_EQ(workspace().undoGroup()->activeStack(), &workspace().activeDocument()->undoStack());
    EXPECT_TRUE(window->findChild<QDockWidget*>("ItemsDock")->windowTitle().endsWith(" - demo.plax"));
    EXPECT_TRUE(window->logText().contains("1 views now open for file"));
    EXPECT_TRUE(window->logText().contains("Opened editor view of"));
    // The whole scene is in view: the walls loop spans x -22..22 and y -3..25.
    const ViewCamera& camera = view->camera();
    EXPECT_LE(camera.toPixel({-22, -3}).x(), camera.toPixel({22, 25}).x());
    EXPECT_GE(camera.toPixel({-22, 25}).x(), 0);
    EXPECT_LE(camera.toPixel({22, 25}).x(), view->width());
    EXPECT_GE(camera.toPixel({0, 25}).y(), 0);
    EXPECT_LE(camera.toPixel({0, -3}).y(), view->height());
}

TEST_F(WorkspaceTest, ClickSelectsTheBodyUnderThePointerAndShiftAddsAsOneUndoStepEach)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    EditorDocument& doc = view->document();
    // The crate (body 2) is centred at (-6, 5); the ball (body 3) at (-2, 8).
    QTest::mouseClick(view, Qt::LeftButton, {}, view->camera().toPixel({-6, 5}).toPoint());
    ASSERT_EQ(doc.selection().items(ItemKind::Body), std::vector<ItemId>{2});
    QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, view->camera().toPixel({-2, 8}).toPoint());
    EXPECT_EQ(doc.selection().items(ItemKind::Body), (std::vector<ItemId>{2, 3}));
    EXPECT_EQ(doc.undoStack().count(), 2);
    // A click on empty space without shift clears the selection.
    QTest::mouseClick(view, Qt::LeftButton, {}, view->camera().toPixel({-15, 20}).toPoint());
    EXPECT_EQ(doc.selection().count(ItemKind::Body), 0u);
    // Selection alone does not make the document modified.
    EXPECT_FALSE(doc.isModified());
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax");
}

TEST_F(WorkspaceTest, PanelEditChangesTheSceneAndUndoRedoThroughTheMenuAndSaveClearTheStar)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    EditorDocument& doc = view->document();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->camera().toPixel({-6, 5}).toPoint());
    ASSERT_EQ(doc.selection().count(ItemKind::Body), 1u);
    const QImage before = view->grabFramebuffer();

    QLineEdit* angle = nullptr;
    ASSERT_TRUE(waitFor([&] { return (angle = window->findChild<QLineEdit*>("body/Angle (rad)")) != nullptr; }));
    EXPECT_EQ(angle->text(), "0.3");
    angle->setFocus();
    angle->selectAll();
    QTest::keyClicks(angle, "1.2");
    QTest::keyClick(angle, Qt::Key_Return);

    const MetaBody* crate = doc.world().findBody(2);
    EXPECT_FLOAT_EQ(crate->angle, 1.2f);
    EXPECT_TRUE(doc.isModified());
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax*");
    const QImage after = view->grabFramebuffer();
    EXPECT_NE(before, after) << "the rotated crate is drawn";

    window->action("actionUndo")->trigger();
    EXPECT_FLOAT_EQ(crate->angle, 0.3f);
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax") << "only a selection lies between the file and the scene";
    window->action("actionRedo")->trigger();
    EXPECT_FLOAT_EQ(crate->angle, 1.2f);
    // The panel follows the undo stack.
    ASSERT_TRUE(waitFor([&] {
        auto* edit = window->findChild<QLineEdit*>("body/Angle (rad)");
        return edit && edit->text() == "1.2";
    }));

    window->action("actionSave")->trigger();
    EXPECT_FALSE(doc.isModified());
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax");
    EditorDocument reloaded;
    ASSERT_TRUE(reloaded.load(doc.filePath()));
    EXPECT_FLOAT_EQ(reloaded.world().findBody(2)->angle, 1.2f);
}

TEST_F(WorkspaceTest, MixedValuesShowAsMixedAndOneEditChangesAllSelectedInOneStep)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    EditorDocument& doc = view->document();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->camera().toPixel({-6, 5}).toPoint());
    QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, view->camera().toPixel({-2, 8}).toPoint());
    QLineEdit* damping = nullptr;
    QLineEdit* angle = nullptr;
    ASSERT_TRUE(waitFor([&] {
        damping = window->findChild<QLineEdit*>("body/Linear damping");
        angle = window->findChild<QLineEdit*>("body/Angle (rad)");
        return damping && angle && angle->text().isEmpty();
    }));
    EXPECT_EQ(angle->placeholderText(), "(mixed)") << "crate 0.3, ball 0";
    EXPECT_EQ(damping->text(), "0");
    const int steps = doc.undoStack().count();
    damping->setFocus();
    damping->selectAll();
    QTest::keyClicks(damping, "0.5");
    QTest::keyClick(damping, Qt::Key_Return);
    EXPECT_FLOAT_EQ(doc.world().findBody(2)->linearDamping, 0.5f);
    EXPECT_FLOAT_EQ(doc.world().findBody(3)->linearDamping, 0.5f);
    EXPECT_EQ(doc.undoStack().count(), steps + 1);
    doc.undoStack().undo();
    EXPECT_FLOAT_EQ(doc.world().findBody(2)->linearDamping, 0.f);
    EXPECT_FLOAT_EQ(doc.world().findBody(3)->linearDamping, 0.f);
}

TEST_F(WorkspaceTest, OpeningAnOpenFileAsksAndYesOpensASecondViewOfTheSameDocument)
{
    const QString path = copyExample(dir);
    ASSERT_NE(workspace().openFile(path), nullptr);
    BoxSeen seen;
    answerNextMessageBox(QMessageBox::No, &seen);
    EXPECT_EQ(workspace().openFile(path), nullptr);
    EXPECT_TRUE(seen.seen);
    EXPECT_EQ(seen.title, "File already open");
    EXPECT_EQ(seen.text, QString("The file '%1' is already open.\nWould you like to open another view of it?").arg(path));
    EXPECT_EQ(subWindows().size(), 1);

    answerNextMessageBox(QMessageBox::Yes);
    EditorView* second = workspace().openFile(path);
    ASSERT_NE(second, nullptr);
    ASSERT_EQ(subWindows().size(), 2);
    ASSERT_EQ(workspace().documents().size(), 1);
    EditorDocument* doc = workspace().documents().front();
    EXPECT_EQ(workspace().views(doc).size(), 2);

    // One edit marks both views.
    {
        ScriptDocumentScope scope(doc);
        UndoMacroScope macro(doc->undoStack(), "edit");
        ScriptBody h = ScriptApi::bodyHandle(doc->world().findBody(2));
        BodyApi::setAngle(&h, 2);
    }
    for (QMdiSubWindow* w : subWindows())
        EXPECT_EQ(w->windowTitle(), "demo.plax*");

    // Closing one view keeps the document and logs the count.
    second->parentWidget()->close();
    ASSERT_TRUE(waitFor([&] { return subWindows().size() == 1; }));
    EXPECT_EQ(workspace().documents().size(), 1);
    EXPECT_TRUE(window->logText().contains(QString("1 views now open for file '%1'").arg(path)));
    EXPECT_TRUE(window->logText().contains(QString("Closed editor view of '%1'").arg(path)));

    // The last view of a modified document asks; Discard closes it.
    BoxSeen prompt;
    answerNextMessageBox(QMessageBox::Discard, &prompt);
    subWindows().front()->close();
    EXPECT_EQ(prompt.title, "Unsaved document");
    EXPECT_EQ(prompt.text, "Save changes to 'demo.plax' before closing?");
    ASSERT_TRUE(waitFor([&] { return subWindows().isEmpty(); }));
    EXPECT_TRUE(workspace().documents().isEmpty());
    EXPECT_TRUE(window->logText().contains(QString("0 views now open for file '%1'").arg(path)));
}

TEST_F(WorkspaceTest, CancelKeepsAModifiedDocumentOpen)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    EditorDocument* doc = &view->document();
    {
        ScriptDocumentScope scope(doc);
        UndoMacroScope macro(doc->undoStack(), "edit");
        ScriptBody h = ScriptApi::bodyHandle(doc->world().findBody(2));
        BodyApi::setAngle(&h, 2);
    }
    answerNextMessageBox(QMessageBox::Cancel);
    EXPECT_FALSE(subWindows().front()->close());
    EXPECT_EQ(workspace().documents().size(), 1);
}

TEST_F(WorkspaceTest, RecentFilesHoldTheNewestNineWithoutDuplicates)
{
    QStringList paths;
    for (int i = 0; i < 11; ++i)
        paths.append(copyExample(dir, QString("scene%1.plax").arg(i)));
    for (const QString& path : paths)
        ASSERT_NE(workspace().openFile(path), nullptr);
    // Opening an open file again (and declining) must not duplicate it either.
    answerNextMessageBox(QMessageBox::No);
    workspace().openFile(paths[4]);

    const QStringList recent = RecentFiles::load();
    ASSERT_EQ(recent.size(), 9);
    EXPECT_EQ(recent.front(), paths[10]);
    EXPECT_EQ(recent.back(), paths[2]);
    EXPECT_EQ(QSet<QString>(recent.begin(), recent.end()).size(), 9);
    const QList<QAction*> actions = window->recentFilesMenu()->actions();
    ASSERT_EQ(actions.size(), 9);
    EXPECT_EQ(actions.front()->text(), QString("&1 %1").arg(paths[10]));
    EXPECT_EQ(actions.front()->data().toString(), paths[10]);

    EXPECT_EQ(RecentFiles::pushed(recent, paths[5]).front(), paths[5]);
    EXPECT_EQ(RecentFiles::pushed(recent, paths[5]).size(), 9);
    EXPECT_EQ(RecentFiles::pushed(recent, paths[5]).count(paths[5]), 1);
}

TEST_F(WorkspaceTest, AFileThatFailsToLoadShowsWhyAndLeavesNothingOpen)
{
    const QString bad = writeFile(dir, "broken.plax", "{ \"metaworld\": [1, 2");
    BoxSeen seen;
    answerNextMessageBox(QMessageBox::Ok, &seen);
    EXPECT_EQ(workspace().openFile(bad), nullptr);
    EXPECT_TRUE(seen.seen);
    EXPECT_EQ(seen.title, "P.L.A.X");
    EXPECT_TRUE(seen.text.contains(bad));
    EXPECT_TRUE(seen.text.contains("JSON")) << seen.text.toStdString();
    EXPECT_TRUE(workspace().documents().isEmpty());
    EXPECT_TRUE(subWindows().isEmpty());
    EXPECT_TRUE(RecentFiles::load().isEmpty());

    BoxSeen missing;
    answerNextMessageBox(QMessageBox::Ok, &missing);
    EXPECT_EQ(workspace().openFile(dir.filePath("nothing-here.plax")), nullptr);
    EXPECT_EQ(missing.title, "P.L.A.X");
    EXPECT_TRUE(workspace().documents().isEmpty());
}

TEST_F(WorkspaceTest, EveryDockCanBeShownAgainFromTheViewMenuAndTheDocksNameTheDocument)
{
    for (const char* name : {"ItemsDock", "PropertiesDock", "ScriptDock", "UndoDock", "MessageLogDock"}) {
        auto* dock = window->findChild<QDockWidget*>(name);
        ASSERT_NE(dock, nullptr) << name;
        dock->close();
        EXPECT_FALSE(dock->isVisible()) << name;
        QAction* toggle = window->action(QString(name) + "Toggle");
        ASSERT_NE(toggle, nullptr) << name;
        toggle->trigger();
        EXPECT_TRUE(dock->isVisible()) << name;
    }
    EXPECT_EQ(window->findChild<QDockWidget*>("MessageLogDock")->windowTitle(), "Message log (F8)");
    EXPECT_EQ(window->findChild<QDockWidget*>("ItemsDock")->windowTitle(), "Items (F2)");
    EXPECT_EQ(window->findChild<QDockWidget*>("UndoDock")->windowTitle(), "Undo stack");
    auto* properties = window->findChild<PropertiesPanel*>();
    ASSERT_NE(properties, nullptr);
    EXPECT_NE(properties->findChild<QWidget*>("NoSelectionLabel"), nullptr);
}

TEST_F(WorkspaceTest, ANewSceneIsUntitledAndSaveAsGivesItAFile)
{
    EditorView* view = workspace().newScene();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(subWindows().front()->windowTitle(), "untitled");
    EditorDocument& doc = view->document();
    const QString path = dir.filePath("fresh.plax");
    ASSERT_TRUE(workspace().saveDocument(&doc, path));
    EXPECT_EQ(doc.filePath(), path);
    EXPECT_EQ(subWindows().front()->windowTitle(), "fresh.plax");
    EXPECT_EQ(RecentFiles::load().front(), path);
}

TEST_F(WorkspaceTest, AFailedSaveLeavesTheFileAndTheModifiedMark)
{
    EditorView* view = openExample();
    ASSERT_NE(view, nullptr);
    EditorDocument& doc = view->document();
    {
        ScriptDocumentScope scope(&doc);
        UndoMacroScope macro(doc.undoStack(), "edit");
        ScriptBody h = ScriptApi::bodyHandle(doc.world().findBody(2));
        BodyApi::setAngle(&h, 2);
    }
    BoxSeen seen;
    answerNextMessageBox(QMessageBox::Ok, &seen);
    EXPECT_FALSE(workspace().saveDocument(&doc, dir.filePath("no-such-folder/out.plax")));
    EXPECT_EQ(seen.title, "P.L.A.X");
    EXPECT_TRUE(doc.isModified());
    EXPECT_EQ(subWindows().front()->windowTitle(), "demo.plax*");
}
