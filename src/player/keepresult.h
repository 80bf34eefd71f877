#pragma once

#include <QString>

class EditorDocument;
class PlayerWorld;

/// Text of the undo step that keeps a player's result.
QString keepResultUndoText();

/// Writes the simulated position, angle and velocities of every body the
/// player's world traces to a body of the document back into the document,
/// through the script API, as one undo step. Bodies of object instances,
/// bodies deleted from the document meanwhile, unchanged bodies and
/// non-finite values are left alone. Returns the number of bodies changed.
int keepPlayerResult(const PlayerWorld& world, EditorDocument& document);
