#pragma once

#include "engine/scriptlimits.h"

#include <angelscript.h>

#include <QString>

#include <functional>

class ScriptDocument;

/// How a script execution ended.
enum class ScriptRunEnd
{
    NotRun,     ///< nothing executed since the record was cleared
    Finished,   ///< ran to its end
    Exception,  ///< raised a script exception (the changes before it stay)
    Aborted,    ///< stopped by a limit or a request (see the abort reason)
    Failed,     ///< the engine could not execute it
};

/// The outcome of one script execution.
struct ScriptRunOutcome
{
    /// How it ended.
    ScriptRunEnd end = ScriptRunEnd::NotRun;
    /// Why it was stopped when `end` is Aborted, else None.
    ScriptAbortReason abortReason = ScriptAbortReason::None;

    /// True when a limit or a request stopped the run: whatever it changed is
    /// half done and should not be kept.
    bool aborted() const { return end == ScriptRunEnd::Aborted; }
};

/// Executes a prepared context as one script run and reports the outcome.
///
/// Holds the process-wide execution mutex for the run, makes `document` the
/// current script document (ScriptDocument::s_currentScriptContextDocument)
/// and the context the current context, and, when a document is given,
/// command recording is on and `macroText` is not empty, wraps the run in one
/// undo macro on the document's stack (closed even when the script fails). A
/// runaway script is stopped by the watchdog, which logs why at ERROR. A
/// script exception is logged at ERROR with its exception string, followed by
/// a DEBUG line naming the function and row (adjusted by `lineOffset`). The
/// outcome is kept as the document's last outcome (lastScriptRunOutcome()).
/// Returns true when the script ran to its end.
bool executeScriptContext(AngelScript::asIScriptContext* context, ScriptDocument* document,
                          const QString& macroText, int lineOffset);
/// As executeScriptContext, for a run that calls registered functions one
/// after another through `context` instead of executing a script in it:
/// `calls` makes them and returns the last execution's result
/// (asEXECUTION_FINISHED when all finished).
bool executeScriptCalls(AngelScript::asIScriptContext* context, ScriptDocument* document, const QString& macroText,
                        const std::function<int()>& calls);

/// The outcome of the last execution that ran for `document` (null for
/// runs without a document) since clearScriptRunOutcome(); a run nested in
/// another is overwritten by the enclosing run when that ends.
ScriptRunOutcome lastScriptRunOutcome(const ScriptDocument* document);
/// Forgets the last outcome of `document` (NotRun until its next execution).
void clearScriptRunOutcome(const ScriptDocument* document);
