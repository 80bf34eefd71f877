// Bayazit's convex decomposition on double-precision rings.
#include "geometrytestutil.h"
#include "referencealgorithms.h"

#include "geometry/bayazit.h"
#include "geometry/convexpiece.h"
#include "geometry/signedarea.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace
{
std::vector<DVec2> wide(const std::vector<Vec2>& ring)
{
    std::vector<DVec2> out;
    for (const Vec2& v : ring)
        out.push_back(DVec2::from(v));
    return out;
}

double totalArea(const std::vector<std::vector<DVec2>>& pieces)
{
    double sum = 0;
    for (const auto& p : pieces)
        sum += signedArea(p);
    return sum;
}
} // namespace

TEST(Bayazit, ConvexRingIsOnePiece)
{
    std::vector<std::vector<DVec2>> pieces;
    const auto ring = wide(TestRings::regular(12));
    ASSERT_TRUE(bayazitDecompose(ring, pieces));
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0], ring);
}

TEST(Bayazit, LShapeSplitsAtTheReflexVertexByADiagonal)
{
    const std::vector<DVec2> ring{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
    std::vector<std::vector<DVec2>> pieces;
    ASSERT_TRUE(bayazitDecompose(ring, pieces));
    ASSERT_EQ(pieces.size(), 2u);
    for (const auto& p : pieces) {
        EXPECT_EQ(checkConvexPiece(p), PieceCheck::Ok);
        // A diagonal split adds no point: every piece vertex is a ring vertex.
        for (const DVec2& v : p)
            EXPECT_NE(std::find(ring.begin(), ring.end(), v), ring.end());
    }
    EXPECT_NEAR(totalArea(pieces), 3.0, 1e-12);
}

TEST(Bayazit, NotchWithNoVertexBetweenHitsUsesMidpointSteinerPoint)
{
    // Both edges at the notch tip, cast forward, hit the bottom edge (at x = 10/3
    // and x = 20/3); no vertex lies between, so the split point is (5, 0).
    const std::vector<DVec2> ring{{0, 0}, {10, 0}, {10, 4}, {5, 1}, {0, 4}};
    std::vector<std::vector<DVec2>> pieces;
    ASSERT_TRUE(bayazitDecompose(ring, pieces));
    ASSERT_EQ(pieces.size(), 2u);
    for (const auto& p : pieces) {
        EXPECT_EQ(checkConvexPiece(p), PieceCheck::Ok);
        const bool hasSteiner = std::any_of(p.begin(), p.end(), [](const DVec2& v) {
            return std::fabs(v.x - 5) < 1e-9 && std::fabs(v.y) < 1e-9;
        });
        EXPECT_TRUE(hasSteiner);
    }
    EXPECT_NEAR(totalArea(pieces), 25.0, 1e-9);
}

TEST(Bayazit, CombGivesConvexPiecesCoveringTheRing)
{
    const auto ring = TestRings::comb(10);
    std::vector<std::vector<DVec2>> pieces;
    ASSERT_TRUE(bayazitDecompose(wide(ring), pieces));
    EXPECT_GE(pieces.size(), 10u);
    for (const auto& p : pieces)
        EXPECT_EQ(checkConvexPiece(p), PieceCheck::Ok);
    EXPECT_NEAR(totalArea(pieces), TestRings::area(ring), 1e-6);
}

TEST(Bayazit, RefusesClockwiseDegenerateAndShortRings)
{
    std::vector<std::vector<DVec2>> pieces;
    EXPECT_FALSE(bayazitDecompose(wide(TestRings::reversed(TestRings::comb(3))), pieces));
    EXPECT_TRUE(pieces.empty());
    EXPECT_FALSE(bayazitDecompose({{0, 0}, {1, 0}, {2, 0}, {3, 0}}, pieces));
    EXPECT_FALSE(bayazitDecompose({{0, 0}, {1, 0}}, pieces));
    EXPECT_FALSE(bayazitDecompose({{0, 0}, {1, 0}, {std::numeric_limits<double>::infinity(), 1}}, pieces));
}

TEST(Bayazit, NonSimpleRingsEndWithoutHanging)
{
    // Self-overlapping rings: whatever the outcome, the call returns and any
    // pieces it gives are rings of at least three points.
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> coord(-5, 5);
    for (int trial = 0; trial < 300; ++trial) {
        std::vector<DVec2> ring;
        for (int i = 0; i < 4 + trial % 20; ++i)
            ring.push_back({coord(rng), coord(rng)});
        std::vector<std::vector<DVec2>> pieces;
        if (bayazitDecompose(ring, pieces)) {
            for (const auto& p : pieces)
                EXPECT_GE(p.size(), 3u);
        } else {
            EXPECT_TRUE(pieces.empty());
        }
    }
}

namespace
{
// Star with radii alternating `inner` and `outer`, and a densely sampled wobbly blob.
std::vector<DVec2> alternatingStar(int n, double inner, double outer)
{
    std::vector<DVec2> ring;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * std::numbers::pi * i / n;
        const double r = i % 2 ? outer : inner;
        ring.push_back({double(float(r * std::cos(a))), double(float(r * std::sin(a)))});
    }
    return ring;
}

std::vector<DVec2> wobblyBlob(std::mt19937& rng, int n, double noise)
{
    std::uniform_real_distribution<double> jitter(-noise, noise);
    std::vector<DVec2> ring;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * std::numbers::pi * i / n;
        const double r = 50 + 10 * std::sin(3 * a) + 3 * std::sin(17 * a);
        ring.push_back({double(float(r * std::cos(a) + jitter(rng))), double(float(r * std::sin(a) + jitter(rng)))});
    }
    return ring;
}
} // namespace

TEST(Bayazit, SamePiecesAsTheCopyingDecompositionOnManyRings)
{
    // Big rings switch from edge scans to the edge grid part way; small ones
    // never do. Either way the pieces, their order and their first points
    // must be those of the straightforward version.
    std::mt19937 rng(77);
    std::vector<std::vector<DVec2>> rings;
    for (int k = 0; k < 40; ++k)
        rings.push_back(wide(TestRings::randomStarShaped(rng, 5 + 7 * k, 0.5f, 4)));
    for (int teeth : {1, 5, 40, 150})
        rings.push_back(wide(TestRings::comb(teeth)));
    rings.push_back(wide(TestRings::comb(60, 0.5f, 0.4f, 2, 0)));
    for (int n : {10, 60, 400, 1500})
        rings.push_back(alternatingStar(n, 100, 200));
    rings.push_back(alternatingStar(300, 2, 2.5));
    for (int n : {200, 700, 1500})
        rings.push_back(wobblyBlob(rng, n, 0.002));
    rings.push_back(wobblyBlob(rng, 900, 0.5));
    int succeeded = 0;
    for (size_t k = 0; k < rings.size(); ++k) {
        std::vector<std::vector<DVec2>> expected;
        std::vector<std::vector<DVec2>> actual;
        const bool expectedOk = Reference::bayazitDecompose(rings[k], expected);
        EXPECT_EQ(bayazitDecompose(rings[k], actual), expectedOk) << "ring " << k;
        EXPECT_TRUE(actual == expected) << "ring " << k << " of " << rings[k].size() << " points";
        succeeded += expectedOk ? 1 : 0;
    }
    EXPECT_GT(succeeded, int(rings.size()) * 3 / 4);
}

TEST(Bayazit, PiecesAreJudgedOnceAsTheyAreMadeAndTheFirstRefusalEndsTheWork)
{
    const auto ring = wide(TestRings::comb(30));
    std::vector<std::vector<DVec2>> all;
    ASSERT_TRUE(bayazitDecompose(ring, all));
    ASSERT_GT(all.size(), 10u);

    // Every piece is judged exactly once, and `made` says which call judged it.
    std::vector<std::vector<DVec2>> seen;
    std::vector<std::vector<DVec2>> pieces;
    std::vector<int> made;
    auto judgeAll = [&](const std::vector<DVec2>& piece) {
        seen.push_back(piece);
        return true;
    };
    ASSERT_EQ(bayazitDecompose(ring, pieces, judgeAll, &made), BayazitOutcome::Done);
    EXPECT_TRUE(pieces == all);
    ASSERT_EQ(seen.size(), all.size());
    ASSERT_EQ(made.size(), all.size());
    std::vector<int> calls(made);
    std::sort(calls.begin(), calls.end());
    for (size_t k = 0; k < all.size(); ++k) {
        EXPECT_EQ(calls[k], int(k));
        EXPECT_TRUE(seen[size_t(made[k])] == all[k]) << "piece " << k;
    }

    // A refusal ends the decomposition: nothing more is judged, nothing is given.
    for (size_t refused = 0; refused < 4; ++refused) {
        size_t calls = 0;
        const auto outcome = bayazitDecompose(ring, pieces, [&](const std::vector<DVec2>&) {
            return calls++ < refused;
        }, &made);
        EXPECT_EQ(outcome, BayazitOutcome::PieceRejected);
        EXPECT_EQ(calls, refused + 1);
        EXPECT_TRUE(pieces.empty());
        EXPECT_TRUE(made.empty());
    }
}

TEST(Bayazit, ABadPieceIsFoundBeforeTheRestOfABigRingIsWorkedThrough)
{
    // The last piece given out is made early on (halves are given out in
    // reverse of the order they are queued): refusing it ends the work long
    // before the other pieces are made.
    const auto ring = wide(TestRings::comb(2000));
    std::vector<std::vector<DVec2>> all;
    ASSERT_TRUE(bayazitDecompose(ring, all));
    ASSERT_GT(all.size(), 1000u);
    size_t calls = 0;
    std::vector<std::vector<DVec2>> pieces;
    EXPECT_EQ(bayazitDecompose(ring, pieces, [&](const std::vector<DVec2>& piece) {
        ++calls;
        return piece != all.back();
    }), BayazitOutcome::PieceRejected);
    EXPECT_LT(calls, all.size() / 10);
}
