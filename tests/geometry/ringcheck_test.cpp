// Self-intersection test of fixture vertex rings.
#include "geometrytestutil.h"
#include "referencealgorithms.h"

#include "model/metafixture.h"
#include "model/ringcheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(RingCheck, SimpleRingsDoNotIntersect)
{
    EXPECT_FALSE(ringSelfIntersects(TestRings::square()));
    EXPECT_FALSE(ringSelfIntersects(TestRings::star(7)));
    EXPECT_FALSE(ringSelfIntersects(TestRings::comb(12)));
    EXPECT_FALSE(ringSelfIntersects(TestRings::reversed(TestRings::comb(5))));
    EXPECT_FALSE(ringSelfIntersects(TestRings::withMidpoints(TestRings::regular(9))));
}

TEST(RingCheck, ShortRingsNeverIntersect)
{
    EXPECT_FALSE(ringSelfIntersects({}));
    EXPECT_FALSE(ringSelfIntersects({{0, 0}, {1, 1}}));
    EXPECT_FALSE(ringSelfIntersects({{0, 0}, {1, 0}, {2, 0}}));
}

TEST(RingCheck, CrossingEdgesDetected)
{
    // Bow tie: edges 0-1 and 2-3 cross.
    EXPECT_TRUE(ringSelfIntersects({{0, 0}, {1, 1}, {1, 0}, {0, 1}}));
    // The closing edge crosses an inner edge.
    EXPECT_TRUE(ringSelfIntersects({{0, 0}, {2, 0}, {2, 2}, {1, -1}, {0, 2}}));
}

TEST(RingCheck, TouchingCountsAsIntersecting)
{
    // Vertex 3 lies on edge 0-1 (a self-touching ring).
    EXPECT_TRUE(ringSelfIntersects({{0, 0}, {2, 0}, {2, 2}, {1, 0}, {0, 2}}));
    // Two vertices at the same place, not consecutive.
    EXPECT_TRUE(ringSelfIntersects({{0, 0}, {1, 0}, {1, 1}, {0, 0}, {-1, 1}, {-1, 0}}));
    // Collinear overlap of non-adjacent edges.
    EXPECT_TRUE(ringSelfIntersects({{0, 0}, {3, 0}, {3, 1}, {2, 1}, {2, 0}, {1, 0}, {1, 1}, {0, 1}}));
}

TEST(RingCheck, NonFiniteCoordinatesAreNotFlagged)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(ringSelfIntersects({{0, 0}, {1, 0}, {nan, 1}, {0, 1}}));
}

TEST(RingCheck, PairwiseAndSweepAgreeWithTheEarlierCheckOnDegenerateAndRandomRings)
{
    // Small integer coordinates make shared points, touching vertices,
    // vertical edges and co-linear overlaps common; the orientation tests are
    // exact there, so both checks must agree on every ring.
    std::mt19937 rng(2024);
    int intersecting = 0;
    int total = 0;
    for (int trial = 0; trial < 6000; ++trial) {
        const int n = 4 + trial % 13;
        const int span = 2 + trial % 5;
        std::uniform_int_distribution<int> coord(0, span);
        std::vector<Vec2> ring;
        for (int i = 0; i < n; ++i)
            ring.push_back({float(coord(rng)), float(coord(rng))});
        const bool expected = Reference::ringSelfIntersects(ring);
        ASSERT_EQ(ringSelfIntersects(ring), expected) << "trial " << trial;
        ASSERT_EQ(ringSelfIntersectsBySweep(ring), expected) << "sweep, trial " << trial;
        intersecting += expected ? 1 : 0;
        ++total;
    }
    // Simple rings, some pinched so that one vertex lands on another edge.
    for (int trial = 0; trial < 400; ++trial) {
        std::vector<Vec2> ring = TestRings::randomStarShaped(rng, 5 + trial % 200, 0.5f, 4);
        if (trial % 3 == 1)
            ring[size_t(trial) % ring.size()] = ring[(size_t(trial) + ring.size() / 2) % ring.size()];
        if (trial % 3 == 2) {
            const size_t k = size_t(trial) % (ring.size() - 3);
            ring[k + 3] = (ring[k] + ring[k + 1]) * 0.5f;
        }
        const bool expected = Reference::ringSelfIntersects(ring);
        ASSERT_EQ(ringSelfIntersects(ring), expected) << "star trial " << trial;
        ASSERT_EQ(ringSelfIntersectsBySweep(ring), expected) << "sweep, star trial " << trial;
        intersecting += expected ? 1 : 0;
        ++total;
    }
    // Random points at random scales: mostly crossing rings.
    for (int trial = 0; trial < 1000; ++trial) {
        std::uniform_real_distribution<float> coord(-1000, 1000);
        std::vector<Vec2> ring;
        for (int i = 0; i < 4 + trial % 40; ++i)
            ring.push_back({coord(rng), coord(rng) * (trial % 2 ? 1e-3f : 1.0f)});
        const bool expected = Reference::ringSelfIntersects(ring);
        ASSERT_EQ(ringSelfIntersects(ring), expected) << "random trial " << trial;
        ASSERT_EQ(ringSelfIntersectsBySweep(ring), expected) << "sweep, random trial " << trial;
    }
    // Both answers must be well represented for the comparison to mean anything.
    EXPECT_GT(intersecting, 1000);
    EXPECT_GT(total - intersecting, 300);
}

TEST(RingCheck, BigSimpleAndBigPinchedRings)
{
    // A star whose edges all span wide x ranges, and the same star with one
    // vertex moved onto the opposite edge.
    std::vector<Vec2> star;
    for (int i = 0; i < 20000; ++i) {
        const double a = 2 * 3.141592653589793 * i / 20000;
        const double r = i % 2 ? 200 : 100;
        star.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    EXPECT_FALSE(ringSelfIntersects(star));
    std::vector<Vec2> pinched = star;
    pinched[5000] = star[15000];
    EXPECT_TRUE(ringSelfIntersects(pinched));
    std::vector<Vec2> crossed = star;
    std::swap(crossed[7000], crossed[7002]);
    EXPECT_TRUE(ringSelfIntersects(crossed));
}

TEST(RingCheck, FixtureRecomputesFlagOnSetVertices)
{
    MetaFixture fixture;
    fixture.setVertices({{0, 0}, {1, 1}, {1, 0}, {0, 1}});
    EXPECT_TRUE(fixture.isSelfIntersecting());
    fixture.setVertices(TestRings::square());
    EXPECT_FALSE(fixture.isSelfIntersecting());
}

TEST(RingCheck, AnEditOfAFewPointsGivesTheWholeCheckAnswer)
{
    // Random edits of simple rings: points moved onto small integer spots
    // (so that touching, shared points and co-linear overlaps are common),
    // a point moved onto another point or edge, points made not finite, and
    // edits too big for the quick path. Each answer must be the whole check's.
    std::mt19937 rng(77);
    int crossing = 0;
    int simple = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        const int n = 4 + trial % 30;
        std::vector<Vec2> before;
        for (int i = 0; i < n; ++i) {
            const double a = 2 * 3.141592653589793 * i / n;
            before.push_back({float(std::round(6 * std::cos(a))), float(std::round(6 * std::sin(a)))});
        }
        if (ringSelfIntersects(before))
            continue;
        std::vector<Vec2> after = before;
        std::uniform_int_distribution<int> index(0, n - 1);
        std::uniform_int_distribution<int> spot(-7, 7);
        const int moves = trial % 7 == 6 ? 20 : 1 + trial % 3;
        for (int m = 0; m < moves; ++m) {
            Vec2& p = after[size_t(index(rng))];
            switch (trial % 5) {
            case 0: p = after[size_t(index(rng))]; break;
            case 1: {
                const size_t k = size_t(index(rng));
                p = (after[k] + after[(k + 1) % size_t(n)]) * 0.5f;
                break;
            }
            case 2:
                if (m == 0)
                    p.x = std::numeric_limits<float>::quiet_NaN();
                break;
            default: p = {float(spot(rng)), float(spot(rng))};
            }
        }
        const bool expected = ringSelfIntersects(after);
        ASSERT_EQ(ringSelfIntersectsAfterEdit(before, after), expected) << "trial " << trial;
        (expected ? crossing : simple) += 1;

        // The fixture keeps its flag through the same edits.
        MetaFixture fixture;
        fixture.setVertices(before);
        fixture.setVertices(after);
        ASSERT_EQ(fixture.isSelfIntersecting(), expected) << "trial " << trial;
    }
    EXPECT_GT(crossing, 500);
    EXPECT_GT(simple, 500);

    // A ring that held a point that is not finite says nothing about its edges.
    std::vector<Vec2> crossed = {{0, 0}, {2, 2}, {2, 0}, {0, 2}, {-1, 1}};
    std::vector<Vec2> hidden = crossed;
    hidden[4].x = std::numeric_limits<float>::infinity();
    ASSERT_FALSE(ringSelfIntersects(hidden));
    EXPECT_TRUE(ringSelfIntersectsAfterEdit(hidden, crossed));
}
