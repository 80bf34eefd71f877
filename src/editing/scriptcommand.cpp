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
    const QString progress = progressFormat.arg(stackText);
    // Each line of a command script holds whole statements (merging joins
    // the parts with newlines), so a long script runs in pieces of lines:
    // the script compiler takes much longer for one huge function than for
    // many small ones.
    qsizetype start = 0;
    do {
        qsizetype end = start - 1;
        for (int lines = 0; lines < kLinesPerRun && (end = script.indexOf(QLatin1Char('\n'), end + 1)) >= 0; ++lines) {
        }
        if (end < 0)
            end = script.size();
        const QString piece = script.mid(start, end - start);
        if (!m_document->runCommandScript(piece, progress)) {
            plaxLog(LOG_WARNING, QStringLiteral("%1 did not complete; the scene keeps what it did").arg(progress));
            return;
        }
        m_document->appendToScriptLog(piece);
        start = end + 1;
    } while (start < script.size());
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
