// Properties of decomposition over many generated polygons.
#include "geometrytestutil.h"

#include "geometry/convexpiece.h"
#include "geometry/decomposition.h"
#include "model/ringcheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace
{
struct Named
{
    std::string name;
    std::vector<Vec2> ring;
};

// Simple polygons of several families, both windings.
std::vector<Named> generatedPolygons()
{
    std::vector<Named> out;
    std::mt19937 rng(20240611);
    for (int n = 3; n <= 40; n += 3)
        out.push_back({"regular" + std::to_string(n), TestRings::regular(n, 1.5f, {3, -2})});
    for (int p = 3; p <= 25; p += 2)
        out.push_back({"star" + std::to_string(p), TestRings::star(p)});
    for (int t = 1; t <= 15; ++t)
        out.push_back({"comb" + std::to_string(t), TestRings::comb(t)});
    for (int k = 0; k < 60; ++k)
        out.push_back({"random" + std::to_string(k), TestRings::randomStarShaped(rng, 5 + k, 0.5f, 4)});
    out.push_back({"collinear-comb-straight", TestRings::comb(6, 0.5f, 0.4f, 2, 0)});
    out.push_back({"collinear-square", TestRings::withMidpoints(TestRings::square(3))});
    out.push_back({"collinear-comb", TestRings::withMidpoints(TestRings::comb(5), 3)});
    out.push_back({"collinear-star", TestRings::withMidpoints(TestRings::star(6), 2)});
    out.push_back({"tiny-star", TestRings::star(5, 0.05f, 0.02f)});
    out.push_back({"huge-comb", TestRings::comb(4, 5000, 4000, 20000, 3000)});
    const size_t base = out.size();
    for (size_t i = 0; i < base; ++i)
        out.push_back({out[i].name + "-cw", TestRings::reversed(out[i].ring)});
    return out;
}

void expectBox2DReadyPieces(const Named& polygon, const PolygonDecomposition& result)
{
    SCOPED_TRACE(polygon.name);
    ASSERT_EQ(result.refusal, PolygonDecomposition::Refusal::None);
    EXPECT_TRUE(result.skippedTriangles.empty());
    double sum = 0;
    for (const std::vector<Vec2>& piece : result.pieces) {
        EXPECT_GE(piece.size(), 3u);
        EXPECT_LE(piece.size(), 8u);
        EXPECT_TRUE(TestRings::isConvexCcw(piece));
        EXPECT_GT(TestRings::area(piece), 2.3841858e-07);
        EXPECT_EQ(checkBox2DPolygon(piece), PieceCheck::Ok);
        sum += TestRings::area(piece);
    }
    const double expected = std::fabs(TestRings::area(polygon.ring));
    EXPECT_NEAR(sum, expected, 1e-5 * expected);
}
} // namespace

TEST(DecompositionProperties, GeneratedPolygonsAreSimple)
{
    // Guards the generators themselves: the properties below assume simple rings.
    for (const Named& polygon : generatedPolygons())
        EXPECT_FALSE(ringSelfIntersects(polygon.ring)) << polygon.name;
}

TEST(DecompositionProperties, BayazitWithFallbackCoversEveryPolygonWithConvexPieces)
{
    int bayazitSucceeded = 0;
    int counterClockwiseWithoutCollinear = 0;
    for (const Named& polygon : generatedPolygons()) {
        const auto result = decomposePolygon(polygon.ring, false, DecompositionMethod::Bayazit);
        expectBox2DReadyPieces(polygon, result);
        const bool ccw = TestRings::area(polygon.ring) > 0;
        if (ccw && polygon.name.find("collinear") == std::string::npos) {
            ++counterClockwiseWithoutCollinear;
            bayazitSucceeded += result.bayazitFailure == BayazitFailure::None ? 1 : 0;
        }
        if (!ccw) {
            EXPECT_EQ(result.bayazitFailure, BayazitFailure::Winding) << polygon.name;
        }
        if (polygon.name.starts_with("comb") || polygon.name.starts_with("star") ||
            polygon.name.starts_with("regular")) {
            EXPECT_EQ(result.bayazitFailure, ccw ? BayazitFailure::None : BayazitFailure::Winding) << polygon.name;
        }
    }
    // Bayazit's method itself must handle nearly all ordinary polygons.
    EXPECT_GE(bayazitSucceeded * 10, counterClockwiseWithoutCollinear * 9);
}

TEST(DecompositionProperties, TriangulationCoversEveryPolygonWithTriangles)
{
    for (const Named& polygon : generatedPolygons()) {
        const auto result = decomposePolygon(polygon.ring, false, DecompositionMethod::Triangulation);
        expectBox2DReadyPieces(polygon, result);
        EXPECT_EQ(result.pieces.size(), polygon.ring.size() - 2) << polygon.name;
    }
}

TEST(DecompositionProperties, ArbitraryVertexListsNeverYieldUnsafePieces)
{
    // Random junk: crossing rings, duplicates, collinear runs, extreme scales,
    // non-finite values. Pieces, when any, are always safe for Box2D.
    std::mt19937 rng(99);
    std::uniform_int_distribution<int> kind(0, 5);
    const float scales[] = {1e-4f, 1e-2f, 1, 100, 1e6f};
    for (int trial = 0; trial < 400; ++trial) {
        const float scale = scales[trial % 5];
        std::uniform_real_distribution<float> coord(-scale, scale);
        std::vector<Vec2> ring;
        const int n = 3 + trial % 30;
        for (int i = 0; i < n; ++i) {
            switch (kind(rng)) {
            case 0: ring.push_back(ring.empty() ? Vec2{0, 0} : ring.back()); break;
            case 1: ring.push_back({coord(rng), 0}); break;
            case 2:
                if (trial % 50 == 0)
                    ring.push_back({std::numeric_limits<float>::quiet_NaN(), 1});
                else
                    ring.push_back({coord(rng), coord(rng)});
                break;
            default: ring.push_back({coord(rng), coord(rng)}); break;
            }
        }
        for (auto method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
            const auto result = decomposePolygon(ring, ringSelfIntersects(ring), method);
            for (const std::vector<Vec2>& piece : result.pieces)
                EXPECT_EQ(checkBox2DPolygon(piece), PieceCheck::Ok) << "trial " << trial;
        }
    }
}
