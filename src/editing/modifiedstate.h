#pragma once

class QUndoCommand;
class QUndoStack;

/// Whether a document with this undo stack differs from its file: a clean
/// stack does not; a stack whose clean state is gone (the commands that led
/// back to it were discarded, by a new push after undoing past it or by the
/// undo limit) does; otherwise it does when any command between the clean
/// index and the current index, in either direction, changes the scene. So
/// a change undone past a save counts as much as one made after it, and
/// selection and cursor commands on their own never count.
bool isModified(const QUndoStack& stack);

/// Whether a command changes the scene: a macro when any child does; a plain
/// command when its text is "script execution" (an empty script macro) or
/// its modifiesScene flag is set.
bool commandChangesScene(const QUndoCommand* command);
