#pragma once

#include "io/exportfilter.h"
#include "io/jsonemitter.h"

struct BuiltImage;
class MetaWorld;

/// Raw-info records of images.
namespace b2dJsonImage
{
/// Streams an image record: its body's index `bodyIndex` (or -1), placement, look, and
/// the corners and OpenGL arrays of the quad it is drawn on. The file is
/// named as the export options of the exported scene ask.
void write(const BuiltImage& image, int bodyIndex, const MetaWorld& scene, const JsonEmitter& emitter,
           const ExportPropertyFilter& filter);
} // namespace b2dJsonImage
