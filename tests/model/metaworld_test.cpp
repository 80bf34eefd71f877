#include "model/metaworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

TEST(MetaWorld, NewSceneDefaults)
{
    MetaWorld world;
    EXPECT_EQ(world.settings.gravity, (Vec2{0, -10}));
    EXPECT_EQ(world.settings.stepsPerSecond, 60.0f);
    EXPECT_EQ(world.settings.velocityIterations, 8);
    EXPECT_EQ(world.settings.positionIterations, 3);
    EXPECT_TRUE(world.settings.allowSleep);
    EXPECT_TRUE(world.settings.warmStarting);
    EXPECT_TRUE(world.settings.continuousPhysics);
    EXPECT_FALSE(world.settings.subStepping);
}

TEST(MetaWorld, RenameRefusesForbiddenCharacters)
{
    MetaWorld world;
    MetaBody* body = world.addBody(std::make_unique<MetaBody>(), 0, "ok");
    LogCapture log;
    for (const char* bad : {"a<b", "a>b", "a\"b", "a'b", "a\\b"}) {
        EXPECT_FALSE(world.setName(body, bad));
        EXPECT_EQ(body->name(), "ok");
    }
    EXPECT_EQ(log.texts(LOG_WARNING).count("Ignoring attempt to set name with invalid characters"), 5);
    EXPECT_TRUE(world.setName(body, "fine name"));
    EXPECT_EQ(world.registry(ItemKind::Body).findByName("fine name"), body);
    EXPECT_EQ(world.registry(ItemKind::Body).findByName("ok"), nullptr);
}

TEST(MetaWorld, BodiesOwnTheirFixtures)
{
    MetaWorld world;
    auto body = std::make_unique<MetaBody>();
    auto fixture = std::make_unique<MetaFixture>();
    body->adoptFixture(std::move(fixture));
    MetaBody* b = world.addBody(std::move(body), 0);
    ASSERT_EQ(b->fixtures().size(), 1u);
    MetaFixture* f = b->fixtures()[0].get();
    EXPECT_EQ(f->body(), b);
    EXPECT_EQ(world.findFixture(f->id()), f);

    MetaFixture* second = world.addFixture(b, std::make_unique<MetaFixture>(), 0, "second");
    EXPECT_EQ(world.fixtureCount(), 2u);

    std::unique_ptr<MetaBody> removed = world.removeBody(b);
    ASSERT_TRUE(removed);
    EXPECT_EQ(world.fixtureCount(), 0u) << "removing a body unregisters its fixtures";
    EXPECT_EQ(world.findFixture(second->id()), nullptr);
    EXPECT_EQ(removed->world(), nullptr);
}

TEST(MetaWorld, FixtureDescriptionNamesBodyAndFixture)
{
    MetaWorld world;
    MetaBody* body = world.addBody(std::make_unique<MetaBody>(), 7, "crate");
    MetaFixture* named = world.addFixture(body, std::make_unique<MetaFixture>(), 3, "lid");
    MetaFixture* unnamed = world.addFixture(body, std::make_unique<MetaFixture>(), 4);
    EXPECT_EQ(named->description(), "crate/lid");
    EXPECT_EQ(unnamed->description(), "crate/#4");
}

TEST(MetaWorld, EveryKindIsFoundById)
{
    MetaWorld world;
    auto* j = world.addJoint(std::make_unique<MetaJoint>(), 5);
    auto* i = world.addImage(std::make_unique<MetaImage>(), 6);
    auto* s = world.addSampler(std::make_unique<MetaSampler>(), 7);
    auto* o = world.addObject(std::make_unique<MetaObject>(), 8);
    EXPECT_EQ(world.findJoint(5), j);
    EXPECT_EQ(world.findImage(6), i);
    EXPECT_EQ(world.findSampler(7), s);
    EXPECT_EQ(world.findObject(8), o);
    EXPECT_EQ(world.findJoint(6), nullptr);
    world.removeJoint(j);
    EXPECT_EQ(world.findJoint(5), nullptr);
    EXPECT_TRUE(world.joints().empty());
}

TEST(ItemKinds, NamesAndTags)
{
    EXPECT_EQ(itemKindDisplayName(ItemKind::Sampler), "Sampler");
    EXPECT_EQ(itemKindRecordTag(ItemKind::Object), "metaobject");
    EXPECT_EQ(MetaJoint::typeFromWord("wheel"), JointType::Wheel);
    EXPECT_EQ(MetaJoint::typeFromWord("pulley"), JointType::Unknown) << "scenes hold no pulley joints";
    EXPECT_EQ(MetaJoint::typeWord(JointType::Rope), "rope");
}
