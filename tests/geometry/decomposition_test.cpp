// The polygon pipeline: refusals, Bayazit with fallback, splits, messages, settings.
#include "geometrytestutil.h"
#include "support/logcapture.h"

#include "geometry/box2dpolygon.h"
#include "geometry/convexpiece.h"
#include "geometry/decomposition.h"
#include "geometry/decompositionsettings.h"

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace
{
const QString kFallback = "Bayazit decomposition attempt failed, falling back to poly2tri for fixture: b/f";
const QString kWinding = "    This can be caused by using polygons with a non-counter-clockwise winding";
const QString kCoLinear = "    This can be caused by polygons with co-linear vertices - you could try moving some so "
                          "that they are not perfectly in a line.";
const QString kSmallArea =
    "    This can be caused by the decomposition calculation producing a sub-polygon with too small an area.";

PolygonDecomposition decomposeAndLog(const std::vector<Vec2>& ring, DecompositionMethod method,
                                     bool selfIntersecting = false)
{
    PolygonDecomposition result = decomposePolygon(ring, selfIntersecting, method);
    logDecomposition(result, ring, "b/f");
    return result;
}
} // namespace

TEST(Decomposition, ConvexEightIsOnePieceAndNineIsSplit)
{
    auto eight = decomposePolygon(TestRings::regular(8), false, DecompositionMethod::Bayazit);
    ASSERT_EQ(eight.pieces.size(), 1u);
    EXPECT_EQ(eight.pieces[0], TestRings::regular(8));

    const auto ring = TestRings::regular(9);
    auto nine = decomposePolygon(ring, false, DecompositionMethod::Bayazit);
    ASSERT_EQ(nine.pieces.size(), 2u);
    EXPECT_EQ(nine.pieces[0], (std::vector<Vec2>{ring[0], ring[1], ring[2], ring[3], ring[4]}));
    EXPECT_EQ(nine.pieces[1], (std::vector<Vec2>{ring[4], ring[5], ring[6], ring[7], ring[8], ring[0]}));
    EXPECT_EQ(nine.bayazitFailure, BayazitFailure::None);
    EXPECT_FALSE(nine.triangulated);
}

TEST(Decomposition, LargePieceSplitRepeatsUntilEightOrFewer)
{
    std::vector<DVec2> piece;
    for (const Vec2& v : TestRings::regular(30))
        piece.push_back(DVec2::from(v));
    std::vector<std::vector<DVec2>> parts;
    splitLargePiece(piece, parts);
    // 30 -> 16 + 16 -> 4 parts of 9 -> each 5 + 6: eight parts.
    ASSERT_EQ(parts.size(), 8u);
    size_t corners = 0;
    for (const auto& p : parts) {
        EXPECT_LE(p.size(), 8u);
        EXPECT_GE(p.size(), 3u);
        corners += p.size();
    }
    EXPECT_EQ(parts[0].front(), piece[0]);
    EXPECT_EQ(parts[0].back(), piece[4]);
    EXPECT_EQ(corners, 30u + 2 * 7); // every split shares two points
}

TEST(Decomposition, SelfIntersectingRefusedForBothMethods)
{
    for (auto method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
        LogCapture log;
        auto result = decomposeAndLog(TestRings::square(), method, true);
        EXPECT_EQ(result.refusal, PolygonDecomposition::Refusal::SelfIntersecting);
        EXPECT_TRUE(result.pieces.empty());
        EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Aborting polygon decomposition for self-intersecting fixture: b/f"});
    }
}

TEST(Decomposition, CoincidentVerticesRefusedBeforeAnythingElse)
{
    LogCapture log;
    auto result = decomposeAndLog({{0, 0}, {1, 0}, {1, 1}, {0, 0.001f}}, DecompositionMethod::Bayazit, true);
    EXPECT_EQ(result.refusal, PolygonDecomposition::Refusal::CoincidentVertices);
    EXPECT_TRUE(result.pieces.empty());
    EXPECT_EQ(log.texts(LOG_WARNING),
              QStringList{"Aborting polygon fixture creation due to coincident vertices in fixture: b/f"});
}

TEST(Decomposition, InvalidCoordinatesRefused)
{
    for (float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1e20f}) {
        LogCapture log;
        auto result = decomposeAndLog({{0, 0}, {1, 0}, {bad, 1}}, DecompositionMethod::Bayazit);
        EXPECT_EQ(result.refusal, PolygonDecomposition::Refusal::InvalidCoordinates);
        EXPECT_TRUE(result.pieces.empty());
        EXPECT_EQ(log.count(LOG_WARNING, "invalid vertex coordinates"), 1);
    }
}

TEST(Decomposition, ClockwiseFallsBackWithWindingReason)
{
    LogCapture log;
    const auto ring = TestRings::reversed(TestRings::comb(4));
    auto result = decomposeAndLog(ring, DecompositionMethod::Bayazit);
    EXPECT_EQ(result.bayazitFailure, BayazitFailure::Winding);
    EXPECT_TRUE(result.triangulated);
    EXPECT_EQ(result.pieces.size(), ring.size() - 2);
    EXPECT_EQ(log.texts(LOG_WARNING), (QStringList{kFallback, kWinding}));
}

TEST(Decomposition, CollinearVerticesFallBackWithCoLinearReason)
{
    LogCapture log;
    auto result = decomposeAndLog(TestRings::withMidpoints(TestRings::square()), DecompositionMethod::Bayazit);
    EXPECT_EQ(result.bayazitFailure, BayazitFailure::CoLinear);
    EXPECT_EQ(result.pieces.size(), 6u);
    EXPECT_EQ(log.texts(LOG_WARNING), (QStringList{kFallback, kCoLinear}));
}

TEST(Decomposition, RectangularCombFallsBackBecauseItsBaseFloorsLineUp)
{
    const auto ring = TestRings::comb(5, 0.5f, 0.4f, 2, 0);
    auto result = decomposeAndLog(ring, DecompositionMethod::Bayazit);
    EXPECT_EQ(result.bayazitFailure, BayazitFailure::CoLinear);
    EXPECT_EQ(result.pieces.size(), ring.size() - 2);
}

TEST(Decomposition, TinyTriangleFallsBackAndIsSkippedWithMessage)
{
    LogCapture log;
    const std::vector<Vec2> sliver{{0, 0}, {0.02f, 0}, {0.01f, 0.00002f}};
    auto result = decomposeAndLog(sliver, DecompositionMethod::Bayazit);
    EXPECT_EQ(result.bayazitFailure, BayazitFailure::SmallArea);
    EXPECT_TRUE(result.pieces.empty());
    ASSERT_EQ(result.skippedTriangles.size(), 1u);
    EXPECT_EQ(log.texts(LOG_WARNING), (QStringList{kFallback, kSmallArea}));
    EXPECT_EQ(log.texts(LOG_ERROR), QStringList{"Triangle was not created because the area is too small (body coords): "
                                             "(0.0000000.000000),(0.0200000.000000),(0.0100000.000020)"});
}

TEST(Decomposition, ThinTriangleThatBox2DAcceptsIsKept)
{
    // Area 2e-4, far above the degenerate area; its corner at the origin is
    // flatter than the co-linearity tolerance of Bayazit's pieces, so that
    // attempt falls back, but the triangle itself is created.
    const std::vector<Vec2> thin{{0, 0}, {10, 0}, {5, 0.00004f}};
    for (auto method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
        LogCapture log;
        auto result = decomposeAndLog(thin, method);
        ASSERT_EQ(result.pieces.size(), 1u);
        EXPECT_TRUE(result.skippedTriangles.empty());
        EXPECT_TRUE(log.texts(LOG_ERROR).isEmpty());
        EXPECT_EQ(judgeBox2DPolygon(result.pieces[0]).verdict, Box2DPolygonVerdict::Unchanged);
    }
}

TEST(Decomposition, SkippedTrianglesSayWhy)
{
    // Two corners closer than Box2D's welding distance, area well above the
    // degenerate area: left out, and the message names the welding.
    // (As a whole ring it is refused earlier, as coincident vertices.)
    LogCapture log;
    const std::vector<Vec2> ring{{0, 0}, {0.002f, 0}, {0.001f, 1}};
    PolygonDecomposition result;
    result.triangulated = true;
    triangulationPieces(ring, result.pieces, result.skippedTriangles);
    logDecomposition(result, ring, "b/f");
    EXPECT_TRUE(result.pieces.empty());
    ASSERT_EQ(result.skippedTriangles.size(), 1u);
    EXPECT_EQ(result.skippedTriangles[0].reason, TriangleRefusal::Welded);
    EXPECT_EQ(log.texts(LOG_ERROR),
              QStringList{"Triangle was not created because two corners are closer than Box2D's welding distance "
                          "(body coords): (0.0000000.000000),(0.0020000.000000),(0.0010001.000000)"});
}

TEST(Decomposition, PieceThatBox2DWouldShrinkIsCutUntilBox2DTakesEveryPart)
{
    // A convex quad with a vertex 8,000 units away and two points 0.015 apart:
    // as one piece Box2D's hull would keep only 3 points. It is cut instead.
    const std::vector<Vec2> quad{
        {0.979342222f, -0.0532799549f}, {2.6081388f, -2.57265067f}, {6739.87744f, 4309.7627f}, {0.991977811f, -0.0451965556f}};
    LogCapture log;
    auto result = decomposeAndLog(quad, DecompositionMethod::Bayazit);
    EXPECT_EQ(result.bayazitFailure, BayazitFailure::None);
    EXPECT_FALSE(result.triangulated);
    ASSERT_GE(result.pieces.size(), 2u);
    double area = 0;
    for (const std::vector<Vec2>& piece : result.pieces) {
        EXPECT_EQ(judgeBox2DPolygon(piece).verdict, Box2DPolygonVerdict::Unchanged);
        EXPECT_EQ(checkBox2DPolygon(piece), PieceCheck::Ok);
        area += TestRings::area(piece);
    }
    EXPECT_NEAR(area, TestRings::area(quad), 1e-6 * TestRings::area(quad));
    EXPECT_TRUE(log.texts(LOG_WARNING).isEmpty());
}

TEST(Decomposition, TriangulationOnlyNeverTriesBayazit)
{
    LogCapture log;
    for (const auto& ring : {TestRings::reversed(TestRings::comb(4)), TestRings::withMidpoints(TestRings::square()),
                             TestRings::star(5)}) {
        auto result = decomposeAndLog(ring, DecompositionMethod::Triangulation);
        EXPECT_TRUE(result.triangulated);
        EXPECT_EQ(result.bayazitFailure, BayazitFailure::None);
        EXPECT_EQ(result.pieces.size(), ring.size() - 2);
    }
    EXPECT_TRUE(log.texts(LOG_WARNING).isEmpty());
}

TEST(DecompositionSettings, ReadsMethodAndAlphaFromApplicationSettings)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path());
    EXPECT_EQ(DecompositionSettings::method(), DecompositionMethod::Bayazit);
    EXPECT_FLOAT_EQ(DecompositionSettings::internalEdgeAlpha(), 0.1f);
    {
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, "quoxel2d", "plax");
        settings.setValue(DecompositionSettings::kMethodKey, 1);
        settings.setValue(DecompositionSettings::kInternalEdgeAlphaKey, 0.4);
    }
    EXPECT_EQ(DecompositionSettings::method(), DecompositionMethod::Triangulation);
    EXPECT_FLOAT_EQ(DecompositionSettings::internalEdgeAlpha(), 0.4f);
    {
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, "quoxel2d", "plax");
        settings.setValue(DecompositionSettings::kMethodKey, 5);
        settings.setValue(DecompositionSettings::kInternalEdgeAlphaKey, 3.0);
    }
    EXPECT_EQ(DecompositionSettings::method(), DecompositionMethod::Bayazit);
    EXPECT_FLOAT_EQ(DecompositionSettings::internalEdgeAlpha(), 1.0f);
}
