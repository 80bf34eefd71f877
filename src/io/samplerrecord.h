#pragma once

#include "io/jsonvalues.h"

struct MetaPath;
class MetaSampler;
class MetaWorld;

/// A sampler record with its paths; the attached body is written by id under "body".
rapidjson::Value writeSamplerRecord(const MetaSampler& sampler, const JsonEncoder& encoder);
/// A path record: "type", "radius", "maxPoints", "minAngle", "controlPoints".
rapidjson::Value writePathRecord(const MetaPath& path, const JsonEncoder& encoder);

/// Reads a sampler record into the world under the id (0 allocates one; an id
/// in use is replaced with a warning). With copy set the body is found under
/// "body-copy".
MetaSampler* readSamplerRecord(MetaWorld& world, const rapidjson::Value& record, ItemId id, bool copy = false);
/// Reads a path record; an unknown type word is reported and stored as -1.
MetaPath readPathRecord(const rapidjson::Value& record);
