#pragma once

#include <QString>

class ScriptDocument;

/// Script work requested from the interface thread. Each request tries the
/// document's script mutex without waiting: a busy document skips it with a
/// warning ("Skipping compile script because mutex lock failed.", "Skipping
/// run script because mutex lock failed.", "Skipping one-off script because
/// mutex lock failed.") and false. The work then runs on a worker thread
/// (ScriptCompileTask) while the calling thread polls every 100 ms, shows the
/// busy indicator from the fifth poll on, flushes queued script output and
/// processes pending events. It runs on the calling thread instead in
/// command-line mode and for texts that use a query dialog. Interface hooks
/// are those of ScriptUi; without them the steps that need them are skipped.
namespace ScriptBackground
{
/// True when the text names one of the query dialog functions
/// (queryOpenFile, queryNumericValue, queryVectorValue, queryStringValue,
/// queryYesNo), which must run on the interface thread.
bool needsInterfaceThread(const QString& text);

/// Compiles the document's live script; returns whether it compiled.
bool compileLiveScript(ScriptDocument& document);
/// Runs main of the document's live module; false at once when none was built.
bool runLiveScript(ScriptDocument& document);
/// Runs a one-off text as one undo step titled `label`; `progressText` (or
/// "Running one-off script...") is shown in the busy indicator.
bool runOneOffScript(ScriptDocument& document, const QString& text, const QString& label,
                     const QString& progressText = QString());
} // namespace ScriptBackground
