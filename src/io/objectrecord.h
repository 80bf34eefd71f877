#pragma once

#include "io/jsonvalues.h"

class MetaObject;
class MetaWorld;

/// An object-instance record.
rapidjson::Value writeObjectRecord(const MetaObject& object, const JsonEncoder& encoder);

/// Reads an object-instance record into the world under the id (0 allocates
/// one; an id in use is replaced with a warning).
MetaObject* readObjectRecord(MetaWorld& world, const rapidjson::Value& record, ItemId id);
