#include "document/editordocument.h"
#include "editing/selection.h"
#include "model/metaworld.h"
#include "views/hittest.h"
#include "views/scenegeometry.h"
#include "views/viewcolors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
MetaBody* addBody(MetaWorld& world, Vec2 position, float angle = 0, BodyType type = BodyType::Static)
{
    auto body = std::make_unique<MetaBody>();
    body->position = position;
    body->angle = angle;
    body->type = type;
    return world.addBody(std::move(body), 0);
}

MetaFixture* addFixture(MetaWorld& world, MetaBody* body, ShapeType type, float radius, std::vector<Vec2> vertices)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(vertices));
    fixture->addShape(type, radius);
    return world.addFixture(body, std::move(fixture), 0);
}

bool hasColour(const std::vector<GeomVertex>& vertices, const QColor& c)
{
    for (const GeomVertex& v : vertices) {
        if (v.r == c.red() && v.g == c.green() && v.b == c.blue())
            return true;
    }
    return false;
}

// Area covered by a triangle list (overlaps counted twice).
double area(const std::vector<GeomVertex>& t)
{
    double sum = 0;
    for (size_t i = 0; i + 2 < t.size(); i += 3)
        sum += std::abs((t[i + 1].x - t[i].x) * (t[i + 2].y - t[i].y) - (t[i + 2].x - t[i].x) * (t[i + 1].y - t[i].y)) / 2;
    return sum;
}
} // namespace

TEST(SceneGeometry, ShapesAreFilledOutlinedAndPlacedByTheirBody)
{
    MetaWorld world;
    Selection selection;
    const ViewColors colors;
    // A 2x2 square on a body at (10, 0) turned a quarter.
    MetaBody* body = addBody(world, {10, 0}, float(M_PI / 2), BodyType::Dynamic);
    addFixture(world, body, ShapeType::Polygon, 0, {{0, 0}, {2, 0}, {2, 2}, {0, 2}});
    const SceneGeometry g = SceneGeometry::build(world, selection, colors, QString());
    EXPECT_NEAR(area(g.triangles), 4, 1e-4);
    EXPECT_EQ(g.lines.size(), 8u + 4u) << "four outline edges and the body's origin cross";
    EXPECT_NEAR(g.lo.x, 8, 1e-4);
    EXPECT_NEAR(g.hi.x, 10, 1e-4);
    EXPECT_NEAR(g.hi.y, 2, 1e-4);
    EXPECT_TRUE(hasColour(g.triangles, colors.dynamicBody));
    EXPECT_FALSE(hasColour(g.lines, colors.selection));

    selection.add(ItemKind::Body, body->id());
    const SceneGeometry selected = SceneGeometry::build(world, selection, colors, QString());
    EXPECT_TRUE(hasColour(selected.lines, colors.selection));
}

TEST(SceneGeometry, ConcaveAndRoundedShapesCoverTheirArea)
{
    MetaWorld world;
    Selection selection;
    MetaBody* body = addBody(world, {0, 0});
    // An L of area 3 (concave): a fan from vertex 0 would be wrong.
    addFixture(world, body, ShapeType::Polygon, 0, {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}});
    SceneGeometry g = SceneGeometry::build(world, selection, ViewColors(), QString());
    EXPECT_NEAR(area(g.triangles), 3, 1e-4);

    MetaWorld roundWorld;
    MetaBody* r = addBody(roundWorld, {0, 0});
    // A unit square rounded by 0.5: 1 + 4 * 0.5 + pi * 0.25.
    addFixture(roundWorld, r, ShapeType::Polygon, 0.5f, {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    g = SceneGeometry::build(roundWorld, selection, ViewColors(), QString());
    EXPECT_NEAR(area(g.triangles), 3 + M_PI * 0.25, 0.01);
    EXPECT_NEAR(g.lo.x, -0.5, 1e-4);

    MetaWorld circleWorld;
    MetaBody* c = addBody(circleWorld, {5, 5});
    addFixture(circleWorld, c, ShapeType::Circle, 2, {{1, 0}});
    g = SceneGeometry::build(circleWorld, selection, ViewColors(), QString());
    EXPECT_NEAR(area(g.triangles), M_PI * 4, 0.1);
    EXPECT_NEAR(g.lo.x, 4, 1e-4);
    EXPECT_NEAR(g.hi.x, 8, 1e-4);
}

TEST(SceneGeometry, LinesAndLoopsAreOutlinesAndRoundedOnesAreFilled)
{
    MetaWorld world;
    Selection selection;
    MetaBody* body = addBody(world, {0, 0});
    addFixture(world, body, ShapeType::Line, 0, {{0, 0}, {1, 0}, {1, 1}});
    SceneGeometry g = SceneGeometry::build(world, selection, ViewColors(), QString());
    EXPECT_TRUE(g.triangles.empty());
    EXPECT_EQ(g.lines.size(), 4u + 4u) << "two edges and the origin cross";

    MetaWorld loopWorld;
    MetaBody* loop = addBody(loopWorld, {0, 0});
    addFixture(loopWorld, loop, ShapeType::Loop, 0.2f, {{0, 0}, {1, 0}, {1, 1}});
    g = SceneGeometry::build(loopWorld, selection, ViewColors(), QString());
    EXPECT_EQ(g.lines.size(), 6u + 4u) << "three edges, closed";
    EXPECT_FALSE(g.triangles.empty());
}

TEST(SceneGeometry, NonFiniteItemsAreLeftOutAndJointsHaveAnchors)
{
    MetaWorld world;
    Selection selection;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    MetaBody* broken = addBody(world, {nan, 0});
    addFixture(world, broken, ShapeType::Polygon, 0, {{0, 0}, {1, 0}, {1, 1}});
    MetaBody* a = addBody(world, {0, 0});
    MetaBody* b = addBody(world, {4, 0});
    auto joint = std::make_unique<MetaJoint>();
    joint->bodyA = a;
    joint->bodyB = b;
    joint->anchorA = {1, 1};
    joint->anchorB = {-1, 1};
    world.addJoint(std::move(joint), 0);
    const ViewColors colors;
    const SceneGeometry g = SceneGeometry::build(world, selection, colors, QString());
    for (const GeomVertex& v : g.triangles)
        EXPECT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
    for (const GeomVertex& v : g.lines)
        EXPECT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
    EXPECT_EQ(g.triangles.size(), 12u) << "two anchor markers, no fill for the broken body";
    EXPECT_TRUE(hasColour(g.triangles, colors.joint));
    // Only the anchors at (1, 1) and (3, 1) have a place: the bodies have no fixtures.
    EXPECT_NEAR(g.lo.x, 1, 1e-5);
    EXPECT_NEAR(g.hi.x, 3, 1e-5);
}

TEST(HitTest, FindsTheTopmostFixtureByShapeAndTolerance)
{
    MetaWorld world;
    MetaBody* below = addBody(world, {0, 0});
    MetaFixture* square = addFixture(world, below, ShapeType::Polygon, 0, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
    MetaBody* above = addBody(world, {1, 0}, float(M_PI));
    MetaFixture* circle = addFixture(world, above, ShapeType::Circle, 0.5f, {{1, 0}});
    MetaBody* lineBody = addBody(world, {0, 5});
    MetaFixture* line = addFixture(world, lineBody, ShapeType::Line, 0, {{0, 0}, {4, 0}});

    // The circle sits at (0, 0) in the world (body at x=1 turned half a turn) over the square.
    EXPECT_EQ(HitTest::topmostFixture(world, {0.1f, 0}, 0), circle);
    EXPECT_EQ(HitTest::topmostFixture(world, {0.9f, 0.9f}, 0), square);
    EXPECT_EQ(HitTest::topmostBody(world, {0.1f, 0}, 0), above);
    EXPECT_EQ(HitTest::topmostFixture(world, {3, 3}, 0), nullptr);
    EXPECT_EQ(HitTest::topmostFixture(world, {2, 5.05f}, 0.1f), line);
    EXPECT_EQ(HitTest::topmostFixture(world, {2, 5.5f}, 0.1f), nullptr);
}
