#pragma once

#include "geometry/dvec2.h"

#include <array>
#include <vector>

/// Triangulates a counter-clockwise ring, walked in the given order of its
/// point indices, by clipping ears: corners turning strictly left whose
/// triangle holds no other remaining point (points on its sides count as
/// inside, points equal to its corners do not).
///
/// Ears are clipped in rounds around the ring, skipping the neighbour of each
/// clipped corner, so that triangles stay local and roughly even in size
/// (clipping around one vertex would make a fan of long thin triangles). The
/// remaining points are kept in a grid, so an ear test looks only at the
/// points near its triangle. A round that finds no ear (rings that are not
/// simple, or flat) clips the most convex corner, or else the flattest one, so
/// that the loop always ends. Gives n - 2 triangles as triples of point
/// indices, counter-clockwise for a counter-clockwise ring.
std::vector<std::array<int, 3>> clipEars(const std::vector<DVec2>& points, const std::vector<int>& order);
