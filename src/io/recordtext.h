#pragma once

// JSON-text forms of the item records, for the clipboard and the script API.
// The readers log "Failed to parse body JSON:\n%1" for text that is not JSON
// and "Parsed body JSON but value is not object type." for JSON that is not
// an object (with the kind's word), and then return null.

#include "io/jsonvalues.h"

class MetaBody;
class MetaFixture;
class MetaImage;
class MetaItem;
class MetaJoint;
class MetaObject;
class MetaSampler;
class MetaWorld;

/// The record of any item as text, compact or pretty printed.
QString itemRecordToJson(const MetaItem& item, const JsonStyle& style, bool pretty);

/// Parses record text for an item kind word ("body", ...) and logs the
/// failures above; false when the text is not a JSON object.
bool parseRecordJson(const QString& text, const char* kindWord, rapidjson::Document* document);

/// Text form of readBodyRecord.
MetaBody* readBodyJson(MetaWorld& world, const QString& text, ItemId id, int* skippedFixtures = nullptr);
/// Text form of readFixtureRecord.
MetaFixture* readFixtureJson(MetaWorld& world, MetaBody* body, const QString& text, ItemId id);
/// Text form of readJointRecord.
MetaJoint* readJointJson(MetaWorld& world, const QString& text, ItemId id, bool copy = false);
/// Text form of readImageRecord.
MetaImage* readImageJson(MetaWorld& world, const QString& text, ItemId id, bool copy = false);
/// Text form of readSamplerRecord.
MetaSampler* readSamplerJson(MetaWorld& world, const QString& text, ItemId id, bool copy = false);
/// Text form of readObjectRecord.
MetaObject* readObjectJson(MetaWorld& world, const QString& text, ItemId id);
