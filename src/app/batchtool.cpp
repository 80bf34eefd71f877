#include "app/batchtool.h"

#include "base/flags.h"
#include "base/log.h"
#include "base/settings.h"
#include "base/version.h"
#include "document/editordocument.h"
#include "document/imagedata.h"
#include "editing/editswitches.h"
#include "engine/batchscript.h"
#include "engine/scriptexecution.h"
#include "hooks/scripthooksmanager.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "objects/documentexport.h"
#include "objects/instanceattach.h"
#include "objects/objectexpansion.h"
#include "objects/objectmanager.h"
#include "physics/worldbuild.h"

#include <angelscript.h>

#include <QFileInfo>

#include <cstdio>

namespace
{
const char* const kUsage =
    "Usage: plax -i INPUTFILE\n"
    "            [-s SCRIPTFILE]...\n"
    "            [-r RESAVEFILE] [-e EXPORTFILE] [-c SRCFILE]\n"
    "            [OPTION]...\n"
    "\n"
    "The file INPUTFILE will be opened and the script contained in SCRIPTFILE will be\n"
    "executed for the scene. The result can be exported to EXPORTFILE and/or resaved\n"
    "to RESAVEFILE.\n"
    "\n"
    "Miscellaneous:\n"
    "  -V, --version             print version information and exit\n"
    "      --help                display this help and exit\n"
    "\n"
    "Output control:\n"
    "  -q, --quiet               suppress all normal output\n"
    "  -v, --verbose             print debugging messages about progress\n"
    "\n"
    "File handling:\n"
    "  -i INPUTFILE              open a .plax or .json P.L.A.X scene file\n"
    "  -s SCRIPTFILE             execute a plaxscript (can appear multiple times)\n"
    "  -r RESAVEFILE             resave as .plax format\n"
    "  -e EXPORTFILE             export as .json format (raw info)\n"
    "  -c SRCFILE                export as .cpp format (C++ source code)\n"
    "\n"
    "If more than one script file parameter is given, scripts will be executed in their\n"
    "order of appearance in the argument list.\n"
    "\n"
    "Example: plax -i scene.plax -s script1.rs -s script2.rs -e rawinfo.json\n"
    "\n"
    "Without arguments, or with nothing but existing .plax and .json scene files,\n"
    "plax opens the editor (with those files).\n";

QStringList versionBlock()
{
    QStringList lines;
    lines << QStringLiteral("P.L.A.X editor %1.%2.%3").arg(Version::kMajor).arg(Version::kMinor).arg(Version::kPatch)
          << QStringLiteral("Built on %1").arg(QString::fromLatin1(Version::buildTimestamp()))
          << QStringLiteral("Using Box2D %1").arg(QString::fromLatin1(Version::box2dVersion()))
          << QStringLiteral("Using Angelscript %1").arg(QLatin1String(ANGELSCRIPT_VERSION_STRING));
    if (Version::kTrial)
        lines << QStringLiteral("Trial version");
    lines << QString::fromLatin1(Version::webPage());
    return lines;
}

// Text that was asked for (--help, -V) goes to standard output whatever the
// log level; the log file still gets it at INFO when that level passes.
void printRequested(const QStringList& lines)
{
    Log::setConsoleEcho(false);
    for (const QString& line : lines)
        plaxLog(LOG_INFO, line);
    Log::setConsoleEcho(true);
    for (const QString& line : lines)
        std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

// A usage error goes to standard error, as command-line tools do, and to
// the log file; progress and the other messages stay on standard output.
void reportUsageError(const char* text)
{
    Log::setConsoleEcho(false);
    plaxLog(LOG_ERROR, text);
    Log::setConsoleEcho(true);
    std::fprintf(stderr, "%s\n", text);
    std::fflush(stderr);
}

void logRequest(const QStringList& arguments, const BatchRequest& request)
{
    QString invoked;
    for (int i = 1; i < arguments.size(); ++i)
        invoked += QStringLiteral(" %1").arg(arguments[i]);
    plaxLog(LOG_DEBUG, QStringLiteral("Invoked with arguments:%1").arg(invoked));
    if (!request.inputFile.isEmpty())
        plaxLog(LOG_INFO, QStringLiteral("Input file: %1").arg(request.inputFile));
    if (!request.scriptFiles.isEmpty())
        plaxLog(LOG_INFO, QStringLiteral("Script files: %1").arg(request.scriptFiles.join(QLatin1Char(' '))));
    if (!request.resaveFile.isEmpty())
        plaxLog(LOG_INFO, QStringLiteral("Resave file: %1").arg(request.resaveFile));
    if (!request.exportFile.isEmpty())
        plaxLog(LOG_INFO, QStringLiteral("Export file: %1").arg(request.exportFile));
    if (!request.sourceFile.isEmpty())
        plaxLog(LOG_INFO, QStringLiteral("Source code file: %1").arg(request.sourceFile));
}

// Checks that a named file exists and is a regular file, logging the failure.
bool checkFile(const QString& path, const QString& notFoundMessage)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        plaxLog(LOG_ERROR, notFoundMessage.arg(path));
        return false;
    }
    if (!info.isFile()) {
        plaxLog(LOG_ERROR, QStringLiteral("'%1' is not a file.").arg(path));
        return false;
    }
    return true;
}

void loadImages(EditorDocument& document, bool verbose)
{
    if (document.world().images().empty())
        return;
    if (verbose)
        plaxLog(LOG_ERROR, "Loading images.");
    for (const auto& image : document.world().images())
        refreshImageData(*image, document.filePath());
}

// Attaches the object documents of the scene's instances; they stay attached
// (and cached) until the returned guard goes, before the document does.
std::unique_ptr<SceneObjectsAttachment> loadObjects(EditorDocument& document, bool verbose)
{
    if (document.world().objects().empty())
        return nullptr;
    if (verbose)
        plaxLog(LOG_ERROR, "Loading objects.");
    return std::make_unique<SceneObjectsAttachment>(document, ObjectManager::instance());
}

bool runScripts(EditorDocument& document, const QStringList& scriptFiles)
{
    for (const QString& script : scriptFiles) {
        if (!checkFile(script, QStringLiteral("Script file '%1' not found.")))
            return false;
        bool compiled = false;
        clearScriptRunOutcome(&document);
        compileAndRunBatchScript(document, QFileInfo(script).absoluteFilePath(), &compiled);
        if (!compiled) {
            plaxLog(LOG_ERROR, QStringLiteral("Failed to compile script '%1'.").arg(script));
            return false;
        }
        // A script stopped by a limit left the scene half changed: keep
        // nothing of it. (One that raised an exception counts as having run.)
        if (lastScriptRunOutcome(&document).aborted()) {
            plaxLog(LOG_ERROR, QStringLiteral("Script '%1' was aborted; no files are written.").arg(script));
            return false;
        }
    }
    return true;
}

bool writeOutputs(EditorDocument& document, const BatchRequest& request)
{
    if (!request.resaveFile.isEmpty()) {
        if (Version::kTrial) {
            plaxLog(LOG_ERROR, "Resaving is disabled in the trial version.");
        } else if (!document.save(request.resaveFile, false)) {
            plaxLog(LOG_ERROR, QStringLiteral("Failed to resave scene to '%1'.").arg(request.resaveFile));
            return false;
        }
    }
    if (request.exportFile.isEmpty() && request.sourceFile.isEmpty())
        return true;
    if (Version::kTrial) {
        if (!request.exportFile.isEmpty())
            plaxLog(LOG_ERROR, "Exporting raw info is disabled in the trial version.");
        if (!request.sourceFile.isEmpty())
            plaxLog(LOG_ERROR, "Exporting source code is disabled in the trial version.");
        return true;
    }
    if (!request.exportFile.isEmpty() && !exportDocument(document, ExportKind::RawInfo, request.exportFile)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to export raw info to '%1'.").arg(request.exportFile));
        return false;
    }
    if (!request.sourceFile.isEmpty() && !exportDocument(document, ExportKind::SourceCode, request.sourceFile)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to export source code to '%1'.").arg(request.sourceFile));
        return false;
    }
    return true;
}
} // namespace

BatchRequest parseBatchArguments(const QStringList& arguments)
{
    BatchRequest request;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& arg = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        const QString value = hasValue ? arguments[i + 1] : QString();
        if (arg == QLatin1String("-v") || arg == QLatin1String("--verbose"))
            request.verbose = true;
        if (arg == QLatin1String("-q") || arg == QLatin1String("--quiet"))
            request.quiet = true;
        if (arg == QLatin1String("-h") || arg == QLatin1String("--help"))
            request.help = true;
        if (arg == QLatin1String("-V") || arg == QLatin1String("--version"))
            request.version = true;
        if (!hasValue)
            continue;
        if (arg == QLatin1String("-i"))
            request.inputFile = value;
        if (arg == QLatin1String("-s"))
            request.scriptFiles.append(value);
        if (arg == QLatin1String("-r"))
            request.resaveFile = value;
        if (arg == QLatin1String("-e"))
            request.exportFile = value;
        if (arg == QLatin1String("-c"))
            request.sourceFile = value;
    }
    return request;
}

int runBatchTool(const QStringList& arguments)
{
    AppFlags::setBatchMode(true);
    // Every edit a script makes would otherwise log a "created:" line.
    EditSwitches::s_quiet = true;
    Log::setConsoleEcho(true);

    const BatchRequest request = parseBatchArguments(arguments);
    Log::setBatchFlags(request.verbose, request.quiet);
    AppFlags::setVerbose(request.verbose);
    AppFlags::setQuiet(request.quiet);
    Log::setDebugOutput(openAppSettings()->value(QLatin1String(SettingsKeys::kDebugOutput), false).toBool());
    if (request.verbose)
        Log::setThreshold(request.quiet ? LOG_ERROR : LOG_DEBUG);
    else
        Log::setThreshold(request.quiet ? LOG_ERROR : LOG_WARNING);

    if (request.version) {
        printRequested(versionBlock());
        return 0;
    }
    if (request.verbose) {
        for (const QString& line : versionBlock())
            plaxLog(LOG_INFO, line);
    }
    if (request.help) {
        printRequested({QString::fromLatin1(kUsage).chopped(1)});
        return 0;
    }
    if (request.verbose)
        logRequest(arguments, request);

    if (request.inputFile.isEmpty()) {
        reportUsageError("No input file given.");
        return 1;
    }
    if (!checkFile(request.inputFile, QStringLiteral("Input file '%1' not found.")))
        return 1;
    if (request.verbose)
        plaxLog(LOG_INFO, QStringLiteral("Attempting to open '%1'.").arg(request.inputFile));

    // The working folder's hooks run around the exports the command line asks for.
    ScriptHooksManager hooks;
    EditorDocument document;
    if (!document.load(QFileInfo(request.inputFile).absoluteFilePath())) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to load scene from '%1'.").arg(request.inputFile));
        return 1;
    }
    // The process ends with the document: the system takes the scene's memory back.
    document.leaveSceneToProcessExit();
    loadImages(document, request.verbose);
    const std::unique_ptr<SceneObjectsAttachment> objects = loadObjects(document, request.verbose);
    if (!runScripts(document, request.scriptFiles))
        return 1;
    if (!writeOutputs(document, request))
        return 1;
    return 0;
}
