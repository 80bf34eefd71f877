#pragma once

#include "base/types.h"
#include "geometry/dvec2.h"

#include <vector>

/// Earlier, slower versions of geometry routines, kept for the tests to check
/// that the current ones give the same answers.
namespace Reference
{
/// Bayazit's decomposition with copied halves and full edge scans.
bool bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces);
/// The ring self-intersection check testing every pair of edges whose x ranges overlap.
bool ringSelfIntersects(const std::vector<Vec2>& ring);
} // namespace Reference
