#pragma once

#include "base/types.h"

#include <vector>

/// What b2PolygonShape::Set (Box2D 2.4.1) makes of a list of points.
enum class Box2DPolygonVerdict
{
    /// Box2D keeps every point, in the same cyclic order, and asserts nothing.
    Unchanged,
    /// Fewer than 3 or more than 8 points (an assertion in Box2D).
    BadCount,
    /// Two points closer than Box2D's welding distance: it merges them.
    Welded,
    /// Box2D's single-precision convex hull leaves out a point, reorders
    /// them, or collapses (an assertion when fewer than 3 remain).
    HullChanged,
    /// The hull's single-precision area is at most FLT_EPSILON (an assertion).
    AreaTooSmall,
};

/// The outcome of handing points to Box2D's polygon constructor.
struct Box2DPolygonJudgement
{
    Box2DPolygonVerdict verdict = Box2DPolygonVerdict::BadCount;
    /// Box2D's polygon vertices when it builds one (after welding and hull).
    std::vector<Vec2> hull;
    /// Index of the first given point the hull leaves out, or -1.
    int droppedIndex = -1;
    /// The hull's area as Box2D computes it (when the hull has 3 points or more);
    /// Box2D asserts unless it is above FLT_EPSILON.
    float area = 0;
};

/// Repeats Box2D's own construction in the same single-precision arithmetic
/// (plax::predictPolygonSet of the runtime library, which loads exports):
/// the welding of points closer than half the linear slop, the gift-wrapping
/// hull starting at the rightmost point, and the area that its centroid
/// computation asserts on. Unchanged means Box2D takes the points over as they
/// are; anything else would change the shape or stop the process.
Box2DPolygonJudgement judgeBox2DPolygon(const std::vector<Vec2>& points);
