#include "script/scriptexecution.h"

#include "base/log.h"
#include "script/scriptdocument.h"
#include "editing/scriptcommand.h"
#include "script/scriptstate.h"
#include "script/scriptwatchdog.h"

#include <QMutexLocker>

using namespace AngelScript;

namespace
{
void reportException(asIScriptContext* context, int lineOffset)
{
    const char* text = context->GetExceptionString();
    plaxLog(LOG_ERROR, "%s", text ? text : "");
    const asIScriptFunction* function = context->GetExceptionFunction();
    plaxLog(LOG_DEBUG, "Script exception in '%s' at line %d",
            function ? function->GetDeclaration() : "?", context->GetExceptionLineNumber() + lineOffset);
}
} // namespace

bool executeScriptContext(asIScriptContext* context, ScriptDocument* document, const QString& macroText, int lineOffset)
{
    int result = 0;
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
        result = context->Execute();
        ScriptState::setCurrentContext(previousContext);
        context->ClearLineCallback();

        if (macro)
            endUndoMacro(document->undoStack());
        ScriptDocument::s_currentScriptContextDocument = previousDocument;

        if (result == asEXECUTION_ABORTED)
            watchdog.reportAbort();
    }

    switch (result) {
    case asEXECUTION_FINISHED: return true;
    case asEXECUTION_EXCEPTION: reportException(context, lineOffset); return false;
    case asEXECUTION_ABORTED: return false;
    default: plaxLog(LOG_ERROR, "Script execution failed (%d)", result); return false;
    }
}
