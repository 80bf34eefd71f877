// Entry point of interface tests: a widget application on the offscreen
// platform, with settings and other per-user files in a temporary folder.
#include "support/tempsettings.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TemporarySettingsHome home;
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
