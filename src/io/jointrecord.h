#pragma once

#include "io/jsonvalues.h"

class MetaJoint;
class MetaWorld;

/// A joint record: the common members, the members of the joint's type and
/// the custom properties. Bodies are referred to by id ("bodyA", "bodyB").
rapidjson::Value writeJointRecord(const MetaJoint& joint, const JsonEncoder& encoder);

/// Reads a joint record into the world under the id (0 allocates one; an id
/// in use is replaced with a warning). With copy set the bodies are found
/// under "bodyA-copy" and "bodyB-copy". An unknown type becomes revolute with
/// a warning. A joint whose bodies cannot be found, or whose two bodies are
/// the same, is not created (returns null) and the reason is logged.
MetaJoint* readJointRecord(MetaWorld& world, const rapidjson::Value& record, ItemId id, bool copy = false);
