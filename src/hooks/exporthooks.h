#pragma once

#include <QString>

class DocumentScriptsHost;

/// Which side of an export the hooks run on.
enum class ExportHookStage
{
    Before,
    After,
};

/// What runs around each export (raw info or C++ source) of a document.
namespace ExportHooks
{
/// Runs the hooks of one export to `exportPath`: Before raises the "Before
/// export" event, After raises "After export" and then starts the scene's
/// after-export system command (when it is enabled and not empty, and the
/// scene's commands may run, see DocumentScripts), with its placeholders
/// filled from the scene file and `exportPath`. In command-line mode the
/// command is waited for (verbose output names it: "Running system
/// command: %1"); in the editor it runs on and reports when it ends. A
/// failing hook script or command is reported and never fails the export.
void run(DocumentScriptsHost& document, ExportHookStage stage, const QString& exportPath);

/// Only the system command part of run() for After. Returns false when a
/// command was due but could not run or, in command-line mode, failed.
bool runAfterExportCommand(DocumentScriptsHost& document, const QString& exportPath);
} // namespace ExportHooks
