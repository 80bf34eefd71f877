// Scripts that react and customise, in the real window: the question before
// a scene's scripts run, labels and properties as its scripts say, the hooks
// dialog and a digit key's hook, and exports with their hooks and command.
#include "app/editorworkspace.h"
#include "app/exportactions.h"
#include "app/mainwindow.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "hooks/scripthooksmanager.h"
#include "model/metaworld.h"
#include "panels/propertiespanel.h"
#include "panels/scenescriptsdialog.h"
#include "panels/scripthooksdialog.h"
#include "panels/scripthooksmodel.h"
#include "hooks/systemhookprocess.h"
#include "support/guitesting.h"
#include "support/testfiles.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTreeView>
#include <QTemporaryDir>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
// Only the crate keeps a label, on red.
const QByteArray kLabels = R"(
void setLabelText(body b, string &out text) { if (b.getName() != "crate") text = ""; }
void setLabelColors(body b, color &out bg, color &out fg) { bg.set1(1,0,0,1); fg.set1(1,1,1,1); }
void main() {}
)";
const QByteArray kDisplay = R"(
bool shouldDisplayProperty(body b, const string& in name) { return name != "angle"; }
void main() {}
)";

using TestFiles::readText;

// System commands run after an export in the editor are processes of the
// application until they have ended and reported.
int commandsRunning()
{
    return int(qApp->findChildren<SystemHookProcess*>().size());
}

class DocumentScriptsWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        previous = QDir::currentPath();
        // The hooks configuration is read from the working folder.
        QDir::setCurrent(dir.path());
    }
    void TearDown() override
    {
        window.reset();
        QDir::setCurrent(previous);
    }
    void openWindow()
    {
        window = std::make_unique<MainWindow>();
        window->resize(1100, 800);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    // A copy of the example that names the labels and display filter scripts.
    QString sceneNamingScripts()
    {
        const QString path = copyExample(dir);
        writeFile(dir, "labels.rs", kLabels);
        writeFile(dir, "display.rs", kDisplay);
        EditorDocument prepared;
        EXPECT_TRUE(prepared.load(path));
        {
            ScriptDocumentScope scope(&prepared);
            EXPECT_TRUE(prepared.scripting().runOneShot(
                "setCustomLabelsScriptFile('labels.rs'); setPropertyDisplayFilterScriptFile('display.rs');"
                "setAfterExportSystemHook('echo ran > ran.txt', '', true);",
                QString()));
        }
        EXPECT_TRUE(prepared.save(path, true));
        return path;
    }
    EditorView* view() const
    {
        return qobject_cast<EditorView*>(window->mdiArea()->activeSubWindow()->widget());
    }
    int labelsDrawn()
    {
        EditorView* v = view();
        v->grab();
        return v->lastLabelCount();
    }
    bool angleRowShown(EditorDocument& document)
    {
        EXPECT_TRUE(document.scripting().runOneShot("getBody('crate').select();", QString()));
        auto* panel = window->findChild<PropertiesPanel*>();
        waitFor([&] { return panel->findChild<QLineEdit*>("body/Name") != nullptr; });
        EXPECT_NE(panel->findChild<QLineEdit*>("body/Name"), nullptr);
        return panel->findChild<QLineEdit*>("body/Angle (rad)") != nullptr;
    }

    QTemporaryDir dir;
    QString previous;
    std::unique_ptr<MainWindow> window;
};
} // namespace

TEST_F(DocumentScriptsWindowTest, RefusedScriptsRunNotAndAnAgreementIsAskedOnceAndRemembered)
{
    const QString path = sceneNamingScripts();
    openWindow();

    BoxSeen asked;
    answerNextMessageBox(QMessageBox::No, &asked);
    EditorView* opened = window->workspace()->openFile(path);
    ASSERT_NE(opened, nullptr);
    ASSERT_TRUE(asked.seen);
    EXPECT_TRUE(asked.text.contains(dir.filePath("labels.rs"))) << asked.text.toStdString();
    EXPECT_TRUE(asked.text.contains(dir.filePath("display.rs")));
    EXPECT_TRUE(asked.text.contains("echo ran > ran.txt")) << "the command is named too";
    EXPECT_EQ(labelsDrawn(), 8) << "refused: every body keeps its default label";
    EXPECT_TRUE(angleRowShown(opened->document()));
    auto* exports = window->findChild<ExportActions*>();
    ASSERT_TRUE(exports->exportTo(ExportKind::RawInfo, dir.filePath("refused.json")));
    EXPECT_TRUE(QFile::exists(dir.filePath("refused.json")));
    EXPECT_EQ(commandsRunning(), 0) << "refused: the command does not start with the export";
    EXPECT_FALSE(QFile::exists(dir.filePath("ran.txt")));
    window.reset();

    // Agreeing shows the scripts' work, and is not asked again for the same file.
    openWindow();
    answerNextMessageBox(QMessageBox::Yes, &asked);
    opened = window->workspace()->openFile(path);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(labelsDrawn(), 1) << "only the crate's label is left";
    EXPECT_FALSE(angleRowShown(opened->document())) << "the display filter hides the angle";
    window.reset();

    openWindow();
    {
        NoDialogExpected notAgain; // remembered for this path and content
        ASSERT_NE(window->workspace()->openFile(path), nullptr);
    }
    EXPECT_EQ(labelsDrawn(), 1);

    // A changed script list is a new question.
    writeFile(dir, "other.rs", "void main() {}\n");
    window.reset();
    {
        EditorDocument changed;
        ASSERT_TRUE(changed.load(path));
        ScriptDocumentScope scope(&changed);
        ASSERT_TRUE(changed.scripting().runOneShot("setPropertyExportFilterScriptFile('other.rs');", QString()));
        ASSERT_TRUE(changed.save(path, true));
    }
    openWindow();
    BoxSeen changedAsked;
    answerNextMessageBox(QMessageBox::No, &changedAsked);
    ASSERT_NE(window->workspace()->openFile(path), nullptr);
    EXPECT_TRUE(changedAsked.seen);
    EXPECT_TRUE(changedAsked.text.contains("other.rs"));
}

TEST_F(DocumentScriptsWindowTest, HooksDialogWritesTheTableAndADigitKeyRunsItsHookAsOneUndoStep)
{
    writeFile(dir, "nudge.rs", "void main() { getBody('crate').setPosition(7, 8); print(getHookEventName()); }\n");
    openWindow();
    EditorView* opened = window->workspace()->openFile(copyExample(dir));
    ASSERT_NE(opened, nullptr);
    EditorDocument& document = opened->document();

    bool edited = false;
    handleNextDialog<ScriptHooksDialog>([&](ScriptHooksDialog* dialog) {
        QTreeView* tree = dialog->tree();
        const auto click = [tree](const QModelIndex& index) {
            tree->scrollTo(index);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(index).center());
        };
        click(dialog->model().eventIndex(SHE_KEY_5));
        dialog->addScripts({dir.filePath("missing-first.rs"), dir.filePath("nudge.rs"), dir.filePath("dropped.rs")});
        // The missing file would stop the list: move it after the real one,
        // and take the third away again, with the dialog's buttons.
        const QModelIndex key5 = dialog->model().eventIndex(SHE_KEY_5);
        click(dialog->model().index(0, 0, key5));
        QTest::mouseClick(dialog->findChild<QPushButton*>("MoveHookScriptDown"), Qt::LeftButton);
        click(dialog->model().index(2, 0, key5));
        QTest::mouseClick(dialog->findChild<QPushButton*>("RemoveHookScript"), Qt::LeftButton);
        edited = dialog->model().rowCount(key5) == 2;
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    window->action("actionScriptHooks")->trigger();
    ASSERT_TRUE(edited);
    const QString written = readText(dir.filePath("config/scripthooks.json"));
    EXPECT_TRUE(written.contains("\"KEY_5\"")) << written.toStdString();
    EXPECT_LT(written.indexOf("nudge.rs"), written.indexOf("missing-first.rs"));
    EXPECT_FALSE(written.contains("dropped.rs"));

    const int before = document.undoStack().count();
    opened->setFocus();
    QTest::keyClick(opened, Qt::Key_5);
    ASSERT_TRUE(waitFor([&] { return document.undoStack().count() == before + 1; }));
    EXPECT_EQ(document.undoStack().text(document.undoStack().count() - 1), "script hook [Keypress: 5]");
    const MetaItem* crate = document.world().registry(ItemKind::Body).findByName("crate");
    EXPECT_FLOAT_EQ(static_cast<const MetaBody*>(crate)->position.x, 7.f);
    document.undoStack().undo();
    EXPECT_NE(static_cast<const MetaBody*>(crate)->position.x, 7.f) << "one undo takes the hook back";
    EXPECT_TRUE(window->logText().contains("Could not find file '" + dir.filePath("missing-first.rs") + "'"));
}

TEST_F(DocumentScriptsWindowTest, ExportFromTheMenuRunsHooksAndTheCommandSetInTheSceneDialog)
{
    ASSERT_TRUE(QDir(dir.path()).mkpath("config"));
    writeFile(dir, "config/scripthooks.json",
              R"({"events": [{"trigger": "AFTER_EXPORT", "scripts": ["after.rs"]}]})");
    writeFile(dir, "after.rs", "void main() { writeFile('after.txt', getHookEventName()); }\n");
    openWindow();
    EditorView* opened = window->workspace()->openFile(copyExample(dir));
    ASSERT_NE(opened, nullptr);
    EditorDocument& document = opened->document();

    QString tooltip;
    handleNextDialog<SceneScriptsDialog>([&](SceneScriptsDialog* dialog) {
        dialog->enabledBox()->setChecked(true);
        dialog->commandField()->setText("echo %{PLAXFILE} > 'marker of %{EXPORTFILE}.txt'");
        tooltip = dialog->commandField()->toolTip();
        dialog->accept();
    });
    const int steps = document.undoStack().count();
    window->action("actionSceneScripts")->trigger();
    EXPECT_EQ(tooltip, "Resolved command: echo demo.plax > 'marker of demo.json.txt'");
    EXPECT_TRUE(document.world().afterExportHook.enabled);
    EXPECT_EQ(document.undoStack().count(), steps + 1) << "one undo step";

    // The hooks file came from the folder: the question comes first.
    BoxSeen asked;
    answerNextMessageBox(QMessageBox::Yes, &asked);
    auto* exports = window->findChild<ExportActions*>();
    ASSERT_NE(exports, nullptr);
    ASSERT_TRUE(QDir(dir.path()).mkpath("out dir"));
    ASSERT_TRUE(exports->exportTo(ExportKind::RawInfo, dir.filePath("out dir/level one.json")));
    EXPECT_TRUE(asked.seen);
    EXPECT_TRUE(asked.text.contains("after.rs"));
    const QString marker = dir.filePath("out dir/marker of level one.json.txt");
    EXPECT_TRUE(waitFor([&] { return commandsRunning() == 0 && QFile::exists(marker); }));
    EXPECT_EQ(readText(marker), "demo.plax\n");
    EXPECT_EQ(readText(dir.filePath("after.txt")), "After export");
}
