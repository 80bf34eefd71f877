#pragma once

#include "base/types.h"

#include <vector>

/// True when two non-adjacent edges of the closed ring through the points
/// intersect (touching counts). Rings of fewer than four points never do.
bool ringSelfIntersects(const std::vector<Vec2>& ring);
