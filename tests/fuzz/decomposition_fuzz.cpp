// Polygon decomposition of any ring: every piece is convex, counter-clockwise,
// has 3 to 8 vertices and is taken over by Box2D unchanged; when the ring is
// simple and Bayazit's method kept it whole (nothing skipped), the pieces'
// areas add up to the ring's.
#include "fuzzsupport.h"

#include "geometry/box2dpolygon.h"
#include "geometry/decomposition.h"
#include "model/ringcheck.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace
{
double signedArea(const std::vector<Vec2>& ring)
{
    double twice = 0;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Vec2& a = ring[i];
        const Vec2& b = ring[(i + 1) % ring.size()];
        twice += double(a.x) * double(b.y) - double(b.x) * double(a.y);
    }
    return twice / 2;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzScratchFolder();
    // Two bytes a coordinate: a lattice of 0.01 units with a scale byte in front.
    if (size < 1)
        return 0;
    const float scale = 0.01f * float(1 + data[0] % 64);
    std::vector<Vec2> ring;
    for (size_t i = 1; i + 4 <= size && ring.size() < 64; i += 4) {
        std::int16_t x, y;
        std::memcpy(&x, data + i, 2);
        std::memcpy(&y, data + i + 2, 2);
        ring.push_back({float(x) * scale, float(y) * scale});
    }
    if (ring.size() < 3)
        return 0;
    const bool selfIntersecting = ringSelfIntersects(ring);
    for (DecompositionMethod method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
        const PolygonDecomposition result = decomposePolygon(ring, selfIntersecting, method);
        if (selfIntersecting && !result.pieces.empty())
            fuzzFailure("a self-intersecting ring has pieces");
        double area = 0;
        for (const std::vector<Vec2>& piece : result.pieces) {
            if (piece.size() < 3 || piece.size() > 8)
                fuzzFailure("a piece has fewer than 3 or more than 8 vertices");
            const Box2DPolygonJudgement judgement = judgeBox2DPolygon(piece);
            if (judgement.verdict != Box2DPolygonVerdict::Unchanged)
                fuzzFailure("Box2D would not take a piece unchanged");
            const double pieceArea = signedArea(piece);
            if (!(pieceArea > 0))
                fuzzFailure("a piece is not counter-clockwise");
            area += pieceArea;
        }
        const double ringArea = std::fabs(signedArea(ring));
        if (result.refusal == PolygonDecomposition::Refusal::None && !selfIntersecting &&
            result.skippedTriangles.empty() && !result.pieces.empty() &&
            std::fabs(area - ringArea) > 1e-3 * std::max(1.0, ringArea))
            fuzzFailure("the pieces' areas do not add up to the ring's");
    }
    return 0;
}
