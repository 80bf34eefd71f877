#pragma once

#include "base/types.h"
#include "geometry/dvec2.h"

#include <QString>

#include <array>
#include <vector>

/// How polygon shapes are split into convex pieces (setting "devstuff/polygondecompositionmethod").
enum class DecompositionMethod : int
{
    /// Bayazit's method, falling back to triangulation when it fails.
    Bayazit = 0,
    /// Constrained Delaunay triangulation only.
    Triangulation = 1,
};

/// Why a Bayazit attempt was given up.
enum class BayazitFailure
{
    None,
    /// The routine refused the ring (clockwise, degenerate or not simple).
    Winding,
    /// A piece has (nearly) co-linear vertices.
    CoLinear,
    /// A piece has too small an area (or points Box2D would merge).
    SmallArea,
};

/// Why a triangle of the triangulation was left out.
enum class TriangleRefusal
{
    /// Its area is at most the degenerate area.
    SmallArea,
    /// Two corners are closer than Box2D's welding distance.
    Welded,
    /// Box2D's single-precision hull finds the corners in a line.
    Flat,
    /// Its single-precision area, as Box2D computes it, is too small for Box2D.
    Box2DArea,
};

/// A triangle left out of a triangulation, with the reason.
struct SkippedTriangle
{
    std::array<Vec2, 3> corners;
    TriangleRefusal reason = TriangleRefusal::SmallArea;
};

/// The convex pieces of one polygon ring, ready to become Box2D polygons, and
/// what happened on the way. Computing it logs nothing; see logDecomposition.
struct PolygonDecomposition
{
    /// Reasons to build nothing at all.
    enum class Refusal
    {
        None,
        /// A coordinate is not finite or beyond the supported magnitude.
        InvalidCoordinates,
        /// Two consecutive vertices (closing pair included) coincide.
        CoincidentVertices,
        /// The ring crosses itself.
        SelfIntersecting,
    };

    Refusal refusal = Refusal::None;
    /// First vertex of the coincident pair, when refused for that.
    int coincidentIndex = -1;
    /// Set when Bayazit's method was tried and failed (the pieces then come from triangulation).
    BayazitFailure bayazitFailure = BayazitFailure::None;
    /// True when the pieces are triangles of the triangulation.
    bool triangulated = false;
    /// Convex counter-clockwise pieces of 3 to 8 points that Box2D takes unchanged.
    std::vector<std::vector<Vec2>> pieces;
    /// Triangles left out: degenerate area, or Box2D would not take them.
    std::vector<SkippedTriangle> skippedTriangles;
};

/// Decomposes a polygon ring (body coordinates, expected counter-clockwise):
/// coordinate and coincidence checks, the self-intersection refusal, then the
/// method (Bayazit with fallback, or triangulation only). Pieces of Bayazit's
/// method with more than 8 vertices are split. Pure: safe to call for drawing.
PolygonDecomposition decomposePolygon(const std::vector<Vec2>& ring, bool selfIntersecting,
                                      DecompositionMethod method);

/// Writes the log lines for a decomposition of the named fixture: refusals,
/// the Bayazit fallback warning with its reason, and skipped triangles.
void logDecomposition(const PolygonDecomposition& result, const std::vector<Vec2>& ring,
                      const QString& fixtureDescription);

/// Bayazit's method with the piece checks and the split of large pieces;
/// fills pieces only on success. Each piece is checked as soon as Bayazit's
/// method makes it (area, then co-linearity in double precision), so a failing
/// attempt stops at the first bad piece made, usually long before the whole
/// ring is worked through; the failure is that piece's. Parts (after the split of
/// large pieces) that Box2D's single-precision hull would shrink are cut
/// further, from the corner it drops, until Box2D takes every part unchanged;
/// when no cut helps the attempt fails as co-linear.
BayazitFailure bayazitPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces);

/// Triangulation pieces: a triangle is left out (to skipped) only when its
/// area is at most the degenerate area or Box2D would not take it unchanged;
/// thin triangles that Box2D accepts are kept.
void triangulationPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces,
                         std::vector<SkippedTriangle>& skipped);

/// Cuts a part until Box2D takes every piece of it unchanged (see
/// bayazitPieces), appending them to out; false, with the failure, when it
/// cannot.
bool box2DReadyParts(const std::vector<Vec2>& part, std::vector<std::vector<Vec2>>& out, BayazitFailure& failure);

/// Splits a convex piece of more than 8 vertices: with h = n / 2 the first part
/// is vertices 0..h, the second h..n-1 followed by 0; parts still over 8 are
/// split again. Pieces of at most 8 vertices are appended unchanged.
void splitLargePiece(const std::vector<DVec2>& piece, std::vector<std::vector<DVec2>>& out);
