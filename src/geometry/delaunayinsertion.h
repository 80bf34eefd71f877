#pragma once

#include "geometry/dvec2.h"

#include <array>
#include <vector>

/// Constrained Delaunay triangulation of a simple counter-clockwise ring,
/// walked in the given order of its point indices, by incremental insertion:
/// the points go into a Delaunay triangulation one by one (in an order that
/// keeps consecutive points close, each located by walking from the last one
/// and settled by edge flips), the ring's edges that are missing are then
/// forced in by flipping the edges they cross, and the triangles inside the
/// ring are kept. Expected O(n log n).
///
/// Gives false, and no triangles, for rings it does not handle: repeated
/// points, points on other edges, or numerical trouble (a walk or flip budget
/// exceeded, a result that is not n - 2 counter-clockwise triangles inside the
/// ring adding up to its area); callers
/// then fall back to ear clipping. The triangles are triples of point indices,
/// counter-clockwise, Delaunay except next to forced edges (a pass of edge
/// flips afterwards settles those).
bool delaunayByInsertion(const std::vector<DVec2>& points, const std::vector<int>& order,
                         std::vector<std::array<int, 3>>& triangles);
