// Scripts in the main window: the Actions menu read from config/ under the
// working directory, the script editor and library docks, the output panel,
// about, tips at start-up and feedback.
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "app/appdialogs.h"
#include "app/scripttooling.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "engine/scriptbackground.h"
#include "model/metaworld.h"
#include "panels/aboutdialog.h"
#include "panels/customactionmenus.h"
#include "panels/preferencesdialog.h"
#include "panels/scripteditor.h"
#include "panels/scripteditorpanel.h"
#include "panels/scriptlibrary.h"
#include "panels/scriptquerydialogs.h"
#include "panels/tipsdialog.h"
#include "support/guitesting.h"
#include "support/logcapture.h"
#include "support/testfiles.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
class UrlCatcher : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void open(const QUrl& url) { urls.append(url); }
};

class ScriptToolingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        openAppSettings()->setValue(ScriptLibrary::kFolderKey, dir.filePath("library"));
        previousDirectory = QDir::currentPath();
        // The program looks for config/ in its working directory.
        QDir().mkpath(dir.filePath("config/actionMenu/mine"));
        QDir().mkpath(dir.filePath("library"));
        writeFile(dir, "config/actionMenu/mine/layout.json",
                  R"({"children":[{"type":"menu","name":"Moves","children":[
                      {"type":"action","name":"Raise","file":"raise.rs","desc":"Raise the selected bodies","minBodies":1}]}]})");
        writeFile(dir, "config/actionMenu/mine/raise.rs",
                  "body[]@ b = sb();\nfor (uint i = 0; i < b.length(); i++) b[i].setPosition(b[i].pos.x, b[i].pos.y + 2);\n");
        ASSERT_TRUE(QDir::setCurrent(dir.path()));
        window = std::make_unique<MainWindow>();
        window->resize(1200, 850);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        tooling = window->scriptTooling();
        dialogs = window->appDialogs();
        ASSERT_NE(tooling, nullptr);
        ASSERT_NE(dialogs, nullptr);
    }

    void TearDown() override
    {
        window.reset();
        QDir::setCurrent(previousDirectory);
        openAppSettings()->clear();
    }

    EditorDocument* openExample()
    {
        window->workspace()->openFile(copyExample(dir));
        return window->workspace()->activeDocument();
    }

    QTemporaryDir dir;
    QString previousDirectory;
    std::unique_ptr<MainWindow> window;
    ScriptTooling* tooling = nullptr;
    AppDialogs* dialogs = nullptr;
};

QMenu* menuBarMenu(MainWindow& window, const QString& objectName)
{
    for (QAction* action : window.menuBar()->actions())
        if (action->menu() && action->menu()->objectName() == objectName)
            return action->menu();
    return nullptr;
}
} // namespace

TEST_F(ScriptToolingTest, EveryNewActionAndDockHasNamesAndShortcutsWhereExpected)
{
    for (const char* name : {"ScriptEditorDock", "ScriptLibraryDock", "HelpDock", "CustomPropertiesDock",
                             "CollisionFilterDock", "ExportedPropertiesDock"}) {
        auto* dock = window->findChild<QDockWidget*>(name);
        ASSERT_NE(dock, nullptr) << name;
        EXPECT_FALSE(dock->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(dock->toggleViewAction()->shortcut().isEmpty()) << name;
        EXPECT_FALSE(dock->widget()->objectName().isEmpty()) << name;
        EXPECT_FALSE(dock->widget()->accessibleName().isEmpty()) << name;
    }
    EXPECT_TRUE(window->findChild<QDockWidget*>("HelpDock")->windowTitle().startsWith("P.L.A.X help (F1)"));
    for (const char* name : {"actionRunScript", "actionRunSelection", "actionAbortScript", "actionCompileScript",
                             "actionPreferences", "actionHelp", "actionTips", "actionCheckForUpdates", "actionFeedback",
                             "actionScriptNew", "actionScriptOpen", "actionScriptSave", "actionScriptSaveAs"}) {
        QAction* action = window->action(name);
        ASSERT_NE(action, nullptr) << name;
        EXPECT_FALSE(action->text().isEmpty()) << name;
        EXPECT_FALSE(action->toolTip().isEmpty()) << name;
    }
    EXPECT_EQ(window->action("actionRunScript")->shortcut(), QKeySequence(Qt::Key_F5));
    EXPECT_EQ(window->action("actionAbortScript")->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_F5));
    EXPECT_EQ(window->action("actionPreferences")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    QMenu* custom = menuBarMenu(*window, "CustomMenu");
    ASSERT_NE(custom, nullptr);
    EXPECT_EQ(custom->title(), "&Actions");
}

TEST_F(ScriptToolingTest, ActionsMenuRunsTheChosenActionAsOneUndoStep)
{
    EditorDocument* document = openExample();
    ASSERT_NE(document, nullptr);
    QMenu* custom = menuBarMenu(*window, "CustomMenu");
    ASSERT_NE(custom, nullptr);

    emit custom->aboutToShow();
    QMenu* moves = custom->findChild<QMenu*>("customMenu_Moves");
    ASSERT_NE(moves, nullptr);
    ASSERT_EQ(moves->actions().size(), 1);
    QAction* raise = moves->actions().first();
    EXPECT_EQ(raise->text(), "Raise");
    EXPECT_EQ(raise->toolTip(), "Raise the selected bodies");
    EXPECT_FALSE(raise->isEnabled()) << "nothing selected";

    MetaBody* body = document->world().bodies().front().get();
    SelectionEdits::setSelected(*document, ItemKind::Body, {body->id()}, true);
    emit custom->aboutToShow();
    ASSERT_TRUE(raise->isEnabled());

    const float y = body->position.y;
    const int count = document->undoStack().count();
    QStringList statuses;
    QObject::connect(window->statusBar(), &QStatusBar::messageChanged,
                     [&statuses](const QString& text) { statuses.append(text); });
    raise->trigger();
    EXPECT_FLOAT_EQ(body->position.y, y + 2);
    EXPECT_EQ(document->undoStack().count(), count + 1);
    EXPECT_TRUE(statuses.contains("Running script..."));
    window->action("actionUndo")->trigger();
    EXPECT_FLOAT_EQ(body->position.y, y);

    // The editor view's right-click menu is filled by the same function.
    QMenu context;
    buildCustomMenu(&context);
    ASSERT_EQ(context.actions().size(), 1);
    EXPECT_EQ(context.actions().first()->text(), "Moves");
}

TEST_F(ScriptToolingTest, LibraryFileIsTheLiveScriptAndPrintsGoToTheOutputPanel)
{
    EditorDocument* document = openExample();
    ASSERT_NE(document, nullptr);
    const QString file = writeFile(dir, "library/turn.rs", "getBody('ball').setAngle(0.75);\nprint('turned the ball');\n");
    ScriptLibrary* library = tooling->scriptLibrary();
    library->refresh();
    ASSERT_TRUE(library->openFile(file));
    EXPECT_EQ(tooling->scriptEditor()->editor()->text(), "getBody('ball').setAngle(0.75);\nprint('turned the ball');\n");

    tooling->scriptEditor()->editor()->append("print('edited in the editor');\n");
    window->findChild<QDockWidget*>("MessageLogDock")->raise();
    EXPECT_TRUE(waitFor([&] { return window->findChild<QDockWidget*>("ScriptDock")->visibleRegion().isEmpty(); }))
        << "behind the message log";
    window->activateWindow();
    window->action("actionRunScript")->trigger();
    const MetaBody* ball = static_cast<const MetaBody*>(document->world().registry(ItemKind::Body).findByName("ball"));
    ASSERT_NE(ball, nullptr);
    EXPECT_FLOAT_EQ(ball->angle, 0.75f);
    auto* output = window->findChild<QPlainTextEdit*>("ScriptOutput");
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(waitFor([output] { return output->toPlainText().contains("edited in the editor"); }))
        << output->toPlainText().toStdString();
    EXPECT_TRUE(output->toPlainText().contains("turned the ball"));
    auto* outputDock = window->findChild<QDockWidget*>("ScriptDock");
    ASSERT_NE(outputDock, nullptr);
    EXPECT_TRUE(waitFor([outputDock] { return !outputDock->visibleRegion().isEmpty(); }))
        << "after a run the output comes to the front of its tab group";
    EXPECT_TRUE(TestFiles::readText(file).contains("edited in the editor")) << "running saves the library file first";

    // A compile error of the live script is reported in the output panel.
    tooling->scriptEditor()->editor()->setText("print('x');\nint y = ;\n");
    EXPECT_FALSE(tooling->scriptEditor()->runWhole());
    EXPECT_TRUE(waitFor([output] { return output->toPlainText().contains("Line 2, col"); }))
        << output->toPlainText().toStdString();
    EXPECT_FALSE(output->toPlainText().contains("Compiling void main")) << "the engine's note stays in the log";
}

TEST_F(ScriptToolingTest, AboutShowsTheLibrariesAndFeedbackOpensTheIssuePage)
{
    QString aboutText;
    handleNextDialog<AboutDialog>([&aboutText](AboutDialog* dialog) {
        aboutText = dialog->findChild<QWidget*>("AboutText")->property("text").toString();
        dialog->reject();
    });
    window->action("actionAbout")->trigger();
    EXPECT_TRUE(aboutText.contains("QScintilla")) << aboutText.toStdString();

    UrlCatcher catcher;
    QDesktopServices::setUrlHandler("https", &catcher, "open");
    openAppSettings()->setValue(PreferenceKeys::kIssuePage, "https://issues.invalid/plax/issues");
    window->action("actionFeedback")->trigger();
    QDesktopServices::unsetUrlHandler("https");
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_EQ(catcher.urls.first(), QUrl("https://issues.invalid/plax/issues"));
}

TEST_F(ScriptToolingTest, TipsShowBesideTheWindowWithoutBlockingItOrTakingTheFirstKey)
{
    EditorDocument* document = openExample();
    ASSERT_NE(document, nullptr);
    auto* view = qobject_cast<EditorView*>(window->workspace()->activeView());
    ASSERT_NE(view, nullptr);
    window->activateWindow();
    view->setFocus();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == window->windowHandle(); }));

    // Every window the keyboard goes to from now on.
    std::vector<QWindow*> focused;
    const QMetaObject::Connection watch = QObject::connect(
        qApp, &QGuiApplication::focusWindowChanged, [&](QWindow* w) { focused.push_back(w); });
    dialogs->startUp();
    ASSERT_TRUE(waitFor([&] { return dialogs->tipsWindow() && dialogs->tipsWindow()->isVisible(); }));
    TipsDialog* tips = dialogs->tipsWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tips));
    EXPECT_FALSE(tips->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the menus and views stay usable";
    // A window activated after the tips were shown gets the keyboard after
    // any activation of the tips would have: once it has it, the record
    // tells whether the tips ever had it.
    QWidget probe;
    probe.resize(40, 30);
    probe.show();
    probe.activateWindow();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == probe.windowHandle(); }));
    QObject::disconnect(watch);
    EXPECT_EQ(std::count(focused.begin(), focused.end(), tips->windowHandle()), 0) << "the tips took the keyboard";
    probe.close();
    window->activateWindow();
    view->setFocus();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == window->windowHandle(); }));
    // The first key typed goes where it goes without tips: F picks the fixtures mode.
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_F);
    EXPECT_EQ(view->editMode(), EditMode::Fixtures);
    EXPECT_TRUE(tips->isVisible()) << "typing in the editor leaves the tips open";

    const int first = tips->currentTip();
    QTest::mouseClick(tips->findChild<QPushButton*>("TipNext"), Qt::LeftButton);
    EXPECT_NE(tips->currentTip(), first);
    tips->close();
    EXPECT_TRUE(waitFor([&] { return dialogs->tipsWindow() == nullptr; })) << "a closed tip window goes";

    // Asked for from the Help menu they come (without blocking either).
    window->action("actionTips")->trigger();
    ASSERT_NE(dialogs->tipsWindow(), nullptr);
    EXPECT_TRUE(dialogs->tipsWindow()->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    dialogs->tipsWindow()->close();
    ASSERT_TRUE(waitFor([&] { return dialogs->tipsWindow() == nullptr; }));

    // Turned off, start-up shows none.
    openAppSettings()->setValue(TipsDialog::kShowAtStartupKey, false);
    dialogs->startUp();
    deliverPostedEvents(); // the tips would come with the events start-up posts
    EXPECT_EQ(dialogs->tipsWindow(), nullptr);
}

TEST_F(ScriptToolingTest, ScriptQuestionsOpenDialogsOnTheInterfaceThread)
{
    EditorDocument* document = openExample();
    ASSERT_NE(document, nullptr);
    const MetaBody* ball = static_cast<const MetaBody*>(document->world().registry(ItemKind::Body).findByName("ball"));
    ASSERT_NE(ball, nullptr);
    QString prompt;
    handleNextDialog<ScriptQueryNumericValueDialog>([&prompt](ScriptQueryNumericValueDialog* dialog) {
        prompt = dialog->findChild<QWidget*>("ScriptQueryPrompt")->property("text").toString();
        EXPECT_DOUBLE_EQ(dialog->field()->value(), 2);
        dialog->field()->setValue(0.5);
        dialog->accept();
    });
    ASSERT_TRUE(ScriptBackground::runOneOffScript(*document, "getBody('ball').setAngle(queryNumericValue('How far?', 2));",
                                                  "ask"));
    EXPECT_EQ(prompt, "How far?");
    EXPECT_FLOAT_EQ(ball->angle, 0.5f);

    handleNextDialog<ScriptQueryYesNoDialog>([](ScriptQueryYesNoDialog* dialog) { dialog->reject(); });
    ASSERT_TRUE(ScriptBackground::runOneOffScript(*document, "if (!queryYesNo('Turn?')) getBody('ball').setAngle(1.5);",
                                                  "ask"));
    EXPECT_FLOAT_EQ(ball->angle, 1.5f) << "No answers false";
}

#include "scripttooling_test.moc"
