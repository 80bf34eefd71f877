#include "model/metaworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{
MetaBody* addBody(MetaWorld& world, ItemId id = 0, const QString& name = QString())
{
    return world.addBody(std::make_unique<MetaBody>(), id, name);
}
} // namespace

TEST(IdAllocation, ContinuesFromLastOrFillsGaps)
{
    MetaWorld world;
    EXPECT_EQ(addBody(world)->id(), 1u);
    addBody(world);
    addBody(world);
    world.removeBody(world.findBody(2));
    EXPECT_EQ(world.allocateId(ItemKind::Body, true), 4u);
    EXPECT_EQ(world.allocateId(ItemKind::Body, false), 2u);
}

TEST(IdAllocation, KindsAreIndependentAndExplicitIdsCount)
{
    MetaWorld world;
    addBody(world, 10);
    EXPECT_EQ(world.allocateId(ItemKind::Body), 11u);
    EXPECT_EQ(world.allocateId(ItemKind::Joint), 1u);
    EXPECT_EQ(addBody(world, 10), nullptr) << "a used id is refused";
}

TEST(IdAllocation, RunsOutAtTheTop)
{
    MetaWorld world;
    addBody(world, 4294967294u);
    LogCapture log;
    EXPECT_EQ(world.allocateId(ItemKind::Body, true), 0u);
    EXPECT_TRUE(log.contains(LOG_ERROR, "No unique body IDs available"));
    // Filling from 1 is still refused once the last id is the top one.
    EXPECT_EQ(world.allocateId(ItemKind::Body, false), 0u);

    MetaWorld other;
    other.addImage(std::make_unique<MetaImage>(), 4294967293u);
    EXPECT_EQ(other.allocateId(ItemKind::Image, true), 4294967294u);
    EXPECT_EQ(other.allocateId(ItemKind::Image, true), 0u);
    EXPECT_TRUE(log.contains(LOG_ERROR, "No unique image IDs available"));
}

TEST(UniqueNames, FirstUnusedNumberOfThePattern)
{
    MetaWorld world;
    EXPECT_EQ(world.uniqueName(ItemKind::Fixture), "fixture0");
    addBody(world, 0, "body0");
    addBody(world, 0, "body1");
    addBody(world, 0, "body3");
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body2");
    addBody(world, 0, "body2");
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body4");
}

TEST(UniqueNames, FreedNamesAreFoundAgain)
{
    MetaWorld world;
    for (int i = 0; i < 5; ++i)
        addBody(world, 0, world.uniqueName(ItemKind::Body));
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body5");
    world.removeBody(world.findBody(2)); // body1
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body1");
    world.setName(world.findBody(1), "renamed"); // frees body0
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body0");
}

TEST(UniqueNames, NamesThatOnlyLookLikeThePatternDoNotCount)
{
    MetaWorld world;
    addBody(world, 0, "body00");
    addBody(world, 0, "Body0");
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body0");
}

TEST(UniqueNames, SharedNamesAreCounted)
{
    MetaWorld world;
    MetaBody* a = addBody(world, 0, "body0");
    MetaBody* b = addBody(world, 0, "body0");
    EXPECT_EQ(world.registry(ItemKind::Body).nameCount("body0"), 2);
    world.removeBody(a);
    EXPECT_EQ(world.uniqueName(ItemKind::Body), "body1") << "body0 is still used by the second body";
    EXPECT_EQ(world.registry(ItemKind::Body).findByName("body0"), b);
}

// The look-up by name is made when first asked for: what happened to the
// names before that (renames, removals, shared names) must read as if it had
// been kept all along.
TEST(NameLookUp, ChangesBeforeTheFirstLookUpAreSeen)
{
    MetaWorld world;
    MetaBody* first = addBody(world, 0, "shared");
    MetaBody* second = addBody(world, 0, "shared");
    MetaBody* renamed = addBody(world, 0, "old");
    MetaBody* removed = addBody(world, 0, "gone");
    world.removeBody(removed);
    world.setName(renamed, "new");
    const ItemRegistry& bodies = world.registry(ItemKind::Body);
    EXPECT_EQ(bodies.findByName("shared"), first) << "the first registered of a shared name";
    EXPECT_EQ(bodies.nameCount("shared"), 2);
    EXPECT_EQ(bodies.findByName("old"), nullptr);
    EXPECT_EQ(bodies.findByName("new"), renamed);
    EXPECT_EQ(bodies.findByName("gone"), nullptr);
    // Items registered after the first look-up are found too.
    MetaBody* later = addBody(world, 0, "later");
    EXPECT_EQ(bodies.findByName("later"), later);
    world.removeBody(first);
    EXPECT_EQ(bodies.findByName("shared"), second);
}

TEST(NameLookUp, TwoThreadsAskingFirstFindTheSameItems)
{
    MetaWorld world;
    for (int i = 0; i < 20000; ++i)
        addBody(world, 0, QStringLiteral("b%1").arg(i));
    const ItemRegistry& bodies = world.registry(ItemKind::Body);
    std::vector<const MetaItem*> seen[2];
    std::thread other([&] {
        for (int i = 0; i < 20000; i += 97)
            seen[1].push_back(bodies.findByName(QStringLiteral("b%1").arg(i)));
    });
    for (int i = 0; i < 20000; i += 97)
        seen[0].push_back(bodies.findByName(QStringLiteral("b%1").arg(i)));
    other.join();
    ASSERT_EQ(seen[0].size(), seen[1].size());
    for (size_t k = 0; k < seen[0].size(); ++k) {
        ASSERT_NE(seen[0][k], nullptr);
        EXPECT_EQ(seen[0][k], seen[1][k]);
        EXPECT_EQ(seen[0][k]->name(), QStringLiteral("b%1").arg(k * 97));
    }
}
