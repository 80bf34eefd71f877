#include "api/scriptdocumentsettings.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "editing/scripttext.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

namespace
{
using Script = DocumentScript;

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + escapeForScriptString(text) + QLatin1Char('\'');
}

QString fileCall(const char* setter, const QString& file)
{
    return QStringLiteral("%1(%2);").arg(QLatin1String(setter), quoted(file));
}

QString hookCall(const QString& command, const QString& directory, bool enabled)
{
    return QStringLiteral("setAfterExportSystemHook(%1, %2, %3);")
        .arg(quoted(command), quoted(directory), enabled ? QStringLiteral("true") : QStringLiteral("false"));
}

// Text that can be stored in a scene and written into a command script.
bool acceptable(const QString& text, const char* what)
{
    for (QChar c : text) {
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar(0)) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring %1 with a line break or NUL character")
                                     .arg(QLatin1String(what)));
            return false;
        }
    }
    return true;
}

QString* settingField(MetaWorld& world, Script script)
{
    switch (script) {
    case Script::CustomLabels: return &world.displayOptions.customLabelsScriptFile;
    case Script::ExportFilter: return &world.exportOptions.propertyExportFilterScriptFile;
    case Script::DisplayFilter: break;
    }
    return &world.displayOptions.propertyDisplayFilterScriptFile;
}

const char* setterOf(Script script)
{
    switch (script) {
    case Script::CustomLabels: return "setCustomLabelsScriptFile";
    case Script::ExportFilter: return "setPropertyExportFilterScriptFile";
    case Script::DisplayFilter: break;
    }
    return "setPropertyDisplayFilterScriptFile";
}

std::string getFile(Script script)
{
    MetaWorld* world = ScriptApi::world();
    return world ? settingField(*world, script)->toStdString() : std::string();
}

void setFile(Script script, const std::string& text)
{
    MetaWorld* world = ScriptApi::world();
    ScriptDocument* document = ScriptApi::document();
    const QString file = QString::fromStdString(text);
    if (!world || !document || !acceptable(file, "script file name"))
        return;
    QString* field = settingField(*world, script);
    if (*field == file)
        return;
    const QString old = *field;
    *field = file;
    ScriptApi::record<SetDocumentScriptFileCommand>(setterOf(script), old, file);
    document->documentScriptSettingChanged(script);
}
} // namespace

SetDocumentScriptFileCommand::SetDocumentScriptFileCommand(EditHost* document, const char* setter,
                                                           const QString& oldFile, const QString& newFile)
    : ScriptCommand(document, fileCall(setter, newFile), fileCall(setter, oldFile))
{
}

SetAfterExportHookCommand::SetAfterExportHookCommand(EditHost* document, const QString& oldCommand,
                                                     const QString& oldDirectory, bool oldEnabled,
                                                     const QString& newCommand, const QString& newDirectory,
                                                     bool newEnabled)
    : ScriptCommand(document, hookCall(newCommand, newDirectory, newEnabled),
                    hookCall(oldCommand, oldDirectory, oldEnabled))
{
}

namespace DocumentSettingsApi
{
std::string getCustomLabelsScriptFile() { return getFile(Script::CustomLabels); }
void setCustomLabelsScriptFile(const std::string& file) { setFile(Script::CustomLabels, file); }
std::string getPropertyExportFilterScriptFile() { return getFile(Script::ExportFilter); }
void setPropertyExportFilterScriptFile(const std::string& file) { setFile(Script::ExportFilter, file); }
std::string getPropertyDisplayFilterScriptFile() { return getFile(Script::DisplayFilter); }
void setPropertyDisplayFilterScriptFile(const std::string& file) { setFile(Script::DisplayFilter, file); }

std::string getAfterExportSystemCommand()
{
    MetaWorld* world = ScriptApi::world();
    return world ? world->afterExportHook.command.toStdString() : std::string();
}

std::string getAfterExportSystemDirectory()
{
    MetaWorld* world = ScriptApi::world();
    return world ? world->afterExportHook.directory.toStdString() : std::string();
}

bool isAfterExportSystemHookEnabled()
{
    MetaWorld* world = ScriptApi::world();
    return world && world->afterExportHook.enabled;
}

void setAfterExportSystemHook(const std::string& commandText, const std::string& directoryText, bool enabled)
{
    MetaWorld* world = ScriptApi::world();
    ScriptDocument* document = ScriptApi::document();
    const QString command = QString::fromStdString(commandText);
    const QString directory = QString::fromStdString(directoryText);
    if (!world || !document || !acceptable(command, "system command") || !acceptable(directory, "folder"))
        return;
    SystemHook& hook = world->afterExportHook;
    if (hook.command == command && hook.directory == directory && hook.enabled == enabled)
        return;
    const SystemHook old = hook;
    hook.command = command;
    hook.directory = directory;
    hook.enabled = enabled;
    ScriptApi::record<SetAfterExportHookCommand>(old.command, old.directory, old.enabled, command, directory, enabled);
    document->afterExportCommandChanged();
}
} // namespace DocumentSettingsApi
