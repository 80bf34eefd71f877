#pragma once

class QUndoCommand;
class QUndoStack;

/// Whether a document with this undo stack has unsaved changes: a clean
/// stack is not modified; otherwise any command below the current index
/// (walking from index 0, not from the clean index) that changes the scene
/// makes it modified. So after a save, a selection change counts as a
/// modification as long as an earlier command changed the scene.
bool isModified(const QUndoStack& stack);

/// Whether a command changes the scene: a macro when any child does; a plain
/// command when its text is "script execution" (an empty script macro) or
/// its modifiesScene flag is set.
bool commandChangesScene(const QUndoCommand* command);
