// The C++ source that `plax -c` writes compiles against Box2D and builds the
// same world as the raw-info writer's world for the same scene.
#include "io/sceneloader.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <box2d/box2d.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace
{
void buildDumpedWorld(b2World* m_world)
{
#include "demo_dump.inl"
}

struct BodyState
{
    float x, y, angle, mass;
    int fixtures;
};

std::vector<BodyState> states(b2World& world)
{
    std::vector<BodyState> result;
    for (b2Body* b = world.GetBodyList(); b; b = b->GetNext()) {
        int fixtures = 0;
        for (b2Fixture* f = b->GetFixtureList(); f; f = f->GetNext())
            ++fixtures;
        result.push_back({b->GetPosition().x, b->GetPosition().y, b->GetAngle(), b->GetMass(), fixtures});
    }
    // Bodies are compared in a fixed order whatever order they were made in.
    std::sort(result.begin(), result.end(), [](const BodyState& a, const BodyState& b) {
        return std::tie(a.x, a.y, a.mass) < std::tie(b.x, b.y, b.mass);
    });
    return result;
}
} // namespace

TEST(SourceCodeExport, CompiledDumpBuildsTheSameWorld)
{
    std::unique_ptr<MetaWorld> scene = loadSceneFile(PLAX_SOURCE_DIR "/examples/demo.plax");
    ASSERT_TRUE(scene);
    WorldBuild build(*scene);
    build.addScene(*scene);
    b2World dumped(b2Vec2(0, 0));
    buildDumpedWorld(&dumped);

    EXPECT_EQ(dumped.GetBodyCount(), build.world().GetBodyCount());
    EXPECT_EQ(dumped.GetJointCount(), build.world().GetJointCount());
    EXPECT_EQ(dumped.GetGravity(), build.world().GetGravity());
    const auto expected = states(build.world());
    const auto actual = states(dumped);
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < actual.size(); ++i) {
        EXPECT_EQ(actual[i].x, expected[i].x);
        EXPECT_EQ(actual[i].y, expected[i].y);
        EXPECT_EQ(actual[i].angle, expected[i].angle);
        EXPECT_FLOAT_EQ(actual[i].mass, expected[i].mass);
        EXPECT_EQ(actual[i].fixtures, expected[i].fixtures);
    }
}
