#pragma once

#include "io/exportfilter.h"
#include "io/jsonemitter.h"

class MetaObject;

/// Raw-info records of object instances (their expanded items are written as
/// ordinary bodies, joints and images).
namespace b2dJsonObject
{
/// Streams an object record: name, path of the object file (as the scene's
/// export options name it, see exportedFileReference), placement.
void write(const MetaObject& object, const JsonEmitter& emitter, const ExportPropertyFilter& filter);
} // namespace b2dJsonObject
