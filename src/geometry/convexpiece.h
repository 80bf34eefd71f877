#pragma once

#include "base/types.h"
#include "geometry/dvec2.h"

#include <vector>

/// Outcome of checking one convex piece before it becomes a Box2D polygon.
enum class PieceCheck
{
    Ok,
    /// Fewer than 3 or more than 8 points, or a coordinate that is not usable.
    BadCount,
    /// Area at most the degenerate area, or two points close enough for Box2D to merge them.
    SmallArea,
    /// A corner that is straight, reflex or flatter than the co-linearity
    /// tolerance, or one that Box2D's single-precision hull drops.
    CoLinear,
};

/// Checks a finished piece in double precision: area, then strict convexity of
/// every corner in counter-clockwise order. No vertex-count limit.
PieceCheck checkConvexPiece(const std::vector<DVec2>& piece);

/// Checks a piece the way b2PolygonShape::Set will take it (see
/// judgeBox2DPolygon): 3 to 8 usable points that Box2D keeps unchanged in
/// single precision (no welding, no point left out of its hull, counter-
/// clockwise), and an area above the degenerate area. No co-linearity rule
/// beyond Box2D's own. A piece that passes is taken over by Box2D unchanged,
/// without assertion.
PieceCheck checkBox2DPolygon(const std::vector<Vec2>& piece);
