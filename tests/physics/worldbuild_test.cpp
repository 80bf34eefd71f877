#include "base/flags.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "support/logcapture.h"

#include <box2d/box2d.h>
#include <gtest/gtest.h>

namespace
{
MetaFixture* addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType type, float radius = 0)
{
    MetaFixture* f = world.addFixture(body, std::make_unique<MetaFixture>(), 0);
    f->setVertices(std::move(vertices));
    f->addShape(type, radius);
    return f;
}

MetaBody* addBody(MetaWorld& world, Vec2 position, BodyType type = BodyType::Dynamic)
{
    MetaBody* b = world.addBody(std::make_unique<MetaBody>(), 0);
    b->position = position;
    b->type = type;
    return b;
}

double signedArea(const b2PolygonShape& p)
{
    double a = 0;
    for (int i = 0; i < p.m_count; ++i) {
        const b2Vec2 u = p.m_vertices[i];
        const b2Vec2 w = p.m_vertices[(i + 1) % p.m_count];
        a += double(u.x) * w.y - double(w.x) * u.y;
    }
    return a / 2;
}
} // namespace

TEST(WorldBuild, BodiesFixturesAndJointsAreTracedToTheScene)
{
    MetaWorld scene;
    MetaBody* ground = addBody(scene, {0, 0}, BodyType::Static);
    scene.setName(ground, "ground");
    addFixture(scene, ground, {{-10, 0}, {10, 0}}, ShapeType::Line);
    MetaBody* box = addBody(scene, {0, 2});
    addFixture(scene, box, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}, ShapeType::Polygon);
    auto joint = std::make_unique<MetaJoint>();
    joint->type = JointType::Revolute;
    joint->bodyA = ground;
    joint->bodyB = box;
    scene.addJoint(std::move(joint), 0, "hinge");

    WorldBuild build(scene);
    build.addScene(scene, {}, "inst/");
    ASSERT_EQ(build.bodies().size(), 2u);
    EXPECT_EQ(build.bodies()[0].name, "inst/ground");
    EXPECT_EQ(build.bodies()[0].body->GetType(), b2_staticBody);
    // The line is two one-sided chains; only the second is the reverse twin.
    ASSERT_EQ(build.bodies()[0].fixtures.size(), 2u);
    EXPECT_FALSE(build.bodies()[0].fixtures[0].reverseTwin);
    EXPECT_TRUE(build.bodies()[0].fixtures[1].reverseTwin);
    ASSERT_EQ(build.joints().size(), 1u);
    EXPECT_EQ(build.joints()[0].bodyIndexA, 0);
    EXPECT_EQ(build.joints()[0].bodyIndexB, 1);
    EXPECT_EQ(build.joints()[0].name, "inst/hinge");
    EXPECT_EQ(build.jointIndex(build.joints()[0].joint), 0);
    EXPECT_TRUE(box->fixtures()[0]->shapes()[0].createdFixtures.empty())
        << "the scene keeps no pointers into the built world";
}

TEST(WorldBuild, MassOverrideReplacesTheComputedMass)
{
    MetaWorld scene;
    MetaBody* body = addBody(scene, {0, 0});
    addFixture(scene, body, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}, ShapeType::Polygon);
    WorldBuild computed(scene);
    computed.addScene(scene);
    EXPECT_NEAR(computed.bodies()[0].body->GetMass(), 4.0f, 1e-4f) << "density 1 over a 2x2 square";

    body->massDataMass = 7;
    body->massDataI = 3;
    WorldBuild overridden(scene);
    overridden.addScene(scene);
    EXPECT_FLOAT_EQ(overridden.bodies()[0].body->GetMass(), 7.0f);
    EXPECT_NEAR(overridden.bodies()[0].body->GetInertia(), 3.0f, 1e-5f);
}

TEST(WorldBuild, MirroredPlacementKeepsPolygonsCounterClockwise)
{
    MetaWorld scene;
    MetaBody* body = addBody(scene, {2, 0});
    body->angle = 0.3f;
    addFixture(scene, body, {{0, 0}, {3, 0}, {3, 1}, {1, 1}, {1, 3}, {0, 3}}, ShapeType::Polygon);
    WorldBuild build(scene);
    build.addScene(scene, Placement{{10, 5}, 0.5f, 2, true});
    const b2Body* b = build.bodies()[0].body;
    EXPECT_NEAR(b->GetPosition().x, 10 - 4 * std::cos(0.5f), 1e-4f);
    EXPECT_NEAR(b->GetAngle(), 0.5f - 0.3f, 1e-6f);
    double area = 0;
    for (const BuiltFixture& f : build.bodies()[0].fixtures) {
        ASSERT_EQ(f.fixture->GetType(), b2Shape::e_polygon);
        const double a = signedArea(*static_cast<const b2PolygonShape*>(f.fixture->GetShape()));
        EXPECT_GT(a, 0) << "every piece stays counter-clockwise";
        area += a;
    }
    EXPECT_NEAR(area, 5.0 * 4, 1e-3) << "the L of area 5 scaled by 2";
}

TEST(WorldBuild, CircleScaledBelowTheMinimumIsLeftOut)
{
    MetaWorld scene;
    MetaBody* body = addBody(scene, {0, 0});
    addFixture(scene, body, {{0, 0}}, ShapeType::Circle, 1);
    addFixture(scene, body, {{0, 0}, {1, 0}, {0, 1}}, ShapeType::Polygon);
    AppFlags::setInvalidSettingsFlag(false);
    const bool oldSuppress = AppFlags::setSuppressRefusalDialogs(true);
    WorldBuild build(scene);
    build.addScene(scene, Placement{{}, 0, 0.001f, false});
    AppFlags::setSuppressRefusalDialogs(oldSuppress);
    for (const BuiltFixture& f : build.bodies()[0].fixtures)
        EXPECT_NE(f.fixture->GetType(), b2Shape::e_circle);
    EXPECT_TRUE(AppFlags::invalidSettingsFlag());
    AppFlags::setInvalidSettingsFlag(false);
}

TEST(WorldBuild, NonFiniteValuesDoNotReachBox2D)
{
    MetaWorld scene;
    MetaBody* body = addBody(scene, {std::nanf(""), INFINITY});
    body->angle = std::nanf("");
    body->linearVelocity = {INFINITY, 0};
    addFixture(scene, body, {{0, 0}, {1, 0}, {0, 1}}, ShapeType::Polygon);
    WorldBuild build(scene);
    build.addScene(scene);
    EXPECT_EQ(build.bodies()[0].body->GetPosition(), b2Vec2(0, 0));
    build.world().Step(1 / 60.0f, 8, 3);
}

TEST(WorldBuild, FixturesFarFromTheBodyOriginAreKeptWhenBox2DTakesTheWholeBody)
{
    // Two circles 200 m from the origin: each alone would centre its tiny
    // inertia poorly, but Box2D computes a good one for the body as a whole.
    LogCapture log;
    MetaWorld scene;
    MetaBody* body = addBody(scene, {0, 0});
    addFixture(scene, body, {{200, 0}, {205, 0}}, ShapeType::Circle, 0.25f);
    WorldBuild build(scene);
    build.addScene(scene);
    const b2Body* b = build.bodies()[0].body;
    ASSERT_EQ(build.bodies()[0].fixtures.size(), 2u);
    EXPECT_TRUE(log.texts(LOG_WARNING).isEmpty()) << log.texts(LOG_WARNING).join("\n").toStdString();
    const double mass = 2 * 3.14159265 * 0.0625;
    EXPECT_NEAR(b->GetMass(), mass, 1e-5);
    EXPECT_NEAR(b->GetLocalCenter().x, 202.5, 1e-3);
    // Inertia about the centre of mass: 2 * (m r^2 / 2 + m 2.5^2), about 2.46.
    const double centred = double(b->GetInertia()) - double(b->GetMass()) * b2Dot(b->GetLocalCenter(), b->GetLocalCenter());
    EXPECT_NEAR(centred, 2.4667, 0.01);
}

TEST(WorldBuild, FarTinyFixtureStaysWhereBox2DWouldAssert)
{
    // Box2D cannot centre the inertia of a 2 cm square 1.4 km away from the
    // origin of its body; the square is still built, and the world steps.
    LogCapture log;
    MetaWorld scene;
    MetaBody* body = addBody(scene, {0, 0});
    scene.setName(body, "speck");
    addFixture(scene, body, {{1000, 1000}, {1000.02f, 1000}, {1000.02f, 1000.02f}, {1000, 1000.02f}}, ShapeType::Polygon);
    WorldBuild build(scene);
    build.addScene(scene);
    ASSERT_EQ(build.bodies()[0].fixtures.size(), 1u);
    EXPECT_EQ(log.count(LOG_WARNING, "Body 'speck' is too far from its fixtures"), 1);
    for (int i = 0; i < 10; ++i)
        build.world().Step(1 / 60.0f, 8, 3);
    EXPECT_TRUE(build.bodies()[0].body->GetPosition().IsValid());
}

TEST(WorldBuild, MassOverrideWithInertiaAboutTheCentreIsCorrectedNotAsserted)
{
    // I = 0.25 is not above mass * |centre|^2 = 0.5: handed to Box2D as it is,
    // SetMassData would assert and end the process.
    LogCapture log;
    MetaWorld scene;
    MetaBody* body = addBody(scene, {0, 0});
    scene.setName(body, "lever");
    addFixture(scene, body, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}, ShapeType::Polygon);
    body->massDataMass = 2;
    body->massDataCenter = {0.5f, 0};
    body->massDataI = 0.25f;
    WorldBuild build(scene);
    build.addScene(scene);
    const b2Body* b = build.bodies()[0].body;
    EXPECT_FLOAT_EQ(b->GetMass(), 2.0f);
    EXPECT_FLOAT_EQ(b->GetLocalCenter().x, 0.5f);
    EXPECT_NEAR(b->GetInertia(), 0.25f + 2 * 0.25f, 1e-6f) << "0.25 about the centre of mass";
    const QStringList warnings = log.texts(LOG_WARNING);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].contains("Mass override of body 'lever'"));
    EXPECT_TRUE(warnings[0].contains("taken as the inertia about the centre of mass"));

    // The same under a placement that doubles the scale: checked after placing.
    WorldBuild scaled(scene);
    scaled.addScene(scene, Placement{{}, 0, 2, false});
    EXPECT_NEAR(scaled.bodies()[0].body->GetInertia(), 4 * 0.25f + 2 * 1.0f, 1e-5f);

    // A valid override is used as it is, without a warning.
    body->massDataI = 0.75f;
    LogCapture quiet;
    WorldBuild valid(scene);
    valid.addScene(scene);
    EXPECT_NEAR(valid.bodies()[0].body->GetInertia(), 0.75f, 1e-6f);
    EXPECT_TRUE(quiet.texts(LOG_WARNING).isEmpty());
}

TEST(WorldBuild, AWorldBuiltForWritingWithoutTheBroadPhaseWritesAndDumpsWhatTheFullOneDoes)
{
    MetaWorld world;
    MetaBody* previous = nullptr;
    for (int i = 0; i < 30; ++i) {
        MetaBody* body = addBody(world, {float(i % 6) * 1.5f, float(i / 6)},
                                 i % 3 == 0 ? BodyType::Static : BodyType::Dynamic);
        body->active = i % 4 != 1;
        body->awake = i % 5 != 2;
        addFixture(world, body, {{0, 0}}, ShapeType::Circle, 0.4f);
        addFixture(world, body, {{0, 0}, {1, 0}, {0.5f, 0.8f}}, ShapeType::Polygon);
        addFixture(world, body, {{-1, 0}, {0, 0.5f}, {1, 0}}, ShapeType::Loop);
        if (previous) {
            auto joint = std::make_unique<MetaJoint>();
            joint->type = i % 2 ? JointType::Revolute : JointType::Distance;
            joint->bodyA = previous;
            joint->bodyB = body;
            world.addJoint(std::move(joint), 0);
        }
        previous = body;
    }
    WorldBuild full(world);
    full.addScene(world);
    WorldBuild written(world);
    written.skipBroadPhase();
    written.addScene(world);
    EXPECT_GT(full.world().GetProxyCount(), 100);
    EXPECT_EQ(written.world().GetProxyCount(), 0) << "no collision search was built";
    ASSERT_EQ(written.bodies().size(), full.bodies().size());
    for (size_t i = 0; i < full.bodies().size(); ++i) {
        EXPECT_EQ(written.bodies()[i].enabled, full.bodies()[i].body->IsEnabled()) << "body " << i;
        EXPECT_EQ(written.bodies()[i].body->GetMass(), full.bodies()[i].body->GetMass()) << "body " << i;
    }
    const ExportPropertyFilter filter(world.excludedJsonExportProperties);
    const QByteArray text = rawInfoText(full, world, filter);
    ASSERT_FALSE(text.isEmpty());
    EXPECT_EQ(rawInfoText(written, world, filter), text);
    EXPECT_TRUE(text.contains("\"active\":false") || text.contains("\"active\": false")) << "disabled bodies are written so";
    // Box2D's dump needs the bodies as the scene has them: enabled first.
    const QByteArray dump = sourceCodeText(full);
    ASSERT_FALSE(dump.isEmpty());
    EXPECT_EQ(sourceCodeText(written), dump);
    EXPECT_EQ(written.world().GetProxyCount(), full.world().GetProxyCount());
}
