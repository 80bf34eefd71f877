#include "editing/scriptcommand.h"

#include "base/log.h"

#include <QCoreApplication>
#include <QUndoStack>

ScriptCommand::ScriptCommand(EditHost* document, const QString& redoScript, const QString& undoScript,
                             bool modifiesScene)
    : m_document(document), m_redoScript(redoScript), m_undoScript(undoScript), m_modifiesScene(modifiesScene)
{
    setText(redoScript);
    if (!EditSwitches::s_quiet)
        plaxLog(LOG_INFO, QStringLiteral("created: ") + redoScript);
    m_document->appendToScriptLog(redoScript);
}

void ScriptCommand::undo()
{
    if (!EditSwitches::s_runCommandScripts)
        return;
    flushMergedScripts();
    runScript(m_undoScript, QCoreApplication::translate("ScriptCommand", "Undoing %1..."),
              m_document->undoStack().undoText());
}

void ScriptCommand::redo()
{
    if (!EditSwitches::s_runCommandScripts)
        return;
    flushMergedScripts();
    runScript(m_redoScript, QCoreApplication::translate("ScriptCommand", "Redoing %1..."),
              m_document->undoStack().redoText());
}

void ScriptCommand::runScript(const QString& script, const QString& progressFormat, const QString& stackText)
{
    SwitchScope noRecording(EditSwitches::s_recordUndoCommands, false);
    if (m_document->runCommandScript(script, progressFormat.arg(stackText)))
        m_document->appendToScriptLog(script);
}

bool ScriptCommand::mergeWith(const QUndoCommand* other)
{
    const auto* command = dynamic_cast<const ScriptCommand*>(other);
    if (!command)
        return false;
    m_pendingRedoScripts.append(command->m_redoScript);
    m_pendingUndoScripts.prepend(command->m_undoScript);
    m_hasPendingMerge = true;
    m_modifiesScene = m_modifiesScene || command->m_modifiesScene;
    return true;
}

void ScriptCommand::flushMergedScripts()
{
    if (!m_hasPendingMerge)
        return;
    m_redoScript = m_redoScript + m_pendingRedoScripts.join(QLatin1Char('\n'));
    m_undoScript = m_pendingUndoScripts.join(QLatin1Char('\n')) + m_undoScript;
    m_pendingRedoScripts.clear();
    m_pendingUndoScripts.clear();
    m_hasPendingMerge = false;
}

void beginUndoMacro(QUndoStack& stack, const QString& text)
{
    if (EditSwitches::s_macroDepth++ == 0)
        stack.beginMacro(text);
}

void endUndoMacro(QUndoStack& stack)
{
    if (--EditSwitches::s_macroDepth == 0)
        stack.endMacro();
}
