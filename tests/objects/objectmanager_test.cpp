// The object cache: one document per file, reference counts, debug lines.
#include "base/flags.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/objectmanager.h"
#include "objects/objectscenes.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace ObjectScenes;

namespace
{
class ObjectManagerTest : public ::testing::Test
{
protected:
    SceneFolder folder;
    ObjectManager cache;
    QString wheel = folder.write("wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    int userA = 0;
    int userB = 0;
};
} // namespace

TEST_F(ObjectManagerTest, UsersOfOneFileShareAnEntryUntilTheLastRelease)
{
    EditorDocument* first = cache.getObject(wheel, &userA);
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->world().bodies().size(), 1u);
    EXPECT_EQ(first->world().bodies()[0]->name(), "rim");

    // A second spelling of the same file finds the cached document.
    const QString otherSpelling = folder.path("sub/../wheel.plax");
    QDir().mkpath(folder.path("sub"));
    EditorDocument* second = cache.getObject(otherSpelling, &userB);
    EXPECT_EQ(second, first);
    EXPECT_EQ(cache.entryCount(), 1);
    EXPECT_EQ(cache.referenceCount(wheel), 2);
    EXPECT_EQ(cache.userCount(wheel), 2);
    EXPECT_TRUE(cache.loadedAt(wheel).isValid());

    cache.releaseObject(first, &userA);
    EXPECT_EQ(cache.entryCount(), 1);
    EXPECT_EQ(cache.referenceCount(wheel), 1);
    EXPECT_EQ(cache.userCount(wheel), 1);
    EXPECT_EQ(cache.cachedDocument(wheel), first) << "kept for its other user";

    cache.releaseObject(second, &userB);
    EXPECT_EQ(cache.entryCount(), 0);
    EXPECT_EQ(cache.referenceCount(wheel), 0);
    EXPECT_EQ(cache.cachedDocument(wheel), nullptr);
}

TEST_F(ObjectManagerTest, EmptyMissingAndBrokenFilesGiveNoDocument)
{
    const QString broken = folder.write("broken.plax", "{\"metaworld\": [1, 2");
    EXPECT_EQ(cache.getObject(QString(), &userA), nullptr);
    EXPECT_EQ(cache.getObject(folder.path("missing.plax"), &userA), nullptr);
    EXPECT_EQ(cache.getObject(broken, &userA), nullptr);
    EXPECT_EQ(cache.entryCount(), 0);
    EXPECT_FALSE(AppFlags::isLoadingObject()) << "the loading flag is restored after a failed load";

    // Releasing something the cache does not hold changes nothing.
    EditorDocument stranger;
    cache.releaseObject(&stranger, &userA);
    cache.releaseObject(nullptr);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST_F(ObjectManagerTest, QuietFlagSilencesTheCacheLines)
{
    LogCapture log;
    AppFlags::setQuiet(true);
    EditorDocument* doc = cache.getObject(wheel, &userA);
    EditorDocument* again = cache.getObject(wheel, &userB);
    cache.releaseObject(doc, &userA);
    cache.releaseObject(again, &userB);
    AppFlags::setQuiet(false);
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(again, doc);
    // The flag's whole effect is on the log: the cache's own lines stay out.
    for (const char* line : {"Loaded object", "Found object", "Decremented reference", "Removing object"})
        EXPECT_FALSE(log.contains(0, line)) << line;
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST_F(ObjectManagerTest, ReleasingANestedDocumentReleasesWhatItsInstancesHold)
{
    // The cache deletes an object document only after its own instances
    // gave back their references.
    folder.write("car.plax", scene(circleBody(1, "chassis", 0, 0, 1), instance(1, "w", "wheel.plax")));
    EditorDocument* car = cache.getObject(folder.path("car.plax"), &userA);
    ASSERT_NE(car, nullptr);
    MetaObject& inner = *car->world().objects()[0];
    inner.objectDocument = cache.getObject(wheel, &inner);
    ASSERT_NE(inner.objectDocument, nullptr);
    EXPECT_EQ(cache.entryCount(), 2);

    cache.releaseObject(car, &userA);
    EXPECT_EQ(cache.entryCount(), 0);
}
