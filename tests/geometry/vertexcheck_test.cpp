// Coincidence check, coordinate check and edge quads.
#include "geometrytestutil.h"
#include "support/logcapture.h"

#include "geometry/edgequad.h"
#include "geometry/vertexcheck.h"

#include <gtest/gtest.h>

#include <limits>

TEST(CoincidenceCheck, ShortListsPass)
{
    EXPECT_EQ(findCoincidentVertices({}), -1);
    EXPECT_EQ(findCoincidentVertices({{1, 1}}), -1);
}

TEST(CoincidenceCheck, ThresholdIsInclusiveSquaredDistance)
{
    // Distance 0.004 (squared 1.6e-05) coincides; 0.006 (3.6e-05) does not.
    EXPECT_EQ(findCoincidentVertices({{0, 0}, {0.004f, 0}, {1, 1}}), 0);
    EXPECT_EQ(findCoincidentVertices({{0, 0}, {0.006f, 0}, {1, 1}}), -1);
    EXPECT_EQ(findCoincidentVertices({{0, 0}, {0.003f, 0.00399f}, {1, 1}}), 0);
}

TEST(CoincidenceCheck, ClosingPairIsCompared)
{
    // First and last vertex within 0.005: refused even though the middle is fine.
    EXPECT_EQ(findCoincidentVertices({{0, 0}, {1, 0}, {1, 1}, {0.001f, 0.002f}}), 3);
    EXPECT_EQ(findCoincidentVertices({{0, 0}, {0, 0}}), 0);
}

TEST(VertexUsability, RejectsNonFiniteAndHugeCoordinates)
{
    EXPECT_TRUE(verticesUsable(TestRings::square(1000)));
    EXPECT_TRUE(verticesUsable({}));
    EXPECT_FALSE(verticesUsable({{0, 0}, {std::numeric_limits<float>::quiet_NaN(), 0}}));
    EXPECT_FALSE(verticesUsable({{0, std::numeric_limits<float>::infinity()}}));
    EXPECT_FALSE(verticesUsable({{0, 0}, {1e30f, 0}}));
}

TEST(EdgeQuad, CornersFollowTheEdgeNormal)
{
    const auto q = edgeQuad({0, 0}, {2, 0}, 0.5f);
    // d = (1,0), o = (0,0.5): v0 - o, v1 - o, v1 + o, v0 + o.
    EXPECT_EQ(q[0], (Vec2{0, -0.5f}));
    EXPECT_EQ(q[1], (Vec2{2, -0.5f}));
    EXPECT_EQ(q[2], (Vec2{2, 0.5f}));
    EXPECT_EQ(q[3], (Vec2{0, 0.5f}));
    EXPECT_TRUE(TestRings::isConvexCcw({q.begin(), q.end()}));
}

TEST(EdgeQuad, ZeroLengthEdgeIsNotNormalised)
{
    const auto q = edgeQuad({1, 1}, {1, 1}, 0.5f);
    for (const Vec2& corner : q)
        EXPECT_EQ(corner, (Vec2{1, 1}));
}
