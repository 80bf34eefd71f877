#include "engine/scriptexecution.h"

#include "base/log.h"
#include "editing/scriptcommand.h"
#include "engine/scriptdocument.h"
#include "engine/scriptstate.h"
#include "engine/scriptwatchdog.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>

using namespace AngelScript;

namespace
{
QMutex s_outcomeMutex;
QHash<const ScriptDocument*, ScriptRunOutcome> s_outcomes;

void recordOutcome(const ScriptDocument* document, ScriptRunOutcome outcome)
{
    QMutexLocker lock(&s_outcomeMutex);
    s_outcomes.insert(document, outcome);
}

void reportException(asIScriptContext* context, int lineOffset)
{
    const char* text = context->GetExceptionString();
    plaxLog(LOG_ERROR, "%s", text ? text : "");
    const asIScriptFunction* function = context->GetExceptionFunction();
    plaxLog(LOG_DEBUG, "Script exception in '%s' at line %d",
            function ? function->GetDeclaration() : "?", context->GetExceptionLineNumber() + lineOffset);
}
} // namespace

namespace
{
// One script run: `execute` runs the context (or calls through it) and
// returns how the execution ended.
template <class Execute>
bool runAsScript(asIScriptContext* context, ScriptDocument* document, const QString& macroText, int lineOffset,
                 Execute execute)
{
    int result = 0;
    ScriptRunOutcome outcome;
    {
        QMutexLocker executionLock(&ScriptState::executionMutex());
        ScriptDocument* previousDocument = ScriptDocument::s_currentScriptContextDocument;
        asIScriptContext* previousContext = ScriptState::currentContext();
        ScriptDocument::s_currentScriptContextDocument = document;

        const bool macro = document && !macroText.isEmpty() && EditSwitches::s_recordUndoCommands;
        if (macro)
            beginUndoMacro(document->undoStack(), macroText);

        ScriptWatchdog watchdog;
        watchdog.attach(context);
        ScriptState::setCurrentContext(context);
        result = execute();
        ScriptState::setCurrentContext(previousContext);
        watchdog.detach(context);

        if (macro)
            endUndoMacro(document->undoStack());
        ScriptDocument::s_currentScriptContextDocument = previousDocument;

        outcome.abortReason = watchdog.abortReason(result, context);
        if (outcome.abortReason != ScriptAbortReason::None)
            watchdog.reportAbort(outcome.abortReason);
    }

    if (outcome.abortReason != ScriptAbortReason::None) {
        outcome.end = ScriptRunEnd::Aborted;
    } else if (result == asEXECUTION_FINISHED) {
        outcome.end = ScriptRunEnd::Finished;
    } else if (result == asEXECUTION_EXCEPTION) {
        outcome.end = ScriptRunEnd::Exception;
        reportException(context, lineOffset);
    } else {
        outcome.end = ScriptRunEnd::Failed;
        plaxLog(LOG_ERROR, "Script execution failed (%d)", result);
    }
    recordOutcome(document, outcome);
    return outcome.end == ScriptRunEnd::Finished;
}
} // namespace

bool executeScriptContext(asIScriptContext* context, ScriptDocument* document, const QString& macroText, int lineOffset)
{
    return runAsScript(context, document, macroText, lineOffset, [context] { return context->Execute(); });
}

bool executeScriptCalls(asIScriptContext* context, ScriptDocument* document, const QString& macroText,
                        const std::function<int()>& calls)
{
    return runAsScript(context, document, macroText, 0, calls);
}

ScriptRunOutcome lastScriptRunOutcome(const ScriptDocument* document)
{
    QMutexLocker lock(&s_outcomeMutex);
    return s_outcomes.value(document);
}

void clearScriptRunOutcome(const ScriptDocument* document)
{
    QMutexLocker lock(&s_outcomeMutex);
    s_outcomes.remove(document);
}
