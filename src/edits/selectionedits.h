#pragma once

#include "base/types.h"
#include "model/customproperties.h"
#include "model/itemkind.h"

#include <QString>

#include <functional>
#include <vector>

class ScriptDocument;

// Edits of a document's current selection, as the editor's menus, keys and
// panels make them. Each is one undo macro with its own text ("delete 2
// bodies", "set category bit of 3 fixtures", ...) and goes through the same
// script API functions a script calls.
namespace SelectionEdits
{
/// "body"/"bodies", "fixture"/"fixtures", ...: singular below 2.
QString kindWord(ItemKind kind, qsizetype count);

/// Deletes the selected items of a kind: "delete %1 %2".
void deleteSelected(ScriptDocument& document, ItemKind kind);
/// Deletes the selected vertices: "delete %1 %2" with "vertex"/"vertices".
void deleteSelectedVertices(ScriptDocument& document);
/// Inserts a vertex into a fixture: "insert 1 vertex".
void insertVertex(ScriptDocument& document, ItemId fixture, int index, Vec2 position);

/// Reverses the vertex order of the selected fixtures: "reverse winding of
/// %1 %2". Returns how many fixtures were selected (none: nothing recorded).
int reverseWindingOfSelected(ScriptDocument& document);

/// Which collision bits setBitForSelectedFixtures changes.
enum CollisionBitProperty
{
    CategoryBits = 1,
    MaskBits = 2,
};
/// Sets or clears bit `bit` (0..31) of the category or mask bits of the
/// selected fixtures whose bit differs: "set %1 of %2 fixtures". Any other
/// property logs "setBitForSelectedFixtures got invalid propertyId: %1".
void setBitForSelectedFixtures(ScriptDocument& document, int bit, bool on, int propertyId);

/// Moves the selected vertices to new world positions (one per selected
/// vertex, in selection order): "%1 of %2 %3" with the operation's name.
void setSelectedVertexPositions(ScriptDocument& document, const QString& operation, const std::vector<Vec2>& positions);

/// Renames an item: "rename of %1 %2" (kind word, new name). Names the scene
/// file cannot carry are refused ("Ignoring attempt to set name with invalid
/// characters"); an unknown item logs "Tried to set name of unknown meta item".
void rename(ScriptDocument& document, ItemKind kind, ItemId id, const QString& name);

/// Selects (or deselects) items: "%1 selection" / "%1 deselection" with the
/// kind word ("item" when `kind` is empty).
void setSelected(ScriptDocument& document, ItemKind kind, const std::vector<ItemId>& ids, bool selected);
/// Selects or deselects vertices: "vertex selection" / "vertex deselection".
void setVerticesSelected(ScriptDocument& document, const std::vector<std::pair<ItemId, int>>& vertices, bool selected);
/// Deselects everything of every kind: "item deselection".
void clearSelection(ScriptDocument& document);

/// Attaches the selected images or samplers (`kind`) to a body, keeping
/// each where it is in the world: "set body of %1 %2". Body 0 detaches
/// them. A body that cannot be found logs "Could not find body of id %1 to
/// set for image." (or "for sampler.") and changes nothing; any other kind
/// logs "Tried to set body of non-image meta item" (or "non-sampler").
void setBodyOfSelected(ScriptDocument& document, ItemKind kind, ItemId body);

/// Sets body A (`bodyA` true) or B of the selected joints: "set body %1 of
/// %2 %3" with "A" or "B", the count and "joint"/"joints". Where the new
/// body is the joint's other body, the user is asked (through
/// UserNotifier::ask, "Invalid joint setting") whether to switch the
/// joint's bodies; without an interactive user the answer is no and the
/// joint stays as it was.
void setJointBodyOfSelected(ScriptDocument& document, bool bodyA, ItemId body);

/// Sets a custom property on the selected items of a kind:
/// "set custom property '%1'".
void setCustomProperty(ScriptDocument& document, ItemKind kind, const QString& name, const CustomValue& value);
} // namespace SelectionEdits
