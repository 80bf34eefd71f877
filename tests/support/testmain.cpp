// Test entry point: a core application object exists for the whole run, so
// settings, plug-ins and translations behave as in the program.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QStandardPaths>

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
