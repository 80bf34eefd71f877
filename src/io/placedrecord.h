#pragma once

#include "io/jsonvalues.h"

class MetaPlacedItem;
class MetaWorld;

// The members image and sampler records share (see MetaPlacedItem).

/// Adds the members a placed item's record starts with: "id", "body" (its
/// id, 0 for none), "name", "file" and "center".
void writePlacedItemHead(rapidjson::Value& record, const MetaPlacedItem& item, const JsonEncoder& encoder);

/// Reads the shared members of a record ("body", or "body-copy" with `copy`
/// set, "file", "center", "angle", "opacity", "colorTint", "flip") into
/// `item`, keeping its values for members that are missing. An unknown body
/// id leaves the item unattached; `bodyId` (when given) receives the id the
/// record names.
void readPlacedItemMembers(const MetaWorld& world, const rapidjson::Value& record, MetaPlacedItem& item, bool copy,
                           ItemId* bodyId = nullptr);
