#pragma once

#include "editing/scriptcommand.h"

#include <string>

/// "setCustomLabelsScriptFile('%1');" (or the export filter's or display
/// filter's setter) with the new file, undone by the same call with the old.
class SetDocumentScriptFileCommand : public ScriptCommand
{
public:
    /// The setting named by `setter` changed from `oldFile` to `newFile`.
    SetDocumentScriptFileCommand(EditHost* document, const char* setter, const QString& oldFile, const QString& newFile);
};

/// "setAfterExportSystemHook('%1', '%2', %3);" with the new command, folder
/// and switch, undone by the same call with the old ones.
class SetAfterExportHookCommand : public ScriptCommand
{
public:
    /// The hook changed from the `old...` values to the `new...` ones.
    SetAfterExportHookCommand(EditHost* document, const QString& oldCommand, const QString& oldDirectory, bool oldEnabled,
                              const QString& newCommand, const QString& newDirectory, bool newEnabled);
};

// The scene's settings that name scripts and commands: the three document
// scripts (custom labels, property export filter, property display filter)
// and the system command run after an export. Each change is one edit
// command and reloads what it names.
namespace DocumentSettingsApi
{
/// The custom labels script file (relative to the scene file's folder).
std::string getCustomLabelsScriptFile();
/// Sets it; an edit command when it changes.
void setCustomLabelsScriptFile(const std::string& file);
/// The property export filter script file.
std::string getPropertyExportFilterScriptFile();
/// Sets it; an edit command when it changes.
void setPropertyExportFilterScriptFile(const std::string& file);
/// The property display filter script file.
std::string getPropertyDisplayFilterScriptFile();
/// Sets it; an edit command when it changes.
void setPropertyDisplayFilterScriptFile(const std::string& file);

/// The system command run after an export (placeholders unresolved).
std::string getAfterExportSystemCommand();
/// The folder it runs in (relative to the exported file's folder).
std::string getAfterExportSystemDirectory();
/// Whether it runs.
bool isAfterExportSystemHookEnabled();
/// Sets command, folder and switch; an edit command when any changes.
void setAfterExportSystemHook(const std::string& command, const std::string& directory, bool enabled);
} // namespace DocumentSettingsApi
