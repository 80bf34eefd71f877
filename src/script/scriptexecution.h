#pragma once

#include <angelscript.h>

#include <QString>

class ScriptDocument;

/// Executes a prepared context as one script run and reports the outcome.
///
/// Holds the process-wide execution mutex for the run, makes `document` the
/// current script document (ScriptDocument::s_currentScriptContextDocument)
/// and the context the current context, and, when a document is given,
/// command recording is on and `macroText` is not empty, wraps the run in one
/// undo macro on the document's stack (closed even when the script fails). A runaway script is stopped by
/// the watchdog. A script exception is logged at ERROR with its exception
/// string, followed by a DEBUG line naming the function and row (adjusted by
/// `lineOffset`). Returns true when the script ran to its end.
bool executeScriptContext(AngelScript::asIScriptContext* context, ScriptDocument* document,
                          const QString& macroText, int lineOffset);
