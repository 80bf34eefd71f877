#pragma once

#include "io/jsonemitter.h"
#include "io/jsonvalues.h"
#include "model/customproperties.h"

#include <vector>

/// Custom property values as an array of {"name", <type word>: value} objects.
rapidjson::Value writeCustomProperties(const CustomProperties& properties, const JsonEncoder& encoder);
/// The same array streamed into an emitter's sink.
void emitCustomProperties(const CustomProperties& properties, const JsonEmitter& emitter);
/// Reads custom property values into the set (adding to what it holds).
/// Entries without a name or without any of the six typed members are skipped.
void readCustomProperties(const rapidjson::Value* array, CustomProperties* properties);

/// Custom property definitions as an array of {"class", "name", "displayName",
/// "type"} objects, with "comboboxEntries" for choice lists.
rapidjson::Value writeCustomPropertyDefs(const std::vector<CustomPropertyDef>& defs, const JsonEncoder& encoder);
/// Reads custom property definitions; non-object entries are skipped.
std::vector<CustomPropertyDef> readCustomPropertyDefs(const rapidjson::Value* array);
