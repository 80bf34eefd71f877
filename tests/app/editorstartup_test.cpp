// The editor's start-up on the real main window: files from the command line,
// and the options dialog when the default action menu is missing.
#include "app/editorstartup.h"
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "app/scripttooling.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "hooks/scripthooksmanager.h"
#include "panels/customactionmenus.h"
#include "panels/preferencesdialog.h"
#include "panels/tipsdialog.h"
#include "support/guitesting.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QDirIterator>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

namespace
{
const char* const kMissingMenu = "Could not find default action menu (config/actionMenu/default/layout.json) - is the "
                                 "current working directory set correctly? See the 'Environment' section of the "
                                 "Workspace tab in the options dialog.";

// Copies the project's config folder to `target`.
void copyProjectConfig(const QString& target)
{
    const QString source = QStringLiteral(PLAX_SOURCE_DIR "/config");
    QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString copy = QDir(target).filePath(QDir(source).relativeFilePath(file));
        QDir().mkpath(QFileInfo(copy).absolutePath());
        QFile::copy(file, copy);
    }
}

// Each test starts the editor in a folder of its own with fresh settings and
// no tips; the current directory is restored afterwards.
class EditorStartupTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        openAppSettings()->setValue(QLatin1String(TipsDialog::kShowAtStartupKey), false);
        previous = QDir::currentPath();
        start = dir.filePath("start");
        QDir().mkpath(start);
        ASSERT_TRUE(QDir::setCurrent(start));
    }

    void TearDown() override
    {
        window.reset();
        QDir::setCurrent(previous);
        openAppSettings()->clear();
    }

    void showWindow()
    {
        window = std::make_unique<MainWindow>();
        window->resize(1000, 700);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    QTemporaryDir dir;
    QString previous;
    QString start;
    std::unique_ptr<MainWindow> window;
};

// What the options dialog looked like when it came up.
struct OptionsSeen
{
    bool seen = false;
    QString tab;
    QString focused;
    bool fieldSelected = false;
};

// When the preferences dialog comes up as the active modal window, records
// its state, types `path` into the working-directory field and presses OK.
void answerOptionsDialog(const QString& path, OptionsSeen* seen)
{
    // Any other dialog fails the test with its title and text and is closed.
    GuiTesting::handleNextDialog<PreferencesDialog>([path, seen](PreferencesDialog* dialog) {
        auto* tabs = dialog->findChild<QTabWidget*>("PreferencesTabs");
        auto* field = dialog->findChild<QLineEdit*>("pref_workspace_workingdirectory");
        seen->seen = true;
        seen->tab = tabs ? tabs->tabText(tabs->currentIndex()) : QString();
        // The dialog's own focus: the window manager may activate it a moment later.
        seen->focused = dialog->focusWidget() ? dialog->focusWidget()->objectName() : QString();
        if (field) {
            seen->fieldSelected = field->selectedText() == field->text();
            QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(field, path);
        }
        auto* buttons = dialog->findChild<QDialogButtonBox*>("PreferencesButtons");
        if (buttons) {
            buttons->button(QDialogButtonBox::Ok)->click();
        } else {
            ADD_FAILURE() << "the options dialog has no buttons: " << GuiTesting::describeDialog(dialog).toStdString();
            dialog->reject();
        }
    });
}
} // namespace

TEST_F(EditorStartupTest, CommandLineFilesAreOpenedInsteadOfTheLastSession)
{
    copyProjectConfig(QDir(start).filePath("config"));
    const QString named = GuiTesting::copyExample(dir, "named.plax");
    const QString fromEnvironment = GuiTesting::copyExample(dir, "environment.plax");
    qputenv("PLAX_OPEN", fromEnvironment.toLocal8Bit());
    showWindow();
    EditorStart editor;
    editor.files = {named};
    editor.arguments = {named};
    LogCapture log;
    const bool optionsQueued = startEditor(*window, editor);
    qunsetenv("PLAX_OPEN");

    EXPECT_FALSE(optionsQueued);
    ASSERT_EQ(window->workspace()->documents().size(), 1u);
    EXPECT_EQ(window->workspace()->documents().front()->filePath(), named);
    EXPECT_TRUE(log.has(LOG_INFO, "Starting with parameters:"));
    EXPECT_TRUE(log.has(LOG_INFO, " " + named));
    EXPECT_FALSE(log.contains(LOG_ERROR, "Could not find default action menu"));

    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "no options dialog when the menu is there";
}

TEST_F(EditorStartupTest, MissingDefaultMenuOpensTheOptionsOnTheWorkingDirectory)
{
    // An installed configuration to seed the folder the user picks.
    const QString installed = dir.filePath("prefix/share/plax/config");
    copyProjectConfig(installed);
    GuiTesting::writeFile(dir, "prefix/share/plax/config/scripthooks.json",
                          R"({"events": [{"trigger": "AFTER_EXPORT", "scripts": ["after.rs"]}]})");
    const QString chosen = dir.filePath("chosen");
    QDir().mkpath(chosen);

    // The configured folder has a config of its own, but no default menu.
    QDir().mkpath(dir.filePath("start/config/actionMenu/other"));
    GuiTesting::writeFile(dir, "start/config/actionMenu/other/layout.json", "{\"children\": []}");
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), start);

    showWindow();
    EditorStart editor;
    editor.folder.source = WorkingFolder::Source::Configured;
    editor.folder.configured = start;
    editor.folder.changed = true;
    editor.installedConfig = installed;
    LogCapture log;
    OptionsSeen seen;
    answerOptionsDialog(chosen, &seen);
    EXPECT_TRUE(startEditor(*window, editor));
    EXPECT_TRUE(log.has(LOG_ERROR, kMissingMenu)) << log.dump().toStdString();
    EXPECT_FALSE(seen.seen) << "the dialog waits for the end of start-up";

    ASSERT_TRUE(GuiTesting::waitFor([&] { return seen.seen && !QApplication::activeModalWidget(); }, 15000));
    EXPECT_EQ(seen.tab, "&Workspace");
    EXPECT_EQ(seen.focused, "pref_workspace_workingdirectory");
    EXPECT_TRUE(seen.fieldSelected);

    // OK with a new folder: it is saved, entered and seeded at once, and the
    // action menus come from it.
    EXPECT_EQ(openAppSettings()->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString(), chosen);
    EXPECT_EQ(QDir::currentPath(), QDir(chosen).canonicalPath());
    EXPECT_TRUE(QFile::exists(QDir(chosen).filePath("config/actionMenu/default/layout.json")));
    EXPECT_TRUE(log.has(LOG_INFO, "Set current working directory to " + QDir::currentPath())) << log.dump().toStdString();
    EXPECT_TRUE(window->scriptTooling()->customMenus()->loader().layouts().contains("default"));
    ASSERT_NE(ScriptHooksManager::instance(), nullptr);
    EXPECT_EQ(ScriptHooksManager::instance()->scripts(SHE_AFTER_EXPORT), QStringList{"after.rs"})
        << "the hooks come from the new folder too";
    EXPECT_EQ(log.count(LOG_ERROR, "Could not find default action menu"), 1);
}

TEST_F(EditorStartupTest, AConfiguredFolderThatCannotBeEnteredAlsoOpensTheOptions)
{
    copyProjectConfig(QDir(start).filePath("config"));
    showWindow();
    EditorStart editor;
    editor.folder.source = WorkingFolder::Source::Configured;
    editor.folder.configured = editor.folder.failed = dir.filePath("gone");
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), dir.filePath("gone"));
    OptionsSeen seen;
    // The user leaves the field as it is: nothing changes.
    answerOptionsDialog(QString(), &seen);
    LogCapture log;
    EXPECT_TRUE(startEditor(*window, editor));
    EXPECT_TRUE(log.has(LOG_ERROR, "Could not set current working directory to " + dir.filePath("gone")));
    ASSERT_TRUE(GuiTesting::waitFor([&] { return seen.seen && !QApplication::activeModalWidget(); }, 15000));
    EXPECT_EQ(seen.focused, "pref_workspace_workingdirectory");
    EXPECT_EQ(QDir::currentPath(), QDir(start).canonicalPath());
    EXPECT_EQ(openAppSettings()->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString(), dir.filePath("gone"));
}

// The real program under the test's display: a bare scene file opens the editor with it.
TEST_F(EditorStartupTest, PlaxWithAFileStartsTheEditorOnIt)
{
    copyProjectConfig(QDir(start).filePath("config"));
    const QString scene = GuiTesting::copyExample(dir, "opened.plax");
    // Qt's offscreen platform cannot show the editor's OpenGL views.
    ASSERT_FALSE(qEnvironmentVariableIsEmpty("DISPLAY")) << "needs the X server that xvfb-run starts";
    QProcess plax;
    plax.setWorkingDirectory(start);
    plax.start(QStringLiteral(PLAX_BINARY), {scene});
    ASSERT_TRUE(plax.waitForStarted());
    const QString logFile = QDir(start).filePath("plax.log");
    QString log;
    const bool opened = GuiTesting::waitFor(
        [&] {
            QFile file(logFile);
            log = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
            return log.contains("Opened '" + scene + "'") || plax.state() == QProcess::NotRunning;
        },
        60000);
    const bool stillRunning = plax.state() == QProcess::Running;
    plax.terminate();
    if (!plax.waitForFinished(10000)) {
        plax.kill();
        plax.waitForFinished();
    }
    EXPECT_TRUE(opened && stillRunning) << log.toStdString() << plax.readAllStandardError().toStdString();
    EXPECT_TRUE(log.contains("Started P.L.A.X 1.8.0 - hello!"));
    EXPECT_FALSE(log.contains("No input file given."));
    EXPECT_FALSE(log.contains("Could not find default action menu"));
}
