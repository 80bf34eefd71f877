#pragma once

#include "geometry/dvec2.h"

#include <vector>

/// Bayazit's convex decomposition of a simple counter-clockwise ring.
///
/// Every reflex vertex is resolved by casting its two edges forward to the
/// nearest edges they hit. When no vertex lies between the two hits the ring is
/// split at a Steiner point halfway between them; otherwise by a diagonal to
/// the best-scoring visible vertex in that range (near vertices and reflex
/// vertices the diagonal resolves score higher). Both halves are decomposed in
/// turn; a ring without reflex vertices is a finished piece.
///
/// Returns false, with no pieces, when the routine refuses the ring: fewer than
/// three points, non-finite coordinates, a clockwise or zero-area ring, a reflex
/// vertex whose edges hit nothing or see no vertex, or a split budget exceeded
/// (rings that are not simple). Pieces are not checked for area or co-linearity.
bool bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces);
