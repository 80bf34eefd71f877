// The script library: listing, opening, saving (with the overwrite
// question), renaming and deleting script files.
#include "panelstesting.h"

#include "panels/scriptlibrary.h"
#include "support/guitesting.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest/QTest>

using namespace PanelsTesting;

namespace
{
class ScriptLibraryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        folder = dir.filePath("library");
        writeText(folder + "/b.rs", "print('b');\n");
        writeText(folder + "/a.rs", "print('a');\n");
        writeText(folder + "/helpers.inc", "// not listed\n");
        library.setTextSource([this] { return text; });
    }

    QTemporaryDir dir;
    QString folder;
    QString text = "print('edited');\n";
    ScriptLibrary library;
};
} // namespace

TEST_F(ScriptLibraryTest, ListsTheScriptFilesOfItsFolder)
{
    LogCapture log;
    library.setFolder(folder);
    const QString a = QFileInfo(folder + "/a.rs").absoluteFilePath();
    EXPECT_EQ(library.model()->files(), QStringList({a, QFileInfo(folder + "/b.rs").absoluteFilePath()}));
    const QModelIndex first = library.model()->index(0);
    EXPECT_EQ(first.data(Qt::DisplayRole).toString(), "a.rs");
    EXPECT_EQ(first.data(ScriptLibraryContentsModel::PathRole).toString(), a);
    EXPECT_FALSE(first.data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(first.data(Qt::FontRole).isValid());
    EXPECT_FALSE(library.model()->data(QModelIndex(), Qt::DisplayRole).isValid());
    EXPECT_TRUE(log.has(LOG_WARNING, "Error in ScriptLibraryContentsModel::data"));
}

TEST_F(ScriptLibraryTest, OpenNewSaveRenameAndDelete)
{
    library.setFolder(folder);
    QSignalSpy changed(&library, &ScriptLibrary::currentFileChanged);
    const QString a = QFileInfo(folder + "/a.rs").absoluteFilePath();

    ASSERT_TRUE(library.openFile(folder + "/a.rs"));
    EXPECT_EQ(library.currentFile(), a);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.last().at(1).toString(), "print('a');\n");

    ASSERT_TRUE(library.saveCurrent());
    EXPECT_EQ(readText(a), text) << "save writes the editor's text to the current file";

    library.doNew();
    EXPECT_TRUE(library.currentFile().isEmpty());
    EXPECT_EQ(changed.last().at(1).toString(), QString()) << "a new script starts empty";

    const QString fresh = folder + "/fresh.rs";
    ASSERT_TRUE(library.saveAs(fresh));
    EXPECT_EQ(readText(fresh), text);
    EXPECT_EQ(library.currentFile(), QFileInfo(fresh).absoluteFilePath());
    EXPECT_EQ(library.model()->files().size(), 3) << "the list shows the new file";

    ASSERT_TRUE(library.renameFile(fresh, "renamed"));
    const QString renamed = QFileInfo(folder + "/renamed.rs").absoluteFilePath();
    EXPECT_FALSE(QFileInfo::exists(fresh));
    EXPECT_EQ(readText(renamed), text);
    EXPECT_EQ(library.currentFile(), renamed) << "the current file follows its rename";
    EXPECT_FALSE(library.renameFile(renamed, "b.rs")) << "an existing name is refused";
    EXPECT_FALSE(library.renameFile(renamed, "../elsewhere.rs"));

    ASSERT_TRUE(library.deleteFile(renamed));
    EXPECT_FALSE(QFileInfo::exists(renamed));
    EXPECT_TRUE(library.currentFile().isEmpty());
    EXPECT_EQ(library.model()->files().size(), 2);
}

TEST_F(ScriptLibraryTest, SavingOverAnotherLibraryFileAsksFirst)
{
    library.setFolder(folder);
    ASSERT_TRUE(library.openFile(folder + "/a.rs"));
    const QString b = folder + "/b.rs";

    GuiTesting::BoxSeen seen;
    GuiTesting::pressInNextMessageBox("Cancel", &seen);
    EXPECT_FALSE(library.saveAs(b));
    EXPECT_EQ(seen.title, "File already exists");
    EXPECT_EQ(seen.text, "That file is already open in the script library.\nDo you wish to overwrite it?");
    EXPECT_EQ(readText(b), "print('b');\n");

    GuiTesting::pressInNextMessageBox("Overwrite");
    EXPECT_TRUE(library.saveAs(b));
    EXPECT_EQ(readText(b), text);
    EXPECT_EQ(library.currentFile(), QFileInfo(b).absoluteFilePath());

    LogCapture log;
    const QString blocked = dir.filePath("library/a.rs/inside.rs");
    EXPECT_FALSE(library.saveAs(blocked));
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not open file for writing: '%1'").arg(blocked)));
}

TEST_F(ScriptLibraryTest, ActivatingAFileInTheListOpensIt)
{
    library.setFolder(folder);
    library.resize(300, 300);
    library.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&library));
    QListView* view = library.view();
    const QRect rect = view->visualRect(library.model()->index(1));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(library.currentFile(), QFileInfo(folder + "/b.rs").absoluteFilePath());
}
