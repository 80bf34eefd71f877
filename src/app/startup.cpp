#include "app/startup.h"

#include "app/batchtool.h"
#include "app/editorstartup.h"
#include "app/lastchance.h"
#include "app/launchmode.h"
#include "app/mainwindow.h"
#include "app/workingfolder.h"
#include "base/buildinfo.h"
#include "base/log.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QThread>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>

namespace
{
// Whether a platform for windows is available (an explicit platform choice counts).
bool hasDisplay(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "-platform") == 0)
            return true;
    }
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The installed default configuration, found from the program's own folder
// (so an installation can be moved, or unpacked under DESTDIR, and still finds it).
QString findInstalledConfig()
{
    return installedConfigFolder(QCoreApplication::applicationDirPath(), QStringLiteral(PLAX_DATA_FROM_BINARY));
}

QIcon applicationIcon()
{
    QIcon icon;
    for (int size : {32, 64, 128, 256})
        icon.addFile(QStringLiteral(":/appicons/%1/org.quoxel2d.plax.png").arg(size), QSize(size, size));
    return icon;
}

int runGui(QApplication& app, const LaunchMode& mode)
{
    EditorStart start;
    start.installedConfig = findInstalledConfig();
    start.folder = prepareEditorWorkingFolder(start.installedConfig);
    start.files = mode.files;
    start.arguments = QCoreApplication::arguments().mid(1);
    QThread::currentThread()->setObjectName(QStringLiteral("GUI thread"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quoxel2d.plax"));
    QApplication::setWindowIcon(applicationIcon());

    plaxLog(LOG_DEBUG, QStringLiteral("Application dir path: %1").arg(QCoreApplication::applicationDirPath()));
    // Plug-ins shipped beside the program come first; the system's Qt plug-ins
    // (image formats among them) stay available after them.
    QCoreApplication::addLibraryPath(QDir(QCoreApplication::applicationDirPath()).absoluteFilePath("lib"));
    for (const QString& path : QCoreApplication::libraryPaths())
        plaxLog(LOG_DEBUG, QStringLiteral("Amended library path: %1").arg(path));

    QTranslator translator;
    if (translator.load(QStringLiteral("plax_jp")))
        QCoreApplication::installTranslator(&translator);

    // The main window shows the log in its panel and the core's messages as boxes.
    MainWindow window;
    window.show();
    startEditor(window, start);

    const int result = app.exec();
    plaxLog(LOG_INFO, "Exiting PLAX - goodbye!");
    return result;
}
} // namespace

int runPlax(int argc, char* argv[])
{
    Log::start();
    Log::setThreshold(LOG_DEBUG);
    installLastChanceHandler();

    std::srand(unsigned(std::time(nullptr)));
    for (int i = 0; i < 4; ++i)
        (void)std::rand();

    int result = 0;
    try {
        QCoreApplication::setAttribute(static_cast<Qt::ApplicationAttribute>(10));
        const LaunchMode mode = chooseLaunchMode(argc, argv);
        if (mode.kind == LaunchMode::Kind::Batch) {
            QCoreApplication app(argc, argv);
            applyConfiguredWorkingFolder();
            Log::setThreshold(LOG_WARNING);
            result = runBatchTool(QCoreApplication::arguments());
        } else if (!hasDisplay(argc, argv)) {
            const char* message = "No display found: the editor needs a window system. Give arguments to run the "
                                  "batch tool, for example: plax --help";
            plaxLog(LOG_ERROR, "%s", message);
            std::fprintf(stderr, "%s\n", message);
            result = 1;
        } else {
            QApplication app(argc, argv);
            result = runGui(app, mode);
        }
    } catch (const std::exception& e) {
        lastChanceExit(e.what());
    } catch (...) {
        lastChanceExit(nullptr);
    }
    Log::finish();
    return result;
}
