#pragma once

#include "io/jsonvalues.h"
#include "model/itemkind.h"

class MetaBody;
class MetaWorld;

/// The id an item read from a record gets: the requested id when it is free,
/// a freshly allocated one for 0, and a fresh one with the warning "Body id %1
/// is already in use, using id %2" (with the kind's display name) when it is
/// taken. With quiet set the replacement is made without the warning. 0 when
/// no id is left (the allocation error is logged).
ItemId resolveRecordId(MetaWorld& world, ItemKind kind, ItemId requested, bool quiet = false);

/// Key of a body reference: the key itself, or key followed by "-copy" when
/// reading a copied record ("bodyA" or "bodyA-copy").
QByteArray bodyReferenceKey(const char* key, bool copy);

/// The body a record refers to under a key (see bodyReferenceKey), or null
/// when the id is 0, missing or unknown. The id read is stored in bodyId.
MetaBody* readBodyReference(const MetaWorld& world, const rapidjson::Value& record, const char* key, bool copy,
                            ItemId* bodyId = nullptr);
