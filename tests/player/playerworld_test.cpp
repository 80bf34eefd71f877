// The player's world: the document written as raw info and read back, with
// object instances expanded, a ground body, and each body traced to the
// document body it came from.

#include "player/playerscenes.h"

#include "document/editordocument.h"
#include "model/metaimage.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "objects/objectscenes.h"
#include "physics/worldbuild.h"
#include "player/playerworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{
struct BodyState
{
    b2Vec2 position;
    float angle;
    b2Vec2 velocity;
    float angularVelocity;
};

BodyState stateOf(const b2Body* body)
{
    return {body->GetPosition(), body->GetAngle(), body->GetLinearVelocity(), body->GetAngularVelocity()};
}

bool sameBits(const BodyState& a, const BodyState& b)
{
    return std::memcmp(&a, &b, sizeof(BodyState)) == 0;
}

void stepWorld(b2World& world, int steps)
{
    for (int i = 0; i < steps; ++i)
        world.Step(1.0f / 60.0f, 8, 3);
}

// Every value style of the export reads back to the same bits.
enum class Floats
{
    Hex,
    HumanReadable,
    Gson
};

class PlayerWorldIdentity : public ::testing::TestWithParam<Floats>
{
};

TEST_P(PlayerWorldIdentity, SimulatesBitIdenticallyToTheExportWorld)
{
    EditorDocument document;
    PlayerScenes::buildPile(document, 5, 4);
    document.world().exportOptions.useHumanReadableFloats = GetParam() == Floats::HumanReadable;
    document.world().exportOptions.useGsonFormat = GetParam() == Floats::Gson;
    const std::unique_ptr<ExpandedWorld> exported = buildExportWorld(document);
    // The export world is built to be written (its bodies disabled, without
    // the collision search); enabled, it is the world its dump describes.
    exported->build().enableBodies();
    QString error;
    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, &error);
    ASSERT_TRUE(player) << error.toStdString();
    EXPECT_TRUE(error.isEmpty());

    const auto& reference = exported->build().bodies();
    ASSERT_EQ(player->bodyCount(), reference.size());
    for (size_t i = 0; i < reference.size(); ++i) {
        ASSERT_TRUE(sameBits(stateOf(player->body(i)), stateOf(reference[i].body))) << "body " << i << " at start";
        EXPECT_EQ(player->body(i)->GetMass(), reference[i].body->GetMass()) << "body " << i;
        EXPECT_EQ(player->body(i)->GetInertia(), reference[i].body->GetInertia()) << "body " << i;
    }

    stepWorld(exported->build().world(), 100);
    stepWorld(player->world(), 100);
    int moved = 0;
    for (size_t i = 0; i < reference.size(); ++i) {
        const BodyState p = stateOf(player->body(i));
        const BodyState r = stateOf(reference[i].body);
        EXPECT_TRUE(sameBits(p, r)) << "body " << i << ": player (" << p.position.x << ", " << p.position.y << ", "
                                    << p.angle << ") export (" << r.position.x << ", " << r.position.y << ", "
                                    << r.angle << ")";
        if (reference[i].body->GetType() == b2_dynamicBody && reference[i].body->GetPosition().y < 3.0f)
            ++moved;
    }
    EXPECT_GT(moved, 5) << "the pile fell: the comparison covers a moving scene";
    EXPECT_GT(player->world().GetContactCount(), 10);
}

INSTANTIATE_TEST_SUITE_P(ValueStyles, PlayerWorldIdentity,
                         ::testing::Values(Floats::Hex, Floats::HumanReadable, Floats::Gson));

TEST(PlayerWorld, AddsAStaticGroundBodyAndTracesBodiesToTheDocument)
{
    EditorDocument document;
    PlayerScenes::buildPile(document, 2, 1);
    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(player);
    ASSERT_NE(player->groundBody(), nullptr);
    EXPECT_EQ(player->groundBody()->GetType(), b2_staticBody);
    EXPECT_EQ(player->groundBody()->GetFixtureList(), nullptr);
    EXPECT_EQ(player->world().GetBodyCount(), int(player->bodyCount()) + 1);

    const auto& sceneBodies = document.world().bodies();
    ASSERT_EQ(player->bodyCount(), sceneBodies.size());
    for (size_t i = 0; i < sceneBodies.size(); ++i) {
        EXPECT_EQ(player->sceneBodyId(i), sceneBodies[i]->id());
        EXPECT_EQ(player->body(i)->GetPosition().x, sceneBodies[i]->position.x);
    }
}

TEST(PlayerWorld, ExpandsObjectInstancesWhoseBodiesBelongToNoDocumentBody)
{
    SceneFolder folder;
    folder.write("ball.plax", ObjectScenes::scene(ObjectScenes::circleBody(1, "ball", 0, 0, 0.5f)));
    const QString main = folder.write(
        "main.plax", ObjectScenes::scene(ObjectScenes::polygonBody(7, "crate", 0, 0, {0, 0, 1, 0, 1, 1, 0, 1}),
                                         ObjectScenes::instance(1, "left", "ball.plax", -3, 2) + "," +
                                             ObjectScenes::instance(2, "right", "ball.plax", 3, 2)));
    EditorDocument document;
    ASSERT_TRUE(document.load(main));

    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(player);
    ASSERT_EQ(player->bodyCount(), 3u) << "the crate and one ball per instance";
    EXPECT_EQ(player->sceneBodyId(0), 7u);
    EXPECT_EQ(player->sceneBodyId(1), 0u);
    EXPECT_EQ(player->sceneBodyId(2), 0u);
    EXPECT_FLOAT_EQ(player->body(1)->GetPosition().x, -3);
    EXPECT_FLOAT_EQ(player->body(2)->GetPosition().x, 3);
    EXPECT_EQ(player->body(2)->GetFixtureList()->GetShape()->GetType(), b2Shape::e_circle);
}

TEST(PlayerWorld, AFailedExportLeavesNoWorldAndKeepsTheError)
{
    EditorDocument document;
    PlayerScenes::buildPile(document, 2, 1);
    {
        LogCapture capture;
        QString error;
        const auto broken = [](const EditorDocument&) { return PlayerRawInfo{"{\"body\": [", QString(), {}}; };
        EXPECT_FALSE(PlayerWorld::load(&document, &error, broken));
        EXPECT_FALSE(error.isEmpty()) << "the reader's error is kept for the overlay";
        EXPECT_TRUE(capture.has(LOG_ERROR, "Failed to load world for player view\n" + error)) << capture.dump().toStdString();
    }
    {
        LogCapture capture;
        QString error;
        const auto refused = [](const EditorDocument&) {
            return PlayerRawInfo{QByteArray(), QStringLiteral("nothing to write"), {}};
        };
        EXPECT_FALSE(PlayerWorld::load(&document, &error, refused));
        EXPECT_EQ(error, "nothing to write");
        EXPECT_TRUE(capture.has(LOG_ERROR, "Failed to load world for player view\nnothing to write"));
    }
    {
        LogCapture capture;
        QString error;
        EXPECT_FALSE(PlayerWorld::load(nullptr, &error));
        EXPECT_TRUE(capture.has(LOG_ERROR, "Document is null while trying to load world"));
        EXPECT_EQ(error, "Document is null while trying to load world");
    }
}

TEST(PlayerWorld, KeepsImagesWithTheBodiesTheyAreAttachedTo)
{
    EditorDocument document;
    MetaWorld& world = document.world();
    PlayerScenes::addBody(world, BodyType::Static, {0, 0});
    MetaBody* crate = PlayerScenes::addBody(world, BodyType::Dynamic, {2, 3});
    PlayerScenes::addBox(world, crate, 0.5f);
    auto label = std::make_unique<MetaImage>();
    label->body = crate;
    label->file = QStringLiteral("crate.png");
    label->scale = 2;
    world.addImage(std::move(label), 0, QStringLiteral("label"));
    world.addImage(std::make_unique<MetaImage>(), 0, QStringLiteral("backdrop"));

    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(player);
    const auto& images = player->build().images();
    ASSERT_EQ(images.size(), 2u);
    EXPECT_EQ(images[0].name, "label");
    EXPECT_EQ(images[0].bodyIndex, 1);
    EXPECT_EQ(player->build().bodies()[size_t(images[0].bodyIndex)].body, player->body(1));
    EXPECT_EQ(images[0].placed->scale, 2.0f);
    EXPECT_TRUE(images[0].placed->file.endsWith("crate.png"));
    EXPECT_EQ(images[1].bodyIndex, -1) << "a backing image belongs to no body";
}

TEST(PlayerWorld, ExcludedExportPropertiesShapeThePlayersWorldToo)
{
    EditorDocument document;
    MetaBody* body = PlayerScenes::addBody(document.world(), BodyType::Dynamic, {2, 5}, 0.5f);
    PlayerScenes::addBox(document.world(), body, 0.5f);
    document.world().excludedJsonExportProperties = {QStringLiteral("/world/body/angle")};
    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, nullptr);
    ASSERT_TRUE(player);
    EXPECT_EQ(player->body(0)->GetAngle(), 0.0f) << "the player runs what a game would load";
    EXPECT_EQ(player->body(0)->GetPosition().y, 5.0f);
}
} // namespace
