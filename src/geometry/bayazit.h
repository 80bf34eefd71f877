#pragma once

#include "geometry/dvec2.h"

#include <functional>
#include <vector>

/// How a Bayazit decomposition ended.
enum class BayazitOutcome
{
    /// Every piece was finished (and accepted).
    Done,
    /// The routine refused the ring (see bayazitDecompose).
    Refused,
    /// The piece check turned down a finished piece; the rest was not computed.
    PieceRejected,
};

/// Judges a finished piece as soon as it is made; false stops the decomposition.
using BayazitPieceCheck = std::function<bool(const std::vector<DVec2>&)>;

/// Bayazit's convex decomposition of a simple counter-clockwise ring.
///
/// Every reflex vertex is resolved by casting its two edges forward to the
/// nearest edges they hit. When no vertex lies between the two hits the ring is
/// split at a Steiner point halfway between them; otherwise by a diagonal to
/// the best-scoring visible vertex in that range (near vertices and reflex
/// vertices the diagonal resolves score higher). Both halves are decomposed in
/// turn, the half starting at the reflex vertex first; a ring without reflex
/// vertices is a finished piece. Each ring resolves its first reflex vertex
/// in its own order, which starts at the reflex vertex for the first half and
/// at the diagonal's far end (or the Steiner point) for the second.
///
/// Halves are linked lists, not copies, and once the edge scans of a big ring
/// add up, a grid of that ring's edges answers its hit and visibility
/// queries; the pieces are the same either way.
///
/// Refused, with no pieces: fewer than three points, non-finite coordinates, a
/// clockwise or zero-area ring, a reflex vertex whose edges hit nothing or see
/// no vertex, or a split budget exceeded (rings that are not simple).
///
/// Each piece is handed to `check` (when given) once, as soon as it is made: a
/// split half without reflex vertices (or a convex ring) is a finished piece
/// long before its turn in the output comes, so a bad piece ends the work
/// early. The first piece it turns down ends the decomposition with
/// PieceRejected and no pieces. The check calls come in the order the pieces
/// are made, which is not the order of `pieces`; `made` (when given) receives,
/// for each entry of `pieces`, the number of the check call that judged it.
BayazitOutcome bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces,
                                const BayazitPieceCheck& check, std::vector<int>* made = nullptr);

/// The decomposition without a piece check; false when refused.
bool bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces);
