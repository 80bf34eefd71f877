#pragma once

#include "api/scripthandles.h"

#include <string>

// The `image` handle's own methods (the members it shares with the other
// item handles are in scriptitemhandles, those it shares with samplers in
// scriptplacedapi.h). An image's scale is its height in world units, so
// setScale and setHeight set the same value.
namespace ImageApi
{
/// Changes the file and reads the new file's pixel size.
void setFile(ScriptImage* self, const std::string& file);
/// Height in world units; more than 0.
void setScale(ScriptImage* self, float scale);
void setHeight(ScriptImage* self, float height);
/// Width over height relative to the file's own proportions; more than 0.
void setAspectScale(ScriptImage* self, float value);
/// Texture filtering mode, 0 or more.
void setFilter(ScriptImage* self, int filter);
void setRenderOrder(ScriptImage* self, float order);
float getScale(ScriptImage* self);
float getHeight(ScriptImage* self);
float getAspectScale(ScriptImage* self);
int getFilter(ScriptImage* self);
float getRenderOrder(ScriptImage* self);
/// Size of the image file in pixels (read when first asked for; 0 when the
/// file cannot be read).
int getPixelWidth(ScriptImage* self);
int getPixelHeight(ScriptImage* self);

/// "image addImage(const string &in, vec2)": a new image of a file at a
/// world position, one unit high, with a fresh id and name.
ScriptImage addImageAt(const std::string& file, ScriptVec2 center);
} // namespace ImageApi
