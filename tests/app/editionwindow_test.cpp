// The editor window in either edition: exporting raw info or source code
// from the window is refused with a message in the restricted edition and
// writes the file in the full one; the about box names the edition.
#include "app/editorworkspace.h"
#include "app/exportactions.h"
#include "base/version.h"
#include "mainwindowtesting.h"
#include "panels/aboutdialog.h"
#include "support/guitesting.h"

#include <QFile>

using namespace GuiTesting;

TEST_F(MainWindowTest, EditionExportFromTheWindowIsRefusedWithAMessageOnlyInTheRestrictedEdition)
{
    ASSERT_NE(window->workspace()->openFile(copyExample(dir)), nullptr);
    auto* exports = window->findChild<ExportActions*>();
    ASSERT_NE(exports, nullptr);
    const struct
    {
        ExportKind kind;
        const char* file;
        const char* refusal;
    } cases[] = {{ExportKind::RawInfo, "out.json", "Exporting raw info is disabled in the trial version."},
                 {ExportKind::SourceCode, "out.cpp", "Exporting source code is disabled in the trial version."}};
    for (const auto& c : cases) {
        const QString target = dir.filePath(c.file);
        if (Version::kTrial) {
            BoxSeen seen;
            answerNextMessageBox(QMessageBox::Ok, &seen);
            EXPECT_FALSE(exports->exportTo(c.kind, target));
            EXPECT_EQ(seen.title, "P.L.A.X");
            EXPECT_EQ(seen.text, c.refusal);
            EXPECT_FALSE(QFile::exists(target));
        } else {
            NoDialogExpected none;
            EXPECT_TRUE(exports->exportTo(c.kind, target));
            EXPECT_TRUE(QFile::exists(target)) << c.file;
        }
    }
}

TEST(Edition, TheAboutTextNamesTheRestrictedEdition)
{
    EXPECT_EQ(AboutDialog::versionText().contains("This is the trial version: some features are not available."),
              Version::kTrial);
}
