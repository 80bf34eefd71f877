#pragma once

#include "api/scripthandles.h"

#include <string>

// The `object` handle's own methods (the members it shares with the other
// item handles are in scriptitemhandles). A changed file, an added and a
// deleted instance are attached or released at once through the document's
// object instance host.
namespace ObjectApi
{
std::string getFile(ScriptObject* self);
/// Gives the instance another object file. A file that is missing, cannot
/// be loaded or would place the scene inside itself is refused with the
/// object loader's message, and the instance stays as it was.
void setFile(ScriptObject* self, const std::string& file);
void setPosition(ScriptObject* self, float x, float y);
void setPositionV(ScriptObject* self, ScriptVec2 p);
void setAngle(ScriptObject* self, float angle);
/// Uniform scale; not 0.
void setScale(ScriptObject* self, float scale);
void setFlip(ScriptObject* self, int on);
void setFlipB(ScriptObject* self, bool on);
bool getFlip(ScriptObject* self);
float getAngle(ScriptObject* self);
float getScale(ScriptObject* self);

/// "object addObject(const string &in, vec2)": a new instance of an object
/// file at a world position, with a fresh id and name.
ScriptObject addObjectAt(const std::string& file, ScriptVec2 position);
} // namespace ObjectApi
