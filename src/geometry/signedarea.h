#pragma once

#include "base/types.h"
#include "geometry/dvec2.h"

#include <vector>

/// Signed area of a ring (positive when counter-clockwise), summed relative
/// to its first point so that it stays accurate far from the origin. Fewer
/// than three points have none.
double signedArea(const std::vector<DVec2>& ring);
/// Signed area of a ring of scene points, computed in double precision.
double signedArea(const std::vector<Vec2>& ring);
