// Keeping the player's result: the simulated state of the document's bodies
// written back as one undo step that undo takes back exactly.

#include "player/playerscenes.h"

#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/objectscenes.h"
#include "player/keepresult.h"
#include "player/playersimulation.h"
#include "player/playerworld.h"
#include "support/logcapture.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <limits>

namespace
{
QByteArray savedBytes(EditorDocument& document, const QString& path)
{
    return TestFiles::savedScene(document.world(), path);
}

TEST(KeepResult, WritesTheSimulatedStateAsOneUndoStepThatUndoTakesBack)
{
    QTemporaryDir folder;
    EditorDocument document;
    PlayerScenes::buildPile(document, 3, 2);
    const QByteArray before = savedBytes(document, folder.filePath("before.plax"));
    const int undoSteps = document.undoStack().count();

    PlayerSimulation sim(&document);
    for (int i = 0; i < 100; ++i)
        sim.singleStep();
    PlayerWorld& world = *sim.world();

    int dynamic = 0;
    for (const auto& body : document.world().bodies())
        dynamic += body->type == BodyType::Dynamic;
    {
        LogCapture capture;
        EXPECT_EQ(sim.keepResult(), dynamic) << "every falling body changed, the static ground did not";
        EXPECT_TRUE(capture.texts(LOG_WARNING).isEmpty() && capture.texts(LOG_ERROR).isEmpty())
            << capture.dump().toStdString();
    }
    ASSERT_EQ(document.undoStack().count(), undoSteps + 1);
    EXPECT_EQ(document.undoStack().text(undoSteps), keepResultUndoText());

    for (size_t i = 0; i < world.bodyCount(); ++i) {
        const MetaBody* body = document.world().findBody(world.sceneBodyId(i));
        ASSERT_NE(body, nullptr);
        const b2Body* simulated = world.body(i);
        EXPECT_EQ(body->position.x, simulated->GetPosition().x) << "body " << i;
        EXPECT_EQ(body->position.y, simulated->GetPosition().y) << "body " << i;
        EXPECT_EQ(body->angle, simulated->GetAngle()) << "body " << i;
        EXPECT_EQ(body->linearVelocity.x, simulated->GetLinearVelocity().x) << "body " << i;
        EXPECT_EQ(body->linearVelocity.y, simulated->GetLinearVelocity().y) << "body " << i;
        EXPECT_EQ(body->angularVelocity, simulated->GetAngularVelocity()) << "body " << i;
    }
    const QByteArray after = savedBytes(document, folder.filePath("after.plax"));
    ASSERT_NE(after, before);

    document.undoStack().undo();
    EXPECT_EQ(savedBytes(document, folder.filePath("undone.plax")), before);
    document.undoStack().redo();
    EXPECT_EQ(savedBytes(document, folder.filePath("redone.plax")), after);

    // Reloading the player now starts from the kept state.
    const b2Vec2 kept = world.body(3)->GetPosition();
    sim.reload();
    EXPECT_EQ(sim.world()->body(3)->GetPosition(), kept);
}

TEST(KeepResult, LeavesBodiesOfInstancesAndDeletedBodiesAlone)
{
    SceneFolder folder;
    folder.write("ball.plax", ObjectScenes::scene(ObjectScenes::circleBody(1, "ball", 0, 0, 0.5f)));
    const QString main = folder.write(
        "main.plax", ObjectScenes::scene(ObjectScenes::circleBody(4, "kept", 0, 5, 0.5f) + "," +
                                             ObjectScenes::circleBody(5, "deleted", 3, 5, 0.5f),
                                         ObjectScenes::instance(1, "inst", "ball.plax", -3, 5)));
    EditorDocument document;
    ASSERT_TRUE(document.load(main));
    const std::unique_ptr<PlayerWorld> world = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(world);
    ASSERT_EQ(world->bodyCount(), 3u);
    for (int i = 0; i < 30; ++i)
        world->world().Step(1.0f / 60, 8, 3);

    auto removed = document.world().removeBody(document.world().findBody(5));
    ASSERT_TRUE(removed);
    EXPECT_EQ(keepPlayerResult(*world, document), 1);
    EXPECT_EQ(document.world().findBody(4)->position.y, world->body(0)->GetPosition().y);
    EXPECT_EQ(document.world().objects().size(), 1u);
    EXPECT_EQ(document.world().bodies().size(), 1u) << "no body was added for the instance's ball";
}

TEST(KeepResult, BodiesWithStateThatIsNotFiniteAreSkippedWithAWarning)
{
    EditorDocument document;
    MetaBody* body = PlayerScenes::addBody(document.world(), BodyType::Dynamic, {1, 2});
    PlayerScenes::addBox(document.world(), body, 0.5f);
    const std::unique_ptr<PlayerWorld> world = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(world);
    world->body(0)->SetTransform(b2Vec2(4, 5), 0);
    world->body(0)->SetLinearVelocity(b2Vec2(std::numeric_limits<float>::quiet_NaN(), 0));
    LogCapture capture;
    EXPECT_EQ(keepPlayerResult(*world, document), 0);
    EXPECT_TRUE(capture.contains(LOG_WARNING, "not finite"));
    EXPECT_EQ(body->position.x, 1.0f);
    EXPECT_EQ(document.undoStack().count(), 0) << "nothing to keep leaves no undo step";
}
} // namespace
