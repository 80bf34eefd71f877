#pragma once

#include "app/mainwindow.h"
#include "base/settings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

/// Tests that drive the real main window: fresh settings, a temporary
/// folder, and the window shown at 1100 x 800 before each test.
class MainWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        window = std::make_unique<MainWindow>();
        window->resize(1100, 800);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    QTemporaryDir dir;
    std::unique_ptr<MainWindow> window;
};
