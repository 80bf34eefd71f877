#pragma once

#include "geometry/dvec2.h"

#include <array>
#include <vector>

/// One triangle as three indices into the triangulated ring, in counter-clockwise order.
using TriangleIndices = std::array<int, 3>;

/// Constrained Delaunay triangulation of a ring's interior, with the ring's
/// edges as the constraints and no added points.
///
/// The ring is first triangulated by ear clipping (clipEars; either winding is
/// accepted, a clockwise ring is walked backwards), then interior diagonals are flipped
/// (Lawson) until each one is locally Delaunay: the vertex across it lies
/// outside the circumcircle of the triangle on its other side. For a simple
/// ring that is the constrained Delaunay triangulation.
///
/// Never fails and always terminates: rings that are not simple or are
/// degenerate still give n - 2 index triples, some of which may be flat or
/// overlapping; callers drop triangles with too small an area. Empty for fewer
/// than three points or non-finite coordinates.
std::vector<TriangleIndices> triangulateRing(const std::vector<DVec2>& ring);
