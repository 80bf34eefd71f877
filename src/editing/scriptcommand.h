#pragma once

#include "base/types.h"
#include "editing/edithost.h"
#include "editing/editswitches.h"

#include <QStringList>
#include <QUndoCommand>

class QUndoStack;

/// An undoable edit recorded as two pieces of plaxscript: one that performs
/// the change and one that reverses it. The change itself is made before the
/// command is pushed; undo and redo run the texts through the document's
/// one-off script runner. The display text is the redo script.
///
/// Every command reports the same id, so the stack offers each new command
/// to the one beneath it; merging folds the other's scripts into this one,
/// so a compound edit in a macro becomes a single command.
class ScriptCommand : public QUndoCommand
{
public:
    /// A command of `document` with its two texts. Logs "created: " and the
    /// redo script (unless quiet) and appends the redo script to the script log.
    ScriptCommand(EditHost* document, const QString& redoScript, const QString& undoScript, bool modifiesScene = true);

    /// Runs the undo script (after folding in merged scripts).
    void undo() override;
    /// Runs the redo script (after folding in merged scripts).
    void redo() override;
    /// 0 for every command, so that every push is offered for merging.
    int id() const override { return 0; }
    /// Accepts any command: its scripts are kept to be folded in later.
    bool mergeWith(const QUndoCommand* other) override;
    /// Folds pending merged scripts into the two texts: redo runs the own
    /// script then the merged ones oldest first, undo runs the merged ones
    /// newest first and then the own one.
    virtual void flushMergedScripts();

    /// The script that performs the change.
    const QString& redoScript() const { return m_redoScript; }
    /// The script that reverses it.
    const QString& undoScript() const { return m_undoScript; }
    /// False for selection and cursor commands, which do not modify the scene.
    bool modifiesScene() const { return m_modifiesScene; }
    /// True while merged scripts wait to be folded in.
    bool hasPendingMerge() const { return m_hasPendingMerge; }

private:
    static constexpr int kLinesPerRun = 100;
    void runScript(const QString& script, const QString& progressFormat, const QString& stackText);

    EditHost* m_document;
    QString m_redoScript;
    QString m_undoScript;
    bool m_hasPendingMerge = false;
    QStringList m_pendingRedoScripts;
    QStringList m_pendingUndoScripts;
    bool m_modifiesScene;
};

/// Opens an undo macro on the stack; nested requests only count, so the
/// outermost macro's text is the one shown.
void beginUndoMacro(QUndoStack& stack, const QString& text);
/// Closes the macro opened by the matching beginUndoMacro.
void endUndoMacro(QUndoStack& stack);

/// Opens an undo macro for a scope (see beginUndoMacro), only while command
/// recording is on: an undo or redo script must not open macros on the stack
/// it is being replayed from.
class UndoMacroScope
{
public:
    /// Opens the macro `text` on the stack when recording.
    UndoMacroScope(QUndoStack& stack, const QString& text)
        : m_stack(stack), m_open(EditSwitches::s_recordUndoCommands)
    {
        if (m_open)
            beginUndoMacro(stack, text);
    }
    ~UndoMacroScope()
    {
        if (m_open)
            endUndoMacro(m_stack);
    }
    UndoMacroScope(const UndoMacroScope&) = delete;
    UndoMacroScope& operator=(const UndoMacroScope&) = delete;

private:
    QUndoStack& m_stack;
    bool m_open;
};

/// Records a change that has already been made: when recording is on,
/// constructs the command and pushes it with replay suppressed.
template <class Command, class... Args>
void recordCommand(EditHost& document, Args&&... args)
{
    if (!EditSwitches::s_recordUndoCommands)
        return;
    SwitchScope noReplay(EditSwitches::s_runCommandScripts, false);
    document.undoStack().push(new Command(&document, std::forward<Args>(args)...));
}
