// Autosave writes copies of modified documents; a copy left behind by a run
// that did not end cleanly is offered at the next start and restores the edits.
#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "app/autosave.h"
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "support/guitesting.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
void setAngle(EditorDocument& doc, ItemId body, float angle)
{
    ScriptDocumentScope scope(&doc);
    UndoMacroScope macro(doc.undoStack(), "edit");
    ScriptBody h = ScriptApi::bodyHandle(doc.world().findBody(body));
    BodyApi::setAngle(&h, angle);
}

// Makes a file look older than anything written afterwards.
void age(const QString& path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime));
}
} // namespace

TEST(AutoSave, WritesOnlyModifiedDocumentsAndDropsTheCopyOnSave)
{
    openAppSettings()->clear();
    QTemporaryDir dir;
    MainWindow window;
    window.show();
    EditorWorkspace& workspace = *window.workspace();
    const QString path = copyExample(dir);
    EditorView* view = workspace.openFile(path);
    ASSERT_NE(view, nullptr);
    EditorDocument& doc = view->document();
    AutoSaver saver(&workspace);

    EXPECT_EQ(saver.saveNow(), 0) << "nothing to keep yet";
    EXPECT_FALSE(QFileInfo::exists(AutoSaver::backupPathFor(doc)));

    setAngle(doc, 2, 1.5f);
    EXPECT_EQ(saver.saveNow(), 1);
    ASSERT_TRUE(QFileInfo::exists(AutoSaver::backupPathFor(doc)));
    EXPECT_TRUE(doc.isModified()) << "an autosave is not a save";
    EXPECT_EQ(doc.filePath(), path);

    ASSERT_TRUE(workspace.saveDocument(&doc));
    EXPECT_FALSE(QFileInfo::exists(AutoSaver::backupPathFor(doc)));
    EXPECT_TRUE(AutoSaver::findRecoverable().isEmpty());
}

TEST(AutoSave, ACopyLeftBehindIsOfferedAtStartAndRecoversTheEdits)
{
    openAppSettings()->clear();
    QTemporaryDir dir;
    const QString path = copyExample(dir);
    QString backup;
    {
        // A run that ends without closing its documents (as a crash would).
        auto window = std::make_unique<MainWindow>();
        EditorView* view = window->workspace()->openFile(path);
        ASSERT_NE(view, nullptr);
        setAngle(view->document(), 2, 1.25f);
        age(path);
        AutoSaver saver(window->workspace());
        ASSERT_EQ(saver.saveNow(), 1);
        backup = AutoSaver::backupPathFor(view->document());
    }
    ASSERT_TRUE(QFileInfo::exists(backup));
    const QList<AutoSaver::Recoverable> found = AutoSaver::findRecoverable();
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.front().originalPath, path);

    MainWindow window;
    window.show();
    BoxSeen seen;
    answerNextMessageBox(QMessageBox::Yes, &seen);
    window.openStartupDocuments();
    EXPECT_EQ(seen.title, "Recover documents");
    EXPECT_TRUE(seen.text.contains(path));
    ASSERT_EQ(window.workspace()->documents().size(), 1);
    EditorDocument* doc = window.workspace()->documents().front();
    EXPECT_EQ(doc->filePath(), path);
    EXPECT_FLOAT_EQ(doc->world().findBody(2)->angle, 1.25f);
    EXPECT_TRUE(doc->isModified());
    EXPECT_EQ(window.mdiArea()->subWindowList().front()->windowTitle(), "demo.plax*");

    // Saving the recovered document writes the edits into the file.
    ASSERT_TRUE(window.workspace()->saveDocument(doc));
    EXPECT_FALSE(doc->isModified());
    EditorDocument reread;
    ASSERT_TRUE(reread.load(path));
    EXPECT_FLOAT_EQ(reread.world().findBody(2)->angle, 1.25f);
}

TEST(AutoSave, DecliningRecoveryRemovesTheCopy)
{
    openAppSettings()->clear();
    QTemporaryDir dir;
    const QString path = copyExample(dir);
    {
        auto window = std::make_unique<MainWindow>();
        EditorView* view = window->workspace()->openFile(path);
        ASSERT_NE(view, nullptr);
        setAngle(view->document(), 2, 0.5f);
        age(path);
        AutoSaver saver(window->workspace());
        ASSERT_EQ(saver.saveNow(), 1);
    }
    MainWindow window;
    answerNextMessageBox(QMessageBox::No);
    window.openStartupDocuments();
    EXPECT_TRUE(window.workspace()->documents().isEmpty());
    EXPECT_TRUE(AutoSaver::findRecoverable().isEmpty());
}
