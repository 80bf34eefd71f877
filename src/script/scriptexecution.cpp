#include "script/scriptexecution.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "script/scripthooks.h"
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

bool executeScriptContext(asIScriptContext* context, EditorDocument* document, const DocumentScriptHooks* hooks,
                          const QString& macroText, int lineOffset)
{
    int result = 0;
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
        context->ClearLineCallback();

        if (macro)
            hooks->endUndoMacro();
        EditorDocument::s_currentScriptContextDocument = previousDocument;

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
