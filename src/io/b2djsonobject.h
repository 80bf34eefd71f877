#pragma once

#include "io/exportfilter.h"
#include "io/jsonvalues.h"

class MetaObject;

/// Raw-info records of object instances (their expanded items are written as
/// ordinary bodies, joints and images).
namespace b2dJsonObject
{
/// An object record: name, path of the object file, placement.
rapidjson::Value write(const MetaObject& object, const JsonEncoder& encoder, const ExportPropertyFilter& filter);
} // namespace b2dJsonObject
