#include "script/scriptexecution.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "script/scripthooks.h"
#include "script/scriptstate.h"
#include "script/scriptwatchdog.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>

using namespace AngelScript;

namespace
{
QMutex s_outcomeMutex;
QHash<const EditorDocument*, ScriptRunOutcome> s_outcomes;

void recordOutcome(const EditorDocument* document, ScriptRunOutcome outcome)
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

bool executeScriptContext(asIScriptContext* context, EditorDocument* document, const DocumentScriptHooks* hooks,
                          const QString& macroText, int lineOffset)
{
    int result = 0;
    ScriptRunOutcome outcome;
    {
        QMutexLocker executionLock(&ScriptState::executionMutex());
        EditorDocument* previousDocument = EditorDocument::s_currentScriptContextDocument;
        asIScriptContext* previousContext = ScriptState::currentContext();
        EditorDocument::s_currentScriptContextDocument = document;

        bool macro = hooks && !macroText.isEmpty() && hooks->isRecordingCommands && hooks->isRecordingCommands()
                     && hooks->beginUndoMacro && hooks->endUndoMacro;
        if (macro)
            hooks->beginUndoMacro(macroText);

        ScriptWatchdog watchdog;
        watchdog.attach(context);
        ScriptState::setCurrentContext(context);
        result = context->Execute();
        ScriptState::setCurrentContext(previousContext);
        watchdog.detach(context);

        if (macro)
            hooks->endUndoMacro();
        EditorDocument::s_currentScriptContextDocument = previousDocument;

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

ScriptRunOutcome lastScriptRunOutcome(const EditorDocument* document)
{
    QMutexLocker lock(&s_outcomeMutex);
    return s_outcomes.value(document);
}

void clearScriptRunOutcome(const EditorDocument* document)
{
    QMutexLocker lock(&s_outcomeMutex);
    s_outcomes.remove(document);
}
