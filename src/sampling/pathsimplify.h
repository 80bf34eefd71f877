#pragma once

#include "base/types.h"

#include <vector>

/// Simplifies a line of points (closed: a ring whose last point joins the
/// first). Always drops repeated points and points on a straight line with
/// their neighbours. Then, while a point turns the line by less than
/// `minAngleDegrees`, the point turning least is dropped; then, while more
/// than `maxPoints` remain (0: no limit), the point whose removal changes
/// the area least is dropped. A ring keeps at least three points and an
/// open line its two ends.
std::vector<Vec2> simplifyPath(const std::vector<Vec2>& points, bool closed, int maxPoints, float minAngleDegrees);
