#pragma once

#include "editing/edithost.h"
#include "editing/editorstate.h"
#include "editing/selection.h"
#include "model/metaworld.h"

#include <QStringList>
#include <QUndoStack>

/// An edit host that records what commands ask of it: the scripts they run
/// (with the progress text) and the lines they append to the script log.
class RecordingHost : public EditHost
{
public:
    MetaWorld& world() override { return m_world; }
    QUndoStack& undoStack() override { return m_stack; }
    Selection& selection() override { return m_selection; }
    EditorState& editorState() override { return m_state; }
    bool runCommandScript(const QString& script, const QString& progressText) override;
    void appendToScriptLog(const QString& script) override { logLines << script; }

    /// Scripts run, in order.
    QStringList scriptsRun;
    /// Progress texts of those runs.
    QStringList progressTexts;
    /// Script log lines, in order.
    QStringList logLines;
    /// What runCommandScript returns.
    bool runSucceeds = true;

private:
    MetaWorld m_world;
    QUndoStack m_stack;
    Selection m_selection;
    EditorState m_state;
};
