#pragma once

#include "io/exportfilter.h"
#include "io/jsonvalues.h"

struct BuiltImage;

/// Raw-info records of images.
namespace b2dJsonImage
{
/// An image record: its body's index (or -1), placement, look, and the
/// corners and OpenGL arrays of the quad it is drawn on.
rapidjson::Value write(const BuiltImage& image, const JsonEncoder& encoder, const ExportPropertyFilter& filter);
} // namespace b2dJsonImage
