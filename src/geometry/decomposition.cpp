#include "geometry/decomposition.h"

#include "base/log.h"
#include "geometry/bayazit.h"
#include "geometry/convexpiece.h"
#include "geometry/geometryconstants.h"
#include "geometry/triangulation.h"
#include "geometry/vertexcheck.h"

namespace
{
std::vector<DVec2> widen(const std::vector<Vec2>& ring)
{
    std::vector<DVec2> out;
    out.reserve(ring.size());
    for (const Vec2& v : ring)
        out.push_back(DVec2::from(v));
    return out;
}

std::vector<Vec2> narrow(const std::vector<DVec2>& piece)
{
    std::vector<Vec2> out;
    out.reserve(piece.size());
    for (const DVec2& v : piece)
        out.push_back(v.toVec2());
    return out;
}

BayazitFailure failureFor(PieceCheck check)
{
    switch (check) {
    case PieceCheck::Ok: return BayazitFailure::None;
    case PieceCheck::CoLinear: return BayazitFailure::CoLinear;
    case PieceCheck::SmallArea:
    case PieceCheck::BadCount: return BayazitFailure::SmallArea;
    }
    return BayazitFailure::SmallArea;
}
} // namespace

void splitLargePiece(const std::vector<DVec2>& piece, std::vector<std::vector<DVec2>>& out)
{
    const size_t n = piece.size();
    if (n <= static_cast<size_t>(GeometryConstants::kMaxPolygonVertices)) {
        out.push_back(piece);
        return;
    }
    const size_t h = n / 2;
    std::vector<DVec2> first(piece.begin(), piece.begin() + h + 1);
    std::vector<DVec2> second(piece.begin() + h, piece.end());
    second.push_back(piece[0]);
    splitLargePiece(first, out);
    splitLargePiece(second, out);
}

BayazitFailure bayazitPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces)
{
    pieces.clear();
    std::vector<std::vector<DVec2>> convex;
    if (!bayazitDecompose(widen(ring), convex))
        return BayazitFailure::Winding;
    for (const std::vector<DVec2>& piece : convex) {
        const BayazitFailure failure = failureFor(checkConvexPiece(piece));
        if (failure != BayazitFailure::None)
            return failure;
    }
    std::vector<std::vector<Vec2>> result;
    for (const std::vector<DVec2>& piece : convex) {
        std::vector<std::vector<DVec2>> parts;
        splitLargePiece(piece, parts);
        for (const std::vector<DVec2>& part : parts) {
            std::vector<Vec2> single = narrow(part);
            const BayazitFailure failure = failureFor(checkBox2DPolygon(single));
            if (failure != BayazitFailure::None)
                return failure;
            result.push_back(std::move(single));
        }
    }
    pieces = std::move(result);
    return BayazitFailure::None;
}

void triangulationPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces,
                         std::vector<std::array<Vec2, 3>>& skipped)
{
    for (const TriangleIndices& t : triangulateRing(widen(ring))) {
        std::vector<Vec2> triangle{ring[t[0]], ring[t[1]], ring[t[2]]};
        if (checkBox2DPolygon(triangle) == PieceCheck::Ok)
            pieces.push_back(std::move(triangle));
        else
            skipped.push_back({triangle[0], triangle[1], triangle[2]});
    }
}

PolygonDecomposition decomposePolygon(const std::vector<Vec2>& ring, bool selfIntersecting,
                                      DecompositionMethod method)
{
    PolygonDecomposition result;
    if (!verticesUsable(ring)) {
        result.refusal = PolygonDecomposition::Refusal::InvalidCoordinates;
        return result;
    }
    result.coincidentIndex = findCoincidentVertices(ring);
    if (result.coincidentIndex >= 0) {
        result.refusal = PolygonDecomposition::Refusal::CoincidentVertices;
        return result;
    }
    if (selfIntersecting) {
        result.refusal = PolygonDecomposition::Refusal::SelfIntersecting;
        return result;
    }
    if (method != DecompositionMethod::Triangulation) {
        result.bayazitFailure = bayazitPieces(ring, result.pieces);
        if (result.bayazitFailure == BayazitFailure::None)
            return result;
    }
    result.triangulated = true;
    triangulationPieces(ring, result.pieces, result.skippedTriangles);
    return result;
}

void logDecomposition(const PolygonDecomposition& result, const std::vector<Vec2>& ring,
                      const QString& fixtureDescription)
{
    using Refusal = PolygonDecomposition::Refusal;
    switch (result.refusal) {
    case Refusal::InvalidCoordinates:
        plaxLog(LOG_WARNING,
                QStringLiteral("Aborting polygon fixture creation due to invalid vertex coordinates in fixture: %1")
                    .arg(fixtureDescription));
        return;
    case Refusal::CoincidentVertices: {
        const Vec2& a = ring[result.coincidentIndex];
        const Vec2& b = ring[(result.coincidentIndex + 1) % ring.size()];
        plaxLog(LOG_DEBUG, "Vertices are too close at (%f,%f) (%f,%f)", a.x, a.y, b.x, b.y);
        plaxLog(LOG_WARNING, QStringLiteral("Aborting polygon fixture creation due to coincident vertices in fixture: %1")
                                 .arg(fixtureDescription));
        return;
    }
    case Refusal::SelfIntersecting:
        plaxLog(LOG_WARNING, QStringLiteral("Aborting polygon decomposition for self-intersecting fixture: %1")
                                 .arg(fixtureDescription));
        return;
    case Refusal::None: break;
    }
    if (result.bayazitFailure != BayazitFailure::None) {
        plaxLog(LOG_WARNING,
                QStringLiteral("Bayazit decomposition attempt failed, falling back to poly2tri for fixture: %1")
                    .arg(fixtureDescription));
        switch (result.bayazitFailure) {
        case BayazitFailure::Winding:
            plaxLog(LOG_WARNING, "    This can be caused by using polygons with a non-counter-clockwise winding");
            break;
        case BayazitFailure::CoLinear:
            plaxLog(LOG_WARNING, "    This can be caused by polygons with co-linear vertices - you could try moving "
                                 "some so that they are not perfectly in a line.");
            break;
        case BayazitFailure::SmallArea:
            plaxLog(LOG_WARNING, "    This can be caused by the decomposition calculation producing a sub-polygon "
                                 "with too small an area.");
            break;
        case BayazitFailure::None: break;
        }
    }
    for (const std::array<Vec2, 3>& t : result.skippedTriangles) {
        plaxLog(LOG_ERROR, "Triangle was not created because the area is too small (body coords): (%f%f),(%f%f),(%f%f)",
                t[0].x, t[0].y, t[1].x, t[1].y, t[2].x, t[2].y);
    }
}
