#include "app/startup.h"

#include "app/batchtool.h"
#include "app/lastchance.h"
#include "app/mainwindow.h"
#include "app/scripttooling.h"
#include "base/log.h"
#include "base/settings.h"
#include "base/version.h"
#include "script/scriptapi.h"

#include <angelscript.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QStatusBar>
#include <QThread>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <set>

namespace
{
// Qt's own command-line options that QApplication consumes, with whether they take a value.
bool isQtGuiOption(const char* arg, bool* takesValue)
{
    static const std::set<std::string> withValue = {"-platform", "-platformpluginpath", "-platformtheme", "-plugin",
                                                    "-qwindowgeometry", "-qwindowtitle", "-qwindowicon", "-style",
                                                    "-stylesheet", "-display", "-geometry", "-session"};
    static const std::set<std::string> alone = {"-reverse", "-widgetcount", "-nograb", "-dograb", "-sync"};
    *takesValue = withValue.count(arg) != 0;
    return *takesValue || alone.count(arg) != 0;
}

// Any argument selects batch mode, except the options Qt's GUI takes for itself.
bool wantsBatchMode(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        bool takesValue = false;
        if (!isQtGuiOption(argv[i], &takesValue))
            return true;
        if (takesValue)
            ++i;
    }
    return false;
}

// Whether a platform for windows is available (an explicit platform choice counts).
bool hasDisplay(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "-platform")
            return true;
    }
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

struct WorkingDirectory
{
    QString configured;
    bool changed = false;
};

WorkingDirectory applyWorkingDirectory()
{
    WorkingDirectory wd;
    wd.configured = openAppSettings()->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString();
    if (!wd.configured.isEmpty())
        wd.changed = QDir::setCurrent(wd.configured);
    return wd;
}

void reportWorkingDirectory(const WorkingDirectory& wd)
{
    if (wd.configured.isEmpty()) {
        plaxLog(LOG_DEBUG, QStringLiteral("Current working directory is %1").arg(QDir::currentPath()));
    } else if (!wd.changed) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not set current working directory to %1").arg(wd.configured));
        plaxLog(LOG_WARNING, QStringLiteral("Current working directory remains as %1").arg(QDir::currentPath()));
    } else {
        plaxLog(LOG_INFO, QStringLiteral("Set current working directory to %1").arg(QDir::currentPath()));
    }
}

int runGui(QApplication& app, int argc, char* argv[], const WorkingDirectory& wd)
{
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

    plaxLog(LOG_INFO, "Started P.L.A.X %d.%d.%d - hello!", Version::kMajor, Version::kMinor, Version::kPatch);
    plaxLog(LOG_DEBUG, "Using Box2D %s", Version::box2dVersion());
    plaxLog(LOG_DEBUG, "Using Angelscript %s", ANGELSCRIPT_VERSION_STRING);
    if (argc > 1) {
        plaxLog(LOG_INFO, "Starting with parameters:");
        for (int i = 1; i < argc; ++i)
            plaxLog(LOG_INFO, " %s", argv[i]);
    }
    reportWorkingDirectory(wd);

    if (!QFileInfo::exists(QStringLiteral("config/actionMenu/default/layout.json"))) {
        plaxLog(LOG_ERROR, "Could not find default action menu (config/actionMenu/default/layout.json) - is the "
                           "current working directory set correctly? See the 'Environment' section of the Workspace "
                           "tab in the options dialog.");
    }

    QString formats;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        formats += QStringLiteral(" %1").arg(QString::fromLatin1(format));
    plaxLog(LOG_DEBUG, QStringLiteral("Supported image formats:%1").arg(formats));

    // A first engine registers the whole script API once, so a broken
    // registration shows at start-up rather than with the first document.
    {
        AngelScript::asIScriptEngine* engine = AngelScript::asCreateScriptEngine(ANGELSCRIPT_VERSION);
        if (engine) {
            registerScriptApi(engine);
            engine->ShutDownAndRelease();
        } else {
            plaxLog(LOG_FATAL, "Failed to initialize script engine!");
        }
    }
    window.statusBar()->showMessage(QObject::tr("Ready"));
    window.openStartupDocuments();
    if (ScriptTooling* tooling = ScriptTooling::of(&window))
        tooling->startUp();
    if (Version::kTrial)
        plaxLog(LOG_INFO, "This is the trial version of P.L.A.X - some features are not available.");

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
        if (wantsBatchMode(argc, argv)) {
            QCoreApplication app(argc, argv);
            const WorkingDirectory wd = applyWorkingDirectory();
            (void)wd;
            Log::setThreshold(LOG_WARNING);
            result = runBatchTool(QCoreApplication::arguments());
        } else if (!hasDisplay(argc, argv)) {
            const char* message = "No display found: the editor needs a window system. Give arguments to run the "
                                  "batch tool, for example: plax --help -v";
            plaxLog(LOG_ERROR, "%s", message);
            std::fprintf(stderr, "%s\n", message);
            result = 1;
        } else {
            QApplication app(argc, argv);
            const WorkingDirectory wd = applyWorkingDirectory();
            QThread::currentThread()->setObjectName(QStringLiteral("GUI thread"));
            result = runGui(app, argc, argv, wd);
        }
    } catch (const std::exception& e) {
        lastChanceExit(e.what());
    } catch (...) {
        lastChanceExit(nullptr);
    }
    Log::finish();
    return result;
}
