// Test entry point: a core application object exists for the whole run, so
// settings, plug-ins and translations behave as in the program. Settings and
// other per-user files go to a temporary folder of this run.
#include "support/tempsettings.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    TemporarySettingsHome home;
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
