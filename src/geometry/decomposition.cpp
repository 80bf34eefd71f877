#include "geometry/decomposition.h"

#include "base/log.h"
#include "geometry/bayazit.h"
#include "geometry/box2dpolygon.h"
#include "geometry/convexpiece.h"
#include "geometry/geometryconstants.h"
#include "geometry/signedarea.h"
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

bool box2DReadyParts(const std::vector<Vec2>& part, std::vector<std::vector<Vec2>>& out, BayazitFailure& failure)
{
    const Box2DPolygonJudgement judgement = judgeBox2DPolygon(part);
    switch (judgement.verdict) {
    case Box2DPolygonVerdict::Unchanged:
        if (!verticesUsable(part) || !(signedArea(part) > GeometryConstants::kDegenerateArea))
            break;
        out.push_back(part);
        return true;
    case Box2DPolygonVerdict::HullChanged: {
        const int k = static_cast<int>(part.size());
        const int v = judgement.droppedIndex;
        if (k <= 3 || v < 0) {
            failure = BayazitFailure::CoLinear;
            return false;
        }
        // Cut from the dropped corner, most even cut first: the corner's
        // angle is shared out and no part keeps it nearly straight.
        for (int step = 0; step < k; ++step) {
            const int offset = k / 2 + (step % 2 ? (step + 1) / 2 : -(step / 2));
            if (offset < 2 || offset > k - 2)
                continue;
            std::vector<Vec2> first;
            std::vector<Vec2> second;
            for (int m = 0; m <= offset; ++m)
                first.push_back(part[size_t((v + m) % k)]);
            for (int m = offset; m <= k; ++m)
                second.push_back(part[size_t((v + m) % k)]);
            std::vector<std::vector<Vec2>> parts;
            BayazitFailure ignored = BayazitFailure::None;
            if (box2DReadyParts(first, parts, ignored) && box2DReadyParts(second, parts, ignored)) {
                out.insert(out.end(), parts.begin(), parts.end());
                return true;
            }
        }
        failure = BayazitFailure::CoLinear;
        return false;
    }
    case Box2DPolygonVerdict::BadCount:
    case Box2DPolygonVerdict::Welded:
    case Box2DPolygonVerdict::AreaTooSmall: break;
    }
    failure = BayazitFailure::SmallArea;
    return false;
}

BayazitFailure bayazitPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces)
{
    pieces.clear();
    // Box2D-ready parts of each piece, in the order the pieces were made.
    std::vector<std::vector<std::vector<Vec2>>> made;
    BayazitFailure failure = BayazitFailure::None;
    auto accept = [&](const std::vector<DVec2>& piece) {
        failure = failureFor(checkConvexPiece(piece));
        if (failure != BayazitFailure::None)
            return false;
        std::vector<std::vector<DVec2>> parts;
        splitLargePiece(piece, parts);
        std::vector<std::vector<Vec2>> ready;
        for (const std::vector<DVec2>& part : parts) {
            if (!box2DReadyParts(narrow(part), ready, failure))
                return false;
        }
        made.push_back(std::move(ready));
        return true;
    };
    std::vector<std::vector<DVec2>> convex;
    std::vector<int> order;
    switch (bayazitDecompose(widen(ring), convex, accept, &order)) {
    case BayazitOutcome::Refused: return BayazitFailure::Winding;
    case BayazitOutcome::PieceRejected: return failure;
    case BayazitOutcome::Done: break;
    }
    for (int k : order) {
        for (std::vector<Vec2>& part : made[size_t(k)])
            pieces.push_back(std::move(part));
    }
    return BayazitFailure::None;
}

void triangulationPieces(const std::vector<Vec2>& ring, std::vector<std::vector<Vec2>>& pieces,
                         std::vector<SkippedTriangle>& skipped)
{
    for (const TriangleIndices& t : triangulateRing(widen(ring))) {
        std::vector<Vec2> triangle{ring[size_t(t[0])], ring[size_t(t[1])], ring[size_t(t[2])]};
        TriangleRefusal reason = TriangleRefusal::SmallArea;
        if (signedArea(triangle) > GeometryConstants::kDegenerateArea) {
            switch (judgeBox2DPolygon(triangle).verdict) {
            case Box2DPolygonVerdict::Unchanged: pieces.push_back(std::move(triangle)); continue;
            case Box2DPolygonVerdict::Welded: reason = TriangleRefusal::Welded; break;
            case Box2DPolygonVerdict::HullChanged: reason = TriangleRefusal::Flat; break;
            case Box2DPolygonVerdict::AreaTooSmall: reason = TriangleRefusal::Box2DArea; break;
            case Box2DPolygonVerdict::BadCount: break;
            }
        }
        skipped.push_back({{triangle[0], triangle[1], triangle[2]}, reason});
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
    for (const SkippedTriangle& skipped : result.skippedTriangles) {
        const char* format = nullptr;
        switch (skipped.reason) {
        case TriangleRefusal::SmallArea:
            format = "Triangle was not created because the area is too small (body coords): (%f%f),(%f%f),(%f%f)";
            break;
        case TriangleRefusal::Welded:
            format = "Triangle was not created because two corners are closer than Box2D's welding distance (body "
                     "coords): (%f%f),(%f%f),(%f%f)";
            break;
        case TriangleRefusal::Flat:
            format = "Triangle was not created because Box2D's single-precision hull finds its corners in a line "
                     "(body coords): (%f%f),(%f%f),(%f%f)";
            break;
        case TriangleRefusal::Box2DArea:
            format = "Triangle was not created because its single-precision area is too small for Box2D (body "
                     "coords): (%f%f),(%f%f),(%f%f)";
            break;
        }
        const std::array<Vec2, 3>& t = skipped.corners;
        plaxLog(LOG_ERROR, format, t[0].x, t[0].y, t[1].x, t[1].y, t[2].x, t[2].y);
    }
}
