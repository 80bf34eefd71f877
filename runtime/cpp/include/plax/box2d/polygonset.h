#pragma once

#include <box2d/box2d.h>

namespace plax
{
/// What b2PolygonShape::Set (Box2D 2.4.1) makes of a list of points,
/// computed by repeating its steps in the same single-precision arithmetic:
/// the welding of points closer than half the linear slop, the gift-wrapping
/// hull from the rightmost point, and the area its centroid is computed from.
struct PolygonSetOutcome
{
    /// Points left after welding, in the given order (the first of two close
    /// points stays); at most b2_maxPolygonVertices are looked at.
    int weldedCount = 0;
    b2Vec2 welded[b2_maxPolygonVertices];
    /// The hull as positions among the welded points, counter-clockwise from
    /// the rightmost (lowest on a tie).
    int hullCount = 0;
    int hull[b2_maxPolygonVertices];
    /// The hull's area as Box2D computes it (0 without a hull).
    float area = 0;
    /// True when Box2D would assert: a count outside 3..8, fewer than three
    /// points after welding or on the hull, a hull that does not close within
    /// eight points, or an area not above b2_epsilon.
    bool asserts = true;
};

/// Predicts b2PolygonShape::Set for these points (nothing is built).
PolygonSetOutcome predictPolygonSet(const b2Vec2* points, int count);
} // namespace plax
