#pragma once

#include "base/types.h"
#include "editing/editmode.h"

#include <utility>
#include <vector>

class ScriptDocument;

/// How a pick changes the selection of the current edit mode.
enum class SelectionChangeMode
{
    Replace, ///< the picked items become the selection of the mode
    Add,     ///< the picked items are added
    Remove,  ///< the picked items are removed
    Toggle,  ///< each picked item changes its state
};

/// The selection edits an editor view makes from clicks and boxes: one
/// undo macro ("body selection", "fixture deselection", "vertex selection",
/// ...: "selection" when anything gets selected, else "deselection"), made of
/// the script API's select and deselect calls. Items are (id, -1), vertices
/// (fixture id, index). Returns false, recording nothing, when the selection
/// would stay as it is.
bool changeSelection(ScriptDocument& document, EditMode mode, const std::vector<std::pair<ItemId, int>>& items,
                     SelectionChangeMode how);
