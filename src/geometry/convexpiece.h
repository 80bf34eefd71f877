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
    /// A corner that is straight, reflex or so flat that Box2D's hull could drop it.
    CoLinear,
};

/// Signed area of a ring (positive when counter-clockwise).
double signedArea(const std::vector<DVec2>& ring);
/// Signed area of a ring of scene points, computed in double precision.
double signedArea(const std::vector<Vec2>& ring);

/// Checks a finished piece in double precision: area, then strict convexity of
/// every corner in counter-clockwise order. No vertex-count limit.
PieceCheck checkConvexPiece(const std::vector<DVec2>& piece);

/// Checks a piece exactly as it will be handed to b2PolygonShape::Set: 3 to 8
/// points, usable coordinates, no two points that Box2D would weld, positive
/// area above the degenerate area and strictly convex counter-clockwise corners.
/// A piece that passes is taken over by Box2D unchanged, without assertion.
PieceCheck checkBox2DPolygon(const std::vector<Vec2>& piece);
