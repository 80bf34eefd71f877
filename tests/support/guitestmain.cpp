// Entry point of interface tests: a widget application. Under `make test` the
// tests run on a real X server (Xvfb) with Mesa's OpenGL; started by hand
// without a display they fall back to the offscreen platform. Settings and
// other per-user files live in a temporary folder, so parallel runs do not meet.
// A dialog nobody answers fails its test instead of blocking it.
#include "support/guitesting.h"
#include "support/tempsettings.h"

#include <gtest/gtest.h>

#include <QApplication>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    TemporarySettingsHome home;
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    GuiTesting::installDialogSafetyNet();
    const int result = RUN_ALL_TESTS();
#if defined(__SANITIZE_ADDRESS__)
    // Leaks are looked for now, while Qt's plug-ins and the libraries they
    // opened are still loaded: once the application object is gone they are
    // unloaded, and a leak inside them could no longer be named (nor
    // suppressed). This check replaces the one at exit.
    __lsan_do_leak_check();
#endif
    return GuiTesting::helpersLeftWaiting() ? 1 : result;
}
