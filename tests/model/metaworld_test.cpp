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

// A view redraws a body only when its revision (or a public field) changed:
// every change of what a body draws through private state must give the
// body a new revision, and nothing else may.
TEST(MetaWorld, EveryChangeOfNamesFixturesVerticesOrShapesGivesTheBodyANewRevision)
{
    MetaWorld world;
    MetaBody* body = world.addBody(std::make_unique<MetaBody>(), 0, "crate");
    MetaBody* other = world.addBody(std::make_unique<MetaBody>(), 0, "other");
    EXPECT_NE(body->revision(), other->revision());
    auto made = std::make_unique<MetaFixture>();
    made->setVertices({{0, 0}, {1, 0}, {0, 1}});
    made->addShape(ShapeType::Polygon, 0);
    MetaFixture* fixture = world.addFixture(body, std::move(made), 0, "lid");

    const std::uint64_t otherRevision = other->revision();
    std::uint64_t last = body->revision();
    const auto changes = [&](const char* what) {
        EXPECT_NE(body->revision(), last) << what;
        last = body->revision();
    };
    world.setName(body, "box");
    changes("renaming the body");
    world.setName(fixture, "top");
    changes("renaming a fixture");
    fixture->setVertices({{0, 0}, {2, 0}, {0, 2}});
    changes("new vertices");
    EXPECT_TRUE(fixture->shape(0).setRadius(0.1f));
    changes("a new radius");
    EXPECT_TRUE(fixture->shape(0).setType(ShapeType::Loop));
    changes("a new shape type");
    fixture->shape(0).assign(ShapeType::Polygon, 0);
    changes("a shape set by undo");
    fixture->addShape(ShapeType::Line, 0);
    changes("a shape added");
    fixture->removeLastShape();
    changes("a shape removed");
    std::unique_ptr<MetaFixture> taken = world.removeFixture(fixture);
    changes("a fixture removed");
    world.addFixture(body, std::move(taken), 0, "again");
    changes("a fixture added");

    // Public fields are compared directly, and refused edits change nothing.
    const std::uint64_t before = body->revision();
    body->position = {3, 4};
    EXPECT_FALSE(world.setName(body, "bad<name"));
    EXPECT_EQ(body->revision(), before);
    EXPECT_EQ(other->revision(), otherRevision) << "another body's changes are not this one's";

    // A body made later, even where a freed one lived, has a revision of its own.
    const std::uint64_t freed = other->revision();
    world.removeBody(other).reset();
    MetaBody* next = world.addBody(std::make_unique<MetaBody>(), 0, "next");
    EXPECT_NE(next->revision(), freed);
}
