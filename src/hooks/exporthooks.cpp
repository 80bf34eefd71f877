#include "hooks/exporthooks.h"

#include "api/scripthookdata.h"
#include "base/flags.h"
#include "base/log.h"
#include "docscripts/documentscripts.h"
#include "docscripts/documentscriptshost.h"
#include "engine/scriptdocument.h"
#include "hooks/hookevents.h"
#include "hooks/systemcommand.h"
#include "hooks/systemhookprocess.h"
#include "model/metaworld.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace ExportHooks
{
void run(DocumentScriptsHost& document, ExportHookStage stage, const QString& exportPath)
{
    const bool before = stage == ExportHookStage::Before;
    HookEvents::raise(document, before ? SHE_BEFORE_EXPORT : SHE_AFTER_EXPORT, ScriptHookData());
    if (!before)
        runAfterExportCommand(document, exportPath);
}

bool runAfterExportCommand(DocumentScriptsHost& document, const QString& exportPath)
{
    const SystemHook hook = document.world().afterExportHook;
    if (!hook.enabled || hook.command.trimmed().isEmpty())
        return true;
    if (!document.documentScripts().decide()) {
        plaxLog(LOG_WARNING, QStringLiteral("Not running the system command after export: the scene's scripts and "
                                            "commands were not allowed to run"));
        return false;
    }
    const PlaceholderValues values = PlaceholderValues::of(document.filePath(), QFileInfo(exportPath).absoluteFilePath());
    ResolvedSystemCommand command = SystemCommand::prepare(hook.command, hook.directory, values, true);
    if (AppFlags::isBatchMode()) {
        if (AppFlags::isVerbose())
            plaxLog(LOG_INFO, QStringLiteral("Running system command: %1").arg(command.display));
        SystemHookProcess process(std::move(command));
        return process.run();
    }
    plaxLog(LOG_INFO, QStringLiteral("Running system command: %1").arg(command.display));
    // It reports and goes away by itself when the command ends.
    auto* process = new SystemHookProcess(std::move(command), QCoreApplication::instance());
    process->start(true);
    return true;
}
} // namespace ExportHooks
