#pragma once

#include "plax/scene.h"

#include <string>
#include <string_view>

namespace plax
{
/// Reads raw-info JSON text into a scene description. Every float encoding
/// the editor writes is accepted (eight hex digits of the bit pattern, the
/// integers 0 and 1, JSON reals), and vectors as {"x","y"} or the number 0.
/// Missing members take their defaults (an export may leave members out).
/// Malformed input, a member of the wrong type, a non-finite physical value
/// or a reference to a body or joint that is not there, fails the read with
/// an error naming the member as a JSON pointer, for example
/// "/body/3/fixture/0/circle/radius: expected a float, found an array"; the
/// scene is then left empty. Never throws.
bool readRawInfo(std::string_view json, SceneDescription& scene, std::string* error);

/// The same reading a NUL-terminated buffer in place: faster for large files;
/// the buffer's contents are changed.
bool readRawInfoInPlace(char* json, SceneDescription& scene, std::string* error);

/// Reads a raw-info file; an error names the file when it cannot be read.
bool readRawInfoFile(const std::string& path, SceneDescription& scene, std::string* error);
} // namespace plax
