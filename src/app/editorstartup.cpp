#include "app/editorstartup.h"

#include "app/mainwindow.h"
#include "app/scripttooling.h"
#include "base/log.h"
#include "base/settings.h"
#include "base/version.h"
#include "panels/customactionmenus.h"
#include "panels/scriptlibrary.h"
#include "script/scriptapi.h"
#include "script/scripthooksmanager.h"

#include <angelscript.h>

#include <QFileInfo>
#include <QImageReader>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>

namespace
{
bool defaultActionMenuFound()
{
    if (QFileInfo::exists(QLatin1String(kDefaultActionMenuLayout)))
        return true;
    plaxLog(LOG_ERROR, "Could not find default action menu (config/actionMenu/default/layout.json) - is the "
                       "current working directory set correctly? See the 'Environment' section of the Workspace "
                       "tab in the options dialog.");
    return false;
}

// A first engine registers the whole script API once, so a broken
// registration shows at start-up rather than with the first document.
void checkScriptApi()
{
    AngelScript::asIScriptEngine* engine = AngelScript::asCreateScriptEngine(ANGELSCRIPT_VERSION);
    if (!engine) {
        plaxLog(LOG_FATAL, "Failed to initialize script engine!");
        return;
    }
    registerScriptApi(engine);
    engine->ShutDownAndRelease();
}

QString configuredWorkingDirectory()
{
    return openAppSettings()->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString().trimmed();
}
} // namespace

bool startEditor(MainWindow& window, const EditorStart& start)
{
    plaxLog(LOG_INFO, "Started P.L.A.X %d.%d.%d - hello!", Version::kMajor, Version::kMinor, Version::kPatch);
    plaxLog(LOG_DEBUG, "Using Box2D %s", Version::box2dVersion());
    plaxLog(LOG_DEBUG, "Using Angelscript %s", ANGELSCRIPT_VERSION_STRING);
    if (!start.arguments.isEmpty()) {
        plaxLog(LOG_INFO, "Starting with parameters:");
        for (const QString& argument : start.arguments)
            plaxLog(LOG_INFO, QStringLiteral(" %1").arg(argument));
    }
    reportWorkingFolder(start.folder);
    const bool menuFound = defaultActionMenuFound();

    QString formats;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        formats += QStringLiteral(" %1").arg(QString::fromLatin1(format));
    plaxLog(LOG_DEBUG, QStringLiteral("Supported image formats:%1").arg(formats));

    checkScriptApi();
    window.statusBar()->showMessage(QObject::tr("Ready"));
    if (Version::kTrial)
        plaxLog(LOG_INFO, "This is the trial version of P.L.A.X - some features are not available.");
    window.openStartupDocuments(start.files);
    if (ScriptTooling* tooling = ScriptTooling::of(&window))
        tooling->startUp();

    if (menuFound && start.folder.failed.isEmpty())
        return false;
    // Queued after the tips, so the options dialog is the one on top.
    QPointer<MainWindow> target(&window);
    const QString installedConfig = start.installedConfig;
    QTimer::singleShot(0, &window, [target, installedConfig] {
        if (target)
            showWorkingDirectoryOptions(*target, installedConfig);
    });
    return true;
}

void showWorkingDirectoryOptions(MainWindow& window, const QString& installedConfig)
{
    ScriptTooling* tooling = ScriptTooling::of(&window);
    if (!tooling)
        return;
    const QString before = configuredWorkingDirectory();
    tooling->showWorkingDirectoryPreferences();
    const QString after = configuredWorkingDirectory();
    if (after.isEmpty() || after == before)
        return;
    const WorkingFolder folder = changeWorkingFolder(after, installedConfig);
    reportWorkingFolder(folder);
    if (!folder.changed)
        return;
    defaultActionMenuFound();
    tooling->customMenus()->loadCustomMenuActions();
    tooling->scriptLibrary()->refresh();
    if (ScriptHooksManager* hooks = ScriptHooksManager::instance())
        hooks->load();
}
