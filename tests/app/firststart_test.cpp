// What a new user meets: the window over most of the screen with the scene
// view its largest part, the docks in their standard places (and back there
// with View > Reset layout), a message log that speaks to users, and
// toolbars of icons whose tooltips name the shortcuts.
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "base/log.h"
#include "base/settings.h"
#include "panels/messagelogpanel.h"
#include "support/guitesting.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QMdiArea>
#include <QScreen>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QtTest/QTest>

#include <map>

using namespace GuiTesting;

namespace
{
// A main window as a first start makes it: no saved settings, no resizing.
class FirstStartTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        window = std::make_unique<MainWindow>();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        // The docks take their sizes once the window has its own.
        ASSERT_TRUE(waitFor([this] { return dock("MessageLogDock")->height() <= window->height() / 4; }));
    }
    void TearDown() override
    {
        window.reset();
        openAppSettings()->clear();
    }

    QDockWidget* dock(const char* name) const { return window->findChild<QDockWidget*>(name); }
    // Where each dock shows (nowhere when closed or a tab behind another)
    // and whether it is open.
    std::map<QString, std::pair<QRect, bool>> dockPlaces() const
    {
        std::map<QString, std::pair<QRect, bool>> places;
        for (QDockWidget* d : window->findChildren<QDockWidget*>()) {
            const bool showing = d->isVisible() && !d->visibleRegion().isEmpty();
            places[d->objectName()] = {showing ? d->geometry() : QRect(), d->toggleViewAction()->isChecked()};
        }
        return places;
    }
    static double area(const QSize& size) { return double(size.width()) * size.height(); }

    QTemporaryDir dir;
    std::unique_ptr<MainWindow> window;
};

bool sameRect(const QRect& a, const QRect& b, int slack = 3)
{
    return std::abs(a.left() - b.left()) <= slack && std::abs(a.top() - b.top()) <= slack &&
           std::abs(a.width() - b.width()) <= slack && std::abs(a.height() - b.height()) <= slack;
}
} // namespace

TEST_F(FirstStartTest, TheSceneViewIsTheLargestPartOfAWindowOverMostOfTheScreen)
{
    const QRect screen = window->screen()->availableGeometry();
    EXPECT_GE(window->width(), screen.width() * 85 / 100);
    EXPECT_GE(window->height(), screen.height() * 85 / 100);
    EXPECT_TRUE(screen.contains(window->geometry())) << "the window fits on the screen";

    EditorView* view = window->workspace()->openFile(copyExample(dir));
    ASSERT_NE(view, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view));
    EXPECT_TRUE(waitFor([&] { return area(view->size()) >= 0.5 * area(window->size()); }))
        << "scene view " << view->width() << " x " << view->height() << " in " << window->width() << " x "
        << window->height();
    for (QDockWidget* d : window->findChildren<QDockWidget*>()) {
        if (d->isVisible() && !d->isFloating()) {
            EXPECT_LT(area(d->size()), area(view->size())) << d->objectName().toStdString();
        }
    }
}

TEST_F(FirstStartTest, DocksStandWhereQtEditorsPutThemAndResetLayoutPutsThemBack)
{
    QDockWidget* items = dock("ItemsDock");
    QDockWidget* properties = dock("PropertiesDock");
    QDockWidget* log = dock("MessageLogDock");
    QDockWidget* output = dock("ScriptDock");
    ASSERT_TRUE(items && properties && log && output);

    // Items over properties on one side.
    EXPECT_TRUE(items->isVisible());
    EXPECT_TRUE(properties->isVisible());
    EXPECT_EQ(window->dockWidgetArea(items), window->dockWidgetArea(properties));
    EXPECT_EQ(window->dockWidgetArea(items), Qt::RightDockWidgetArea);
    EXPECT_LT(items->geometry().bottom(), properties->geometry().top());
    EXPECT_GT(items->x(), window->mdiArea()->geometry().right());
    // The log and the script output tabbed at the bottom, the log in front.
    EXPECT_EQ(window->dockWidgetArea(log), Qt::BottomDockWidgetArea);
    EXPECT_TRUE(window->tabifiedDockWidgets(log).contains(output));
    EXPECT_TRUE(log->isVisible());
    EXPECT_TRUE(output->toggleViewAction()->isChecked());
    EXPECT_GT(log->y(), window->mdiArea()->geometry().bottom());
    // The undo stack waits as a tab behind the items.
    EXPECT_TRUE(window->tabifiedDockWidgets(items).contains(dock("UndoDock")));

    // The script editor and library are closed, one keypress away.
    QDockWidget* editor = dock("ScriptEditorDock");
    QDockWidget* library = dock("ScriptLibraryDock");
    ASSERT_TRUE(editor && library);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_FALSE(library->isVisible());
    for (const char* name : {"HelpDock", "CustomPropertiesDock", "CollisionFilterDock", "ExportedPropertiesDock"})
        EXPECT_FALSE(dock(name)->isVisible()) << name;
    const auto initial = dockPlaces();
    window->activateWindow();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == window->windowHandle(); }));
    QTest::keyClick(window->windowHandle(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(window->dockWidgetArea(editor), Qt::BottomDockWidgetArea) << "beside the output it writes";
    QTest::keyClick(window->windowHandle(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(library->isVisible());

    // Moved about, floated, closed: Reset layout brings the first arrangement back.
    items->setFloating(true);
    properties->close();
    window->addDockWidget(Qt::LeftDockWidgetArea, log);
    window->findChild<QToolBar*>("EditModesToolBar")->hide();
    QAction* reset = window->action("actionResetLayout");
    ASSERT_NE(reset, nullptr);
    reset->trigger();
    ASSERT_TRUE(waitFor([&] {
        const auto now = dockPlaces();
        return now.at("ItemsDock") == initial.at("ItemsDock") && now.at("MessageLogDock") == initial.at("MessageLogDock");
    })) << "items and log back in place";
    const auto now = dockPlaces();
    for (const auto& [name, place] : initial) {
        EXPECT_EQ(now.at(name).second, place.second) << name.toStdString() << " open or closed as at first";
        EXPECT_TRUE(sameRect(now.at(name).first, place.first)) << name.toStdString();
    }
    EXPECT_TRUE(window->findChild<QToolBar*>("EditModesToolBar")->isVisible());
}

TEST_F(FirstStartTest, ToolbarsShowIconsWhoseTooltipsNameTheShortcutAndTheModesAreCheckable)
{
    for (const char* name : {"FileToolBar", "EditModesToolBar", "PlayerToolBar"}) {
        auto* bar = window->findChild<QToolBar*>(name);
        ASSERT_NE(bar, nullptr) << name;
        EXPECT_EQ(bar->toolButtonStyle(), Qt::ToolButtonIconOnly) << name;
        for (QAction* action : bar->actions()) {
            if (action->isSeparator())
                continue;
            const std::string what = std::string(name) + " " + action->objectName().toStdString();
            EXPECT_FALSE(action->icon().isNull()) << what;
            EXPECT_FALSE(action->icon().pixmap(24, 24).isNull()) << what;
            EXPECT_FALSE(action->toolTip().isEmpty()) << what;
            if (!action->shortcut().isEmpty()) {
                EXPECT_TRUE(action->toolTip().endsWith(
                    QStringLiteral("(%1)").arg(action->shortcut().toString(QKeySequence::NativeText))))
                    << what << ": " << action->toolTip().toStdString();
            }
        }
    }
    EXPECT_EQ(window->action("actionSave")->toolTip(), "Save the scene of the active view (Ctrl+S)");
    QAction* fixtures = window->action("actionFixturesMode");
    ASSERT_NE(fixtures, nullptr);
    EXPECT_TRUE(fixtures->toolTip().endsWith("(F)")) << fixtures->toolTip().toStdString();

    // The modes are checkable buttons, one checked at a time, following the view.
    EditorView* view = window->workspace()->openFile(copyExample(dir));
    ASSERT_NE(view, nullptr);
    auto* modes = window->findChild<QToolBar*>("EditModesToolBar");
    auto* button = qobject_cast<QToolButton*>(modes->widgetForAction(fixtures));
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isCheckable());
    EXPECT_FALSE(button->isChecked());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(view->editMode(), EditMode::Fixtures);
    EXPECT_FALSE(qobject_cast<QToolButton*>(modes->widgetForAction(window->action("actionBodiesMode")))->isChecked());
}

TEST_F(FirstStartTest, TheMessageLogShowsInformationAndAboveUnlessDebugLinesAreAskedFor)
{
    MessageLogPanel* panel = window->messageLog();
    ASSERT_NE(panel, nullptr);
    const QString logFile = dir.filePath("plax.log");
    Log::start(logFile);
    Log::setThreshold(LOG_DEBUG);
    plaxLog(LOG_DEBUG, "a developer's detail");
    plaxLog(LOG_INFO, "something a user reads");
    plaxLog(LOG_WARNING, "something a user heeds");
    ASSERT_TRUE(waitFor([&] { return panel->allText().contains("something a user heeds"); }));
    EXPECT_EQ(panel->minimumLevel(), LOG_INFO);
    EXPECT_TRUE(panel->shownText().contains("[  INFO   ]: something a user reads"));
    EXPECT_TRUE(panel->shownText().contains("something a user heeds"));
    EXPECT_FALSE(panel->shownText().contains("a developer's detail"));
    {
        QFile file(logFile);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.readAll().contains("[  DEBUG  ]: a developer's detail")) << "plax.log keeps the debug lines";
    }
    Log::finish();

    // The level box: debug lines logged before it was turned down show too.
    QComboBox* level = panel->levelBox();
    level->setCurrentIndex(level->findData(LOG_DEBUG));
    EXPECT_TRUE(panel->shownText().contains("[  DEBUG  ]: a developer's detail"));
    level->setCurrentIndex(level->findData(LOG_WARNING));
    EXPECT_FALSE(panel->shownText().contains("something a user reads"));
    EXPECT_TRUE(panel->shownText().contains("something a user heeds"));

    // The debug-output preference starts the log at DEBUG.
    openAppSettings()->setValue(SettingsKeys::kDebugOutput, true);
    MessageLogPanel developers;
    EXPECT_EQ(developers.minimumLevel(), LOG_DEBUG);
    EXPECT_EQ(level->currentData().toInt(), LOG_WARNING) << "the open window keeps the level chosen";
    panel->followPreferences();
    EXPECT_EQ(panel->minimumLevel(), LOG_DEBUG) << "until the preference changes";
}
