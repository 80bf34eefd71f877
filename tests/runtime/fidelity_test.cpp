// What a game loads is what the editor exported: the world the runtime
// library builds from `plax -e` output has the same bodies, fixtures, joints
// and parameters as the exporter's own world, and simulates bit-identically.
#include "runtimescenes.h"
#include "runtimetesting.h"

#include "document/editordocument.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "physics/worldbuild.h"
#include "support/plaxrun.h"

#include <plax/box2d/box2dscene.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{
enum class Floats
{
    Hex,
    HumanReadable,
    Gson,
};

struct FidelityCase
{
    const char* name;
    int seed;   ///< 0: the bundled example scene
    Floats floats;
};

void PrintTo(const FidelityCase& c, std::ostream* out)
{
    *out << c.name;
}

std::string caseName(const testing::TestParamInfo<FidelityCase>& info)
{
    return info.param.name;
}

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class Fidelity : public testing::TestWithParam<FidelityCase>
{
protected:
    // The scene file this case exports.
    QString sceneFile()
    {
        const FidelityCase& c = GetParam();
        if (c.seed == 0)
            return QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax");
        std::unique_ptr<MetaWorld> scene = RuntimeScenes::everyShapeAndJoint(unsigned(c.seed));
        scene->exportOptions.useHumanReadableFloats = c.floats == Floats::HumanReadable;
        scene->exportOptions.useGsonFormat = c.floats == Floats::Gson;
        scene->exportOptions.compactCommonFloats = c.floats != Floats::Gson;
        const QString path = m_sandbox.path(QStringLiteral("generated.plax"));
        EXPECT_TRUE(saveSceneFile(*scene, path));
        return path;
    }

    PlaxSandbox m_sandbox;
};

TEST_P(Fidelity, LoadedWorldIsTheExportersWorld)
{
    const QString scenePath = sceneFile();
    std::string failure;
    const QString exported = exportWithPlax(m_sandbox, scenePath, QStringLiteral("export.json"), &failure);
    ASSERT_FALSE(exported.isEmpty()) << failure;

    std::string error;
    std::unique_ptr<plax::Box2DScene> loaded = plax::loadBox2DScene(exported.toStdString(), &error);
    ASSERT_TRUE(loaded) << error;
    EXPECT_TRUE(error.empty());

    // The exporter's own world, built from the same file as plax built it.
    EditorDocument document;
    ASSERT_TRUE(document.load(scenePath));
    const std::unique_ptr<ExpandedWorld> expanded = buildExportWorld(document);
    WorldBuild& build = expanded->build();
    // A world built for export leaves its bodies without collision proxies
    // (disabled) until it is written; enabled as the exporter's dump has them.
    build.enableBodies();
    b2World& reference = build.world();

    ASSERT_EQ(loaded->bodies().size(), build.bodies().size());
    ASSERT_EQ(loaded->joints().size(), build.joints().size());
    ASSERT_EQ(loaded->world().GetBodyCount(), reference.GetBodyCount());
    ASSERT_EQ(loaded->world().GetJointCount(), reference.GetJointCount());
    EXPECT_GT(reference.GetBodyCount(), 5);
    EXPECT_GT(reference.GetJointCount(), 2);

    // Box2D's dump lists every body, fixture (twins included) and joint with
    // all their parameters; the two worlds must dump the same text.
    const std::string referenceDump = worldDump(reference);
    const std::string loadedDump = worldDump(loaded->world());
    ASSERT_FALSE(referenceDump.empty());
    EXPECT_EQ(loadedDump, referenceDump);

    // Mass is not in the dump: compare it, and the names the game looks up.
    for (size_t i = 0; i < build.bodies().size(); ++i) {
        const b2Body* r = build.bodies()[i].body;
        const b2Body* l = loaded->bodies()[i];
        EXPECT_TRUE(sameBits(l->GetMass(), r->GetMass())) << "body " << i;
        EXPECT_TRUE(sameBits(l->GetInertia(), r->GetInertia())) << "body " << i;
        EXPECT_TRUE(sameBits(l->GetLocalCenter().x, r->GetLocalCenter().x)) << "body " << i;
        EXPECT_TRUE(sameBits(l->GetLocalCenter().y, r->GetLocalCenter().y)) << "body " << i;
        EXPECT_EQ(loaded->name(l), build.bodies()[i].name.toStdString());
    }
    for (size_t i = 0; i < build.joints().size(); ++i)
        EXPECT_EQ(loaded->name(loaded->joints()[i]), build.joints()[i].name.toStdString());

    // Same settings, same 300 steps, the same bits.
    const plax::WorldSettings& settings = loaded->settings();
    EXPECT_EQ(settings.stepsPerSecond, document.world().settings.stepsPerSecond);
    EXPECT_EQ(settings.velocityIterations, document.world().settings.velocityIterations);
    EXPECT_EQ(settings.positionIterations, document.world().settings.positionIterations);
    const float dt = 1.0f / settings.stepsPerSecond;
    int moving = 0;
    for (int step = 0; step < 300; ++step) {
        reference.Step(dt, settings.velocityIterations, settings.positionIterations);
        loaded->step();
    }
    for (size_t i = 0; i < build.bodies().size(); ++i) {
        const BodyState r = stateOf(build.bodies()[i].body);
        const BodyState l = stateOf(loaded->bodies()[i]);
        EXPECT_TRUE(l == r) << "body " << i << " '" << loaded->name(loaded->bodies()[i]) << "': loaded "
                            << describe(l) << ", exporter " << describe(r);
        if (build.bodies()[i].body->GetType() == b2_dynamicBody && build.bodies()[i].body->IsAwake())
            ++moving;
    }
    EXPECT_GT(reference.GetContactCount(), 5) << "the comparison covers colliding bodies";
    EXPECT_GT(moving, 3) << "and moving ones";
}

INSTANTIATE_TEST_SUITE_P(Scenes, Fidelity,
                         testing::Values(FidelityCase{"ExampleScene", 0, Floats::HumanReadable},
                                         FidelityCase{"GeneratedHex", 1, Floats::Hex},
                                         FidelityCase{"GeneratedHumanReadable", 2, Floats::HumanReadable},
                                         FidelityCase{"GeneratedGson", 3, Floats::Gson},
                                         FidelityCase{"GeneratedHexOtherSeed", 4, Floats::Hex}),
                         caseName);
} // namespace
