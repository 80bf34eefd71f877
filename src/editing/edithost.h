#pragma once

#include <QString>

class EditorState;
class MetaWorld;
class QUndoStack;
class Selection;

/// What edit commands and the scene-changing functions need from a document:
/// its scene, undo stack, selection and editor state, a way to run a
/// command's script text, and its script log. The document implements it;
/// the editing layer knows nothing else of documents.
class EditHost
{
public:
    virtual ~EditHost() = default;

    /// The scene.
    virtual MetaWorld& world() = 0;
    /// The document's undo stack.
    virtual QUndoStack& undoStack() = 0;
    /// The selected items and vertices.
    virtual Selection& selection() = 0;
    /// Cursor, view and input state shared with the editor views.
    virtual EditorState& editorState() = 0;

    /// Runs a command's script text through the document's one-off runner
    /// (which skips the run when a script is already busy on the document),
    /// with `progressText` shown while it runs. Returns whether the text ran
    /// to its end.
    virtual bool runCommandScript(const QString& script, const QString& progressText) = 0;
    /// Appends one script text to the document's script log.
    virtual void appendToScriptLog(const QString& script) = 0;
};
