#pragma once

#include "base/types.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

class EditorDocument;

/// A document's scene written as raw info for the player, with the trace of
/// each body record back to the document.
struct PlayerRawInfo
{
    /// The raw-info JSON text; empty when the scene could not be written.
    QByteArray text;
    /// Why the text is empty.
    QString error;
    /// For each body record in order: the id of the document's body it was
    /// written from, or 0 for a body of an expanded object instance.
    std::vector<ItemId> sceneBodyIds;
};

/// Writes what the player loads: the scene with its object instances
/// expanded, through the raw-info writer with the scene's excluded properties
/// and its export filter script, exactly as an export writes it.
PlayerRawInfo writePlayerRawInfo(const EditorDocument& document);

/// The stage that writes a document for the player; replaceable so that a
/// failing export can be exercised.
using PlayerRawInfoWriter = std::function<PlayerRawInfo(const EditorDocument&)>;
