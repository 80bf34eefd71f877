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

/// Lawson flips of the interior diagonals of a triangulation of the ring
/// (ring edges join consecutive indices and are never flipped) until each is
/// locally Delaunay: the corner across it lies outside, or within a rounding
/// margin of, the circumcircle of the triangle on its other side. Flat
/// triangles and non-convex quads are left alone; a budget bounds the flips.
void flipToDelaunay(const std::vector<DVec2>& points, std::vector<TriangleIndices>& triangles);
