// Box2D fixtures built from scene shapes on a real world.
#include "geometrytestutil.h"
#include "support/logcapture.h"

#include "geometry/fixturebuilder.h"
#include "geometry/fixturedef.h"
#include "geometry/massguard.h"
#include "model/metafixture.h"

#include <box2d/box2d.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace
{
class FixtureBuilding : public ::testing::Test
{
protected:
    FixtureBuilding() : m_world(b2Vec2(0, -10))
    {
        b2BodyDef def;
        def.type = b2_dynamicBody;
        m_body = m_world.CreateBody(&def);
    }

    MetaShape& shapeOf(std::vector<Vec2> vertices, ShapeType type, float radius)
    {
        m_fixture.setVertices(std::move(vertices));
        m_fixture.clearShapes();
        return m_fixture.addShape(type, radius);
    }

    void build(MetaShape& shape, DecompositionMethod method = DecompositionMethod::Bayazit)
    {
        createFixtures(shape, "b/f", m_body, fixtureDefFor(m_fixture), method);
    }

    static std::vector<b2Shape::Type> types(const MetaShape& shape)
    {
        std::vector<b2Shape::Type> out;
        for (const b2Fixture* f : shape.createdFixtures)
            out.push_back(f->GetType());
        return out;
    }

    static std::vector<b2Vec2> chainPoints(const b2Fixture* f)
    {
        const auto* chain = static_cast<const b2ChainShape*>(f->GetShape());
        return {chain->m_vertices, chain->m_vertices + chain->m_count};
    }

    b2World m_world;
    b2Body* m_body = nullptr;
    MetaFixture m_fixture;
};

constexpr auto kCircle = b2Shape::e_circle;
constexpr auto kPolygon = b2Shape::e_polygon;
constexpr auto kChain = b2Shape::e_chain;
} // namespace

TEST_F(FixtureBuilding, CircleShapeGivesOneCirclePerVertex)
{
    MetaShape& shape = shapeOf({{0, 0}, {1, 2}, {-3, 1}}, ShapeType::Circle, 0.25f);
    build(shape);
    ASSERT_EQ(types(shape), (std::vector{kCircle, kCircle, kCircle}));
    const auto* second = static_cast<const b2CircleShape*>(shape.createdFixtures[1]->GetShape());
    EXPECT_EQ(second->m_p, b2Vec2(1, 2));
    EXPECT_FLOAT_EQ(second->m_radius, 0.25f);
    EXPECT_EQ(m_body->GetFixtureList() != nullptr, true);
}

TEST_F(FixtureBuilding, RoundedLoopGivesCirclesThenClosedRingOfQuads)
{
    MetaShape& shape = shapeOf({{0, 0}, {2, 0}, {0, 2}}, ShapeType::Loop, 0.1f);
    build(shape);
    ASSERT_EQ(types(shape), (std::vector{kCircle, kCircle, kCircle, kPolygon, kPolygon, kPolygon}));
    // The closing quad runs from the last vertex to the first.
    const auto* closing = static_cast<const b2PolygonShape*>(shape.createdFixtures[5]->GetShape());
    ASSERT_EQ(closing->m_count, 4);
    EXPECT_FLOAT_EQ(closing->m_radius, 0.01f);
    b2AABB box;
    closing->ComputeAABB(&box, b2Transform(b2Vec2(0, 0), b2Rot(0)), 0);
    EXPECT_NEAR(box.lowerBound.x, -0.1f - 0.01f, 1e-5);
    EXPECT_NEAR(box.upperBound.y, 2.0f + 0.01f, 1e-5);
}

TEST_F(FixtureBuilding, RoundedLineGivesCirclesThenOpenQuads)
{
    MetaShape& shape = shapeOf({{0, 0}, {2, 0}, {2, 2}}, ShapeType::Line, 0.1f);
    build(shape);
    EXPECT_EQ(types(shape), (std::vector{kCircle, kCircle, kCircle, kPolygon, kPolygon}));
    MetaShape& single = shapeOf({{1, 1}}, ShapeType::Line, 0.1f);
    build(single);
    EXPECT_EQ(types(single), (std::vector{kCircle}));
}

TEST_F(FixtureBuilding, RoundedLoopSkipsQuadOfZeroLengthEdge)
{
    MetaShape& shape = shapeOf({{0, 0}, {2, 0}, {2, 0}, {0, 2}}, ShapeType::Loop, 0.1f);
    build(shape);
    EXPECT_EQ(types(shape), (std::vector{kCircle, kCircle, kCircle, kCircle, kPolygon, kPolygon, kPolygon}));
}

TEST_F(FixtureBuilding, UnroundedLoopIsTwoChainsInOppositeDirections)
{
    const std::vector<Vec2> ring{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
    MetaShape& shape = shapeOf(ring, ShapeType::Loop, 0);
    build(shape);
    ASSERT_EQ(types(shape), (std::vector{kChain, kChain}));
    EXPECT_FALSE(shape.isReverseChainTwin(shape.createdFixtures[0]));
    EXPECT_TRUE(shape.isReverseChainTwin(shape.createdFixtures[1]));
    const auto forward = chainPoints(shape.createdFixtures[0]);
    const auto backward = chainPoints(shape.createdFixtures[1]);
    ASSERT_EQ(forward.size(), 5u); // closed: the first point repeats at the end
    EXPECT_EQ(forward[1], b2Vec2(2, 0));
    EXPECT_EQ(forward[4], forward[0]);
    EXPECT_EQ(backward, std::vector<b2Vec2>(forward.rbegin(), forward.rend()));
    EXPECT_FLOAT_EQ(shape.createdFixtures[0]->GetShape()->m_radius, 0.01f);
}

TEST_F(FixtureBuilding, UnroundedLineIsTwoOpenChainsWithFoldedGhosts)
{
    MetaShape& shape = shapeOf({{0, 0}, {1, 0}, {3, 1}}, ShapeType::Line, 0.004f);
    build(shape);
    ASSERT_EQ(types(shape), (std::vector{kChain, kChain}));
    const auto* forward = static_cast<const b2ChainShape*>(shape.createdFixtures[0]->GetShape());
    ASSERT_EQ(forward->m_count, 3);
    EXPECT_EQ(forward->m_prevVertex, b2Vec2(1, 0));
    EXPECT_EQ(forward->m_nextVertex, b2Vec2(1, 0));
    const auto backward = chainPoints(shape.createdFixtures[1]);
    EXPECT_EQ(backward, (std::vector<b2Vec2>{{3, 1}, {1, 0}, {0, 0}}));
    EXPECT_TRUE(shape.isReverseChainTwin(shape.createdFixtures[1]));

    shape.clearCreatedFixtures();
    EXPECT_TRUE(shape.reverseChainTwins.empty());
}

TEST_F(FixtureBuilding, CoincidentVerticesAbortChainsAndLoops)
{
    LogCapture log;
    // The ends of this open line are 0.003 apart: the closing pair counts.
    MetaShape& line = shapeOf({{0, 0}, {1, 0}, {1, 1}, {0, 0.003f}}, ShapeType::Line, 0);
    build(line);
    EXPECT_TRUE(line.createdFixtures.empty());
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Aborting chain fixture creation due to coincident vertices in fixture: b/f"});

    log.clear();
    MetaShape& loop = shapeOf({{0, 0}, {1, 0}, {1, 0.001f}, {0, 1}}, ShapeType::Loop, 0);
    build(loop);
    EXPECT_TRUE(loop.createdFixtures.empty());
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Aborting loop fixture creation due to coincident vertices in fixture: b/f"});
}

TEST_F(FixtureBuilding, TooShortChainsAreRefusedNotAsserted)
{
    LogCapture log;
    MetaShape& line = shapeOf({{0, 0}}, ShapeType::Line, 0);
    build(line);
    MetaShape& loop = shapeOf({{0, 0}, {1, 0}}, ShapeType::Loop, 0);
    build(loop);
    EXPECT_TRUE(line.createdFixtures.empty());
    EXPECT_TRUE(loop.createdFixtures.empty());
    EXPECT_EQ(log.count(LOG_WARNING, "too few vertices"), 2);
}

TEST_F(FixtureBuilding, RoundedSquarePolygonIsOnePiecePlusCirclesAndQuads)
{
    MetaShape& shape = shapeOf(TestRings::square(), ShapeType::Polygon, 0.1f);
    build(shape);
    ASSERT_EQ(shape.createdFixtures.size(), 9u);
    EXPECT_EQ(types(shape), (std::vector{kPolygon, kCircle, kCircle, kCircle, kCircle, kPolygon, kPolygon, kPolygon,
                                         kPolygon}));
    const auto* piece = static_cast<const b2PolygonShape*>(shape.createdFixtures[0]->GetShape());
    EXPECT_EQ(piece->m_count, 4);
    EXPECT_FLOAT_EQ(piece->m_radius, 0.01f);
}

TEST_F(FixtureBuilding, SmallRadiusPolygonIsBuiltUnroundedWithExactMass)
{
    MetaShape& shape = shapeOf(TestRings::square(2), ShapeType::Polygon, 0);
    ASSERT_TRUE(shape.setRadius(0.003f));
    m_fixture.density = 3;
    build(shape);
    settleBodyMass(m_body, "b");
    ASSERT_EQ(types(shape), (std::vector{kPolygon}));
    // Box2D took the square unchanged: area 4 at density 3.
    EXPECT_NEAR(m_body->GetMass(), 12.0f, 1e-4);
}

TEST_F(FixtureBuilding, ConcavePolygonPiecesKeepTheMass)
{
    const auto ring = TestRings::comb(6);
    MetaShape& shape = shapeOf(ring, ShapeType::Polygon, 0);
    build(shape, DecompositionMethod::Bayazit);
    settleBodyMass(m_body, "b");
    EXPECT_GE(shape.createdFixtures.size(), 6u);
    EXPECT_NEAR(m_body->GetMass(), TestRings::area(ring), 1e-3);
    for (const b2Fixture* f : shape.createdFixtures) {
        EXPECT_EQ(f->GetType(), kPolygon);
        EXPECT_FLOAT_EQ(f->GetShape()->m_radius, 0.01f);
    }
}

TEST_F(FixtureBuilding, SelfIntersectingPolygonCreatesNothingWithEitherMethod)
{
    for (auto method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
        LogCapture log;
        MetaShape& shape = shapeOf({{0, 0}, {1, 1}, {1, 0}, {0, 1}}, ShapeType::Polygon, 0.2f);
        ASSERT_TRUE(m_fixture.isSelfIntersecting());
        build(shape, method);
        EXPECT_TRUE(shape.createdFixtures.empty());
        EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Aborting polygon decomposition for self-intersecting fixture: b/f"});
    }
}

TEST_F(FixtureBuilding, InvalidInputIsRefusedWithAWarning)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    struct Case
    {
        std::vector<Vec2> vertices;
        ShapeType type;
        float radius;
    } cases[] = {
        {{{0, 0}, {nan, 1}}, ShapeType::Circle, 1},
        {{{0, 0}, {1, 0}, {1, inf}}, ShapeType::Polygon, 0},
        {{{0, 0}, {1, 0}, {1e9f, 1}}, ShapeType::Loop, 0},
        {{{0, 0}}, ShapeType::Circle, nan},
        {{{0, 0}}, ShapeType::Circle, -1},
        {{{0, 0}, {1, 0}}, ShapeType::Line, inf},
    };
    for (const Case& c : cases) {
        LogCapture log;
        MetaShape& shape = shapeOf(c.vertices, c.type, 0);
        shape.assign(c.type, c.radius);
        build(shape);
        EXPECT_TRUE(shape.createdFixtures.empty());
        EXPECT_EQ(log.count(LOG_WARNING, "Aborting"), 1);
    }
    EXPECT_EQ(m_body->GetFixtureList(), nullptr);
}

TEST_F(FixtureBuilding, UnknownTypeCreatesNothing)
{
    MetaShape& shape = shapeOf(TestRings::square(), ShapeType(9), 0);
    LogCapture log;
    build(shape);
    EXPECT_TRUE(shape.createdFixtures.empty());
    EXPECT_EQ(log.texts(LOG_WARNING).size(), 1);
}

TEST_F(FixtureBuilding, FixtureDefinitionCarriesMaterialAndFilter)
{
    m_fixture.friction = 0.7f;
    m_fixture.density = 2.5f;
    m_fixture.restitution = 0.3f;
    m_fixture.sensor = true;
    m_fixture.filterCategoryBits = 0x0004;
    m_fixture.filterMaskBits = 0x00F0;
    m_fixture.filterGroupIndex = -3;
    m_fixture.setVertices(TestRings::square());
    m_fixture.addShape(ShapeType::Polygon, 0);
    m_fixture.addShape(ShapeType::Circle, 0.5f);
    createFixtures(m_fixture, m_body, DecompositionMethod::Bayazit);
    EXPECT_EQ(m_fixture.shapes()[0].createdFixtures.size(), 1u);
    ASSERT_EQ(m_fixture.shapes()[1].createdFixtures.size(), 4u);
    const b2Fixture* f = m_fixture.shapes()[1].createdFixtures[2];
    EXPECT_FLOAT_EQ(f->GetFriction(), 0.7f);
    EXPECT_FLOAT_EQ(f->GetDensity(), 2.5f);
    EXPECT_FLOAT_EQ(f->GetRestitution(), 0.3f);
    EXPECT_TRUE(f->IsSensor());
    EXPECT_EQ(f->GetFilterData().categoryBits, 0x0004);
    EXPECT_EQ(f->GetFilterData().maskBits, 0x00F0);
    EXPECT_EQ(f->GetFilterData().groupIndex, -3);
}

TEST_F(FixtureBuilding, InvalidMaterialValuesAreSanitised)
{
    m_fixture.density = std::numeric_limits<float>::quiet_NaN();
    m_fixture.friction = -1;
    m_fixture.restitution = std::numeric_limits<float>::infinity();
    LogCapture log;
    const b2FixtureDef def = fixtureDefFor(m_fixture);
    EXPECT_EQ(def.density, 0);
    EXPECT_EQ(def.friction, 0);
    EXPECT_EQ(def.restitution, 0);
    EXPECT_EQ(log.texts(LOG_WARNING).size(), 3);
    m_fixture.density = -4;
    EXPECT_EQ(fixtureDefFor(m_fixture).density, 0);
}

TEST_F(FixtureBuilding, JunkVertexListsNeverTripBox2D)
{
    // Box2D asserts abort the process, so surviving the loop is the check; the
    // created fixtures must also be consistent with the shape's list.
    std::mt19937 rng(5);
    std::uniform_real_distribution<float> coord(-3, 3);
    int created = 0;
    for (int trial = 0; trial < 300; ++trial) {
        std::vector<Vec2> vertices;
        for (int i = 0; i < 1 + trial % 12; ++i) {
            if (i > 0 && trial % 4 == 0)
                vertices.push_back(vertices.back() + Vec2{0.001f * i, 0});
            else
                vertices.push_back({coord(rng), trial % 3 == 0 ? 0.0f : coord(rng)});
        }
        const ShapeType type = ShapeType(trial % 4);
        const float radius = (trial / 4) % 3 == 0 ? 0.0f : 0.05f * ((trial / 4) % 3);
        MetaShape& shape = shapeOf(vertices, type, radius);
        build(shape, trial % 2 ? DecompositionMethod::Bayazit : DecompositionMethod::Triangulation);
        created += static_cast<int>(shape.createdFixtures.size());
    }
    int listed = 0;
    for (const b2Fixture* f = m_body->GetFixtureList(); f; f = f->GetNext())
        ++listed;
    EXPECT_EQ(listed, created);
    EXPECT_GT(created, 0);
    settleBodyMass(m_body, "junk");
    EXPECT_GT(m_body->GetMass(), 0.0f);
    for (int i = 0; i < 30; ++i)
        m_world.Step(1.0f / 60, 8, 3);
    EXPECT_TRUE(m_body->GetPosition().IsValid());
}

TEST_F(FixtureBuilding, MassIsLeftForTheWholeBodyAndSettledOnce)
{
    // Creating fixtures leaves Box2D's mass alone (the new body has none yet)
    // but gives each fixture its density.
    MetaShape& shape = shapeOf(TestRings::square(2), ShapeType::Polygon, 0);
    m_fixture.density = 3;
    build(shape);
    ASSERT_EQ(shape.createdFixtures.size(), 1u);
    EXPECT_FLOAT_EQ(shape.createdFixtures[0]->GetDensity(), 3.0f);
    EXPECT_FLOAT_EQ(m_body->GetMass(), 0.0f);
    EXPECT_TRUE(settleBodyMass(m_body, "b"));
    EXPECT_NEAR(m_body->GetMass(), 12.0f, 1e-4);
    EXPECT_NEAR(m_body->GetWorldCenter().x, 1.0f, 1e-5);
}

TEST_F(FixtureBuilding, InertiaBox2DCannotCentreIsComputedInDoublePrecision)
{
    // A 2 cm square 1.4 km from the origin of a dynamic body: Box2D's own mass
    // computation would lose the rotational inertia to rounding and assert.
    // The fixture stays; the inertia comes from a double-precision sum.
    LogCapture log;
    MetaShape& far = shapeOf({{1000, 1000}, {1000.02f, 1000}, {1000.02f, 1000.02f}, {1000, 1000.02f}}, ShapeType::Polygon, 0);
    build(far);
    ASSERT_EQ(far.createdFixtures.size(), 1u);
    EXPECT_FALSE(settleBodyMass(m_body, "far body"));
    EXPECT_EQ(log.count(LOG_WARNING, "Body 'far body' is too far from its fixtures"), 1);
    EXPECT_NEAR(m_body->GetMass(), 4e-4f, 2e-6f) << "0.02 is 0.0200195 at 1000 in single precision";
    EXPECT_NEAR(m_body->GetWorldCenter().x, 1000.01f, 1e-3f);
    b2MassData mass;
    m_body->GetMassData(&mass);
    EXPECT_TRUE(box2DAcceptsMassData(mass, false)) << "Box2D takes the settled mass back as it is";
    for (int i = 0; i < 30; ++i)
        m_world.Step(1.0f / 60, 8, 3);
    EXPECT_TRUE(m_body->GetPosition().IsValid());
    EXPECT_TRUE(std::isfinite(m_body->GetAngle()));

    // Near the origin the same square is Box2D's own business, and so is the
    // far one on a static body.
    b2BodyDef nearDef;
    nearDef.type = b2_dynamicBody;
    b2Body* nearBody = m_world.CreateBody(&nearDef);
    MetaShape& near = shapeOf({{1, 1}, {1.02f, 1}, {1.02f, 1.02f}, {1, 1.02f}}, ShapeType::Polygon, 0);
    createFixtures(near, "n", nearBody, fixtureDefFor(m_fixture), DecompositionMethod::Bayazit);
    EXPECT_TRUE(settleBodyMass(nearBody, "near"));
    b2BodyDef staticDef;
    b2Body* ground = m_world.CreateBody(&staticDef);
    MetaShape& farStatic = shapeOf({{1000, 1000}, {1000.02f, 1000}, {1000.02f, 1000.02f}, {1000, 1000.02f}},
                                   ShapeType::Polygon, 0);
    createFixtures(farStatic, "g", ground, fixtureDefFor(m_fixture), DecompositionMethod::Bayazit);
    EXPECT_TRUE(settleBodyMass(ground, "ground"));
    EXPECT_EQ(farStatic.createdFixtures.size(), 1u);
    EXPECT_EQ(log.count(LOG_WARNING, "too far"), 1);
}

TEST(MassGuard, OriginInertiaTurnsBackIntoAPositiveCentredInertia)
{
    // Representable: Box2D's subtraction gives back the centred inertia.
    const float inertia = box2DOriginInertia(2, {0.5f, 0}, 0.25);
    EXPECT_FLOAT_EQ(inertia, 0.75f);
    EXPECT_TRUE(box2DAcceptsMassData({2, {0.5f, 0}, inertia}, false));
    EXPECT_FALSE(box2DAcceptsMassData({2, {0.5f, 0}, 0.25f}, false));
    EXPECT_TRUE(box2DAcceptsMassData({2, {0.5f, 0}, 0.25f}, true)) << "fixed rotation ignores the inertia";
    EXPECT_TRUE(box2DAcceptsMassData({2, {0.5f, 0}, 0}, false)) << "no inertia: Box2D skips the centring";
    // Below the resolution of mass * |centre|^2: the nearest value that stays positive.
    const b2Vec2 far(3000, 4000);
    const float tiny = box2DOriginInertia(1, far, 1e-9);
    const float shift = 1.0f * b2Dot(far, far);
    EXPECT_GT(tiny - shift, 0.0f);
    EXPECT_EQ(std::nextafter(tiny, 0.0f) - shift, 0.0f);
    EXPECT_FALSE(box2DAcceptsMassData({1, {NAN, 0}, 1}, false));
}
