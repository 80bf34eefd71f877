#include "app/mainwindow.h"
#include "base/log.h"
#include "base/settings.h"

#include <gtest/gtest.h>

#include <QDockWidget>
#include <QMdiArea>
#include <QtTest/QTest>

TEST(MainWindow, OpensWithTitleAndClosesSavingItsGeometry)
{
    openAppSettings()->remove(QStringLiteral("mainwindow"));
    {
        MainWindow window;
        window.resize(640, 480);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_EQ(window.windowTitle(), "P.L.A.X");
        EXPECT_NE(window.mdiArea(), nullptr);
        EXPECT_NE(window.findChild<QDockWidget*>("MessageLogDock"), nullptr);
        EXPECT_TRUE(window.close());
    }
    auto settings = openAppSettings();
    EXPECT_EQ(settings->value("mainwindow/size").toSize(), QSize(640, 480));
    EXPECT_FALSE(settings->value("mainwindow/geometry").toByteArray().isEmpty());

    MainWindow restored;
    EXPECT_EQ(restored.size(), QSize(640, 480)) << "geometry is restored at start";
}

TEST(MainWindow, LogPanelShowsMessagesWithLabels)
{
    MainWindow window;
    window.appendLogMessage(LOG_ERROR, "Something failed");
    window.appendLogMessage(LOG_INFO, "All fine");
    EXPECT_TRUE(window.logText().contains("[* ERROR  ]: Something failed"));
    EXPECT_TRUE(window.logText().contains("[  INFO   ]: All fine"));
}
