#pragma once

#include "base/types.h"

#include <vector>

/// Earlier, slower versions of geometry routines, kept for the tests to check
/// that the current ones give the same answers.
namespace Reference
{
/// The ring self-intersection check testing every pair of edges whose x ranges overlap.
bool ringSelfIntersects(const std::vector<Vec2>& ring);
} // namespace Reference