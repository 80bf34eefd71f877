// Attaching cached object documents to the instances of a scene.
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"
#include "objects/objectscenes.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

using namespace ObjectScenes;

namespace
{
const char* const kLoop = "Detected loop in object instances, ignoring object file: %1";

std::unique_ptr<EditorDocument> open(const QString& path)
{
    auto doc = std::make_unique<EditorDocument>();
    if (!doc->load(path))
        return nullptr;
    return doc;
}

MetaObject& instanceOf(EditorDocument& doc, size_t i)
{
    return *doc.world().objects().at(i);
}
} // namespace

TEST(InstanceAttach, RelativeFilesResolveAgainstTheContainingDocument)
{
    SceneFolder folder;
    // parts/car.plax places "wheel.plax", which lives next to it, not next to the scene.
    folder.write("parts/wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    folder.write("parts/car.plax", scene(circleBody(1, "chassis", 0, 0, 1), instance(1, "front", "wheel.plax")));
    const QString main = folder.write("main.plax", scene("", instance(1, "car", "parts/car.plax") + "," +
                                                              instance(2, "lost", "wheel.plax")));
    auto doc = open(main);
    ASSERT_TRUE(doc);
    ObjectManager cache;
    LogCapture log;
    attachSceneObjects(*doc, cache);

    MetaObject& car = instanceOf(*doc, 0);
    ASSERT_NE(car.objectDocument, nullptr);
    EXPECT_EQ(car.parentInstance, nullptr);
    MetaObject& front = instanceOf(*car.objectDocument, 0);
    ASSERT_NE(front.objectDocument, nullptr);
    EXPECT_EQ(front.parentInstance, &car);
    EXPECT_EQ(front.objectDocument->world().bodies()[0]->name(), "rim");
    // Next to the scene there is no wheel.plax.
    EXPECT_EQ(instanceOf(*doc, 1).objectDocument, nullptr);
    EXPECT_TRUE(log.contains(LOG_WARNING, "Could not load object file: wheel.plax"));
    EXPECT_EQ(instanceFilePath(front, car.objectDocument->filePath()), folder.path("parts/wheel.plax"));

    detachDocumentInstances(*doc, cache);
    EXPECT_EQ(car.objectDocument, nullptr);
    EXPECT_EQ(cache.entryCount(), 0) << "releasing the scene's instances empties the cache";
}

TEST(InstanceAttach, TwoInstancesOfOneFileHoldOneReferenceEach)
{
    SceneFolder folder;
    const QString wheel = folder.write("wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    const QString main = folder.write("main.plax", scene("", instance(1, "a", "wheel.plax") + "," +
                                                              instance(2, "b", "wheel.plax", 3, 0)));
    auto doc = open(main);
    ASSERT_TRUE(doc);
    ObjectManager cache;
    SceneObjectsAttachment attached(*doc, cache);
    EXPECT_EQ(cache.entryCount(), 1);
    EXPECT_EQ(cache.referenceCount(wheel), 2);
    EXPECT_EQ(instanceOf(*doc, 0).objectDocument, instanceOf(*doc, 1).objectDocument);

    // Attaching again (the file did not change) takes no extra reference.
    EXPECT_TRUE(attachInstance(instanceOf(*doc, 0), *doc, cache));
    EXPECT_EQ(cache.referenceCount(wheel), 2);

    detachInstance(instanceOf(*doc, 0), cache);
    EXPECT_EQ(cache.referenceCount(wheel), 1);
    EXPECT_EQ(cache.entryCount(), 1);
    detachInstance(instanceOf(*doc, 1), cache);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(InstanceAttach, ChangingTheFileSwapsTheDocument)
{
    SceneFolder folder;
    const QString wheel = folder.write("wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    const QString box = folder.write("box.plax", scene(polygonBody(1, "crate", 0, 0, {0, 0, 1, 0, 1, 1})));
    auto doc = open(folder.write("main.plax", scene("", instance(1, "a", "wheel.plax"))));
    ASSERT_TRUE(doc);
    ObjectManager cache;
    SceneObjectsAttachment attached(*doc, cache);
    MetaObject& a = instanceOf(*doc, 0);
    a.file = "box.plax";
    EXPECT_TRUE(attachInstance(a, *doc, cache));
    ASSERT_NE(a.objectDocument, nullptr);
    EXPECT_EQ(a.objectDocument->world().bodies()[0]->name(), "crate");
    EXPECT_EQ(cache.referenceCount(wheel), 0);
    EXPECT_EQ(cache.referenceCount(box), 1);

    a.file.clear();
    EXPECT_FALSE(attachInstance(a, *doc, cache));
    EXPECT_EQ(a.objectDocument, nullptr);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(InstanceAttach, AFilePlacingItselfIsALoop)
{
    SceneFolder folder;
    const QString self = folder.write("self.plax", scene(circleBody(1, "b", 0, 0, 1), instance(1, "me", "self.plax")));
    ObjectManager cache;
    LogCapture log;

    // Opened directly, its own instance is the loop.
    auto doc = open(self);
    ASSERT_TRUE(doc);
    attachSceneObjects(*doc, cache);
    EXPECT_EQ(instanceOf(*doc, 0).objectDocument, nullptr);
    EXPECT_EQ(log.texts(LOG_WARNING).count(QString(kLoop).arg("self.plax")), 1);
    EXPECT_EQ(cache.entryCount(), 0);

    // Placed by another scene, the copy inside the cached document is the loop.
    log.clear();
    auto host = open(folder.write("host.plax", scene("", instance(1, "outer", "self.plax"))));
    ASSERT_TRUE(host);
    attachSceneObjects(*host, cache);
    MetaObject& outer = instanceOf(*host, 0);
    ASSERT_NE(outer.objectDocument, nullptr);
    EXPECT_EQ(instanceOf(*outer.objectDocument, 0).objectDocument, nullptr);
    EXPECT_EQ(instanceOf(*outer.objectDocument, 0).parentInstance, &outer);
    EXPECT_TRUE(log.contains(LOG_WARNING, QString(kLoop).arg("self.plax")));
    detachDocumentInstances(*host, cache);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(InstanceAttach, ChainBackToAnAncestorStopsThere)
{
    SceneFolder folder;
    folder.write("a.plax", scene(circleBody(1, "a-body", 0, 0, 1), instance(1, "toB", "b.plax")));
    const QString b = folder.write("b.plax", scene(circleBody(1, "b-body", 0, 0, 1), instance(1, "toA", "a.plax")));
    auto host = open(folder.write("host.plax", scene("", instance(1, "top", "a.plax"))));
    ASSERT_TRUE(host);
    ObjectManager cache;
    LogCapture log;
    attachSceneObjects(*host, cache);

    MetaObject& top = instanceOf(*host, 0);
    ASSERT_NE(top.objectDocument, nullptr);
    MetaObject& toB = instanceOf(*top.objectDocument, 0);
    ASSERT_NE(toB.objectDocument, nullptr) << "B is attached";
    MetaObject& toA = instanceOf(*toB.objectDocument, 0);
    EXPECT_EQ(toA.objectDocument, nullptr) << "the inner A closes the loop";
    EXPECT_EQ(toA.parentInstance, &toB);
    EXPECT_TRUE(log.contains(LOG_WARNING, QString(kLoop).arg("a.plax")));
    EXPECT_EQ(cache.referenceCount(b), 1);

    detachDocumentInstances(*host, cache);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(InstanceAttach, SharedDocumentsDoNotKeepDanglingParents)
{
    SceneFolder folder;
    folder.write("wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    folder.write("car.plax", scene("", instance(1, "w", "wheel.plax")));
    auto doc = open(folder.write("main.plax", scene("", instance(1, "c1", "car.plax") + "," +
                                                          instance(2, "c2", "car.plax"))));
    ASSERT_TRUE(doc);
    ObjectManager cache;
    attachSceneObjects(*doc, cache);
    EditorDocument* car = instanceOf(*doc, 0).objectDocument;
    ASSERT_NE(car, nullptr);
    MetaObject& w = instanceOf(*car, 0);
    ASSERT_NE(w.parentInstance, nullptr);
    MetaObject* parent = w.parentInstance;
    detachInstance(*parent, cache);
    // The car document is still cached for the other instance.
    ASSERT_EQ(cache.cachedDocument(folder.path("car.plax")), car);
    EXPECT_NE(w.parentInstance, parent);
    detachDocumentInstances(*doc, cache);
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(InstanceAttach, ADocumentIsWalkedOncePerPass)
{
    // X places Y twice; Y places X back. The shared Y is walked once, so its
    // loop is reported once and its inner instance keeps the first parent.
    SceneFolder folder;
    folder.write("x.plax", scene("", instance(1, "y1", "y.plax") + "," + instance(2, "y2", "y.plax", 1, 0)));
    folder.write("y.plax", scene(circleBody(1, "yb", 0, 0, 1), instance(1, "back", "x.plax")));
    auto host = open(folder.write("host.plax", scene("", instance(1, "x", "x.plax"))));
    ASSERT_TRUE(host);
    ObjectManager cache;
    LogCapture log;
    attachSceneObjects(*host, cache);
    EditorDocument* x = instanceOf(*host, 0).objectDocument;
    ASSERT_NE(x, nullptr);
    MetaObject& y1 = instanceOf(*x, 0);
    ASSERT_NE(y1.objectDocument, nullptr);
    EXPECT_EQ(y1.objectDocument, instanceOf(*x, 1).objectDocument);
    EXPECT_EQ(instanceOf(*y1.objectDocument, 0).parentInstance, &y1);
    EXPECT_EQ(log.texts(LOG_WARNING).count(QString(kLoop).arg("x.plax")), 1);
    detachDocumentInstances(*host, cache);
    EXPECT_EQ(cache.entryCount(), 0);
}
