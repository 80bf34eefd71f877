// Edits of the current selection: one macro each, with its own text.
#include "itemscene.h"
#include "scripttesting.h"

#include "base/notify.h"
#include "sampling/samplerframe.h"

#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class SelectionEditsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }

    MetaBody& body(const char* name)
    {
        return *static_cast<MetaBody*>(m_document.world().registry(ItemKind::Body).findByName(name));
    }
    QByteArray saved() { return TestFiles::savedScene(m_document.world(), m_dir.filePath("s.plax")); }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(SelectionEditsTest, DeletingTheSelectedBodyIsOneStepAndUndoBringsEverythingBack)
{
    const QByteArray before = saved();
    MetaBody& chassis = body("chassis");
    const ItemId id = chassis.id();
    SelectionEdits::setSelected(m_document, ItemKind::Body, {id}, true);
    EXPECT_EQ(lastText(), "body selection");
    const int count = m_document.undoStack().count();
    SelectionEdits::deleteSelected(m_document, ItemKind::Body);
    EXPECT_EQ(m_document.undoStack().count(), count + 1);
    EXPECT_EQ(lastText(), "delete 1 body");
    EXPECT_EQ(m_document.world().findBody(id), nullptr);
    EXPECT_TRUE(m_document.selection().items(ItemKind::Body).empty());
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
    EXPECT_TRUE(m_document.selection().contains(ItemKind::Body, id)) << "undo selects it again";

    SelectionEdits::setSelected(m_document, ItemKind::Body, {body("ball").id(), body("crate").id()}, true);
    SelectionEdits::deleteSelected(m_document, ItemKind::Body);
    EXPECT_EQ(lastText(), "delete 3 bodies");
}

TEST_F(SelectionEditsTest, CollisionBitsChangeOnlyWhereTheyDiffer)
{
    std::vector<ItemId> fixtures;
    for (const char* name : {"ball", "crate"})
        fixtures.push_back(body(name).fixtures()[0]->id());
    SelectionEdits::setSelected(m_document, ItemKind::Fixture, fixtures, true);
    SelectionEdits::setBitForSelectedFixtures(m_document, 0, true, SelectionEdits::CategoryBits);
    EXPECT_EQ(lastText(), "set category bit of 2 fixtures");
    EXPECT_EQ(m_document.undoStack().command(m_document.undoStack().count() - 1)->childCount(), 0)
        << "bit 0 was already set: nothing to record";
    SelectionEdits::setBitForSelectedFixtures(m_document, 5, true, SelectionEdits::MaskBits);
    EXPECT_EQ(lastText(), "set mask bit of 2 fixtures");
    EXPECT_TRUE(body("ball").fixtures()[0]->filterMaskBits & (1 << 5));

    LogCapture capture;
    SelectionEdits::setBitForSelectedFixtures(m_document, 5, true, 7);
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains("setBitForSelectedFixtures got invalid propertyId: 7"));
}

TEST_F(SelectionEditsTest, RenameAndVertices)
{
    LogCapture capture;
    SelectionEdits::rename(m_document, ItemKind::Body, body("ball").id(), "bad\"name");
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains("Ignoring attempt to set name with invalid characters"));
    SelectionEdits::rename(m_document, ItemKind::Body, 9999, "x");
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains("Tried to set name of unknown meta item"));
    SelectionEdits::rename(m_document, ItemKind::Body, body("ball").id(), "marble");
    EXPECT_EQ(lastText(), "rename of body marble");

    MetaFixture& crate = *body("crate").fixtures()[0];
    const size_t count = crate.vertices().size();
    SelectionEdits::insertVertex(m_document, crate.id(), 1, {0.1f, 0.1f});
    EXPECT_EQ(lastText(), "insert 1 vertex");
    EXPECT_EQ(crate.vertices().size(), count + 1);
    SelectionEdits::setVerticesSelected(m_document, {{crate.id(), 1}, {crate.id(), 2}}, true);
    EXPECT_EQ(lastText(), "vertex selection");
    SelectionEdits::deleteSelectedVertices(m_document);
    EXPECT_EQ(lastText(), "delete 2 vertices");
    EXPECT_EQ(crate.vertices().size(), count - 1);
}

namespace
{
class ReattachEdits : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        ASSERT_TRUE(m_document.load(writeItemScene(m_dir.filePath("scene"))));
    }
    void TearDown() override { UserNotifier::setHandlers({}, {}); }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }
    MetaWorld& world() { return m_document.world(); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(ReattachEdits, ImagesAndSamplersKeepTheirPlaceOnTheirNewBody)
{
    MetaImage& image = *world().findImage(1);
    const Vec2 placed = bodyToWorld(image.body, image.center);
    SelectionEdits::setSelected(m_document, ItemKind::Image, {1}, true);
    SelectionEdits::setBodyOfSelected(m_document, ItemKind::Image, 3);
    EXPECT_EQ(lastText(), "set body of 1 image");
    EXPECT_EQ(image.body, world().findBody(3));
    const Vec2 now = bodyToWorld(image.body, image.center);
    EXPECT_NEAR(now.x, placed.x, 1e-5);
    EXPECT_NEAR(now.y, placed.y, 1e-5);
    EXPECT_NEAR(image.angle + image.body->angle, 0.5f, 1e-6) << "body 1 is not turned, the image was at 0.5";

    SelectionEdits::setSelected(m_document, ItemKind::Sampler, {1}, true);
    SelectionEdits::setBodyOfSelected(m_document, ItemKind::Sampler, 0);
    EXPECT_EQ(lastText(), "set body of 1 sampler");
    EXPECT_EQ(world().findSampler(1)->body, nullptr);

    LogCapture capture;
    SelectionEdits::setBodyOfSelected(m_document, ItemKind::Image, 55);
    SelectionEdits::setBodyOfSelected(m_document, ItemKind::Joint, 1);
    EXPECT_EQ(capture.texts(LOG_WARNING), QStringList({"Could not find body of id 55 to set for image.",
                                                       "Tried to set body of non-image meta item"}));

    for (int i = 0; i < 4; ++i)
        m_document.undoStack().undo();
    EXPECT_EQ(image.body, world().findBody(1));
    EXPECT_EQ(image.center, (Vec2{1, 2}));
    EXPECT_EQ(world().findSampler(1)->body, world().findBody(2));
}

TEST_F(ReattachEdits, JointBodiesAndTheSameBodyQuestion)
{
    SelectionEdits::setSelected(m_document, ItemKind::Joint, {1, 3}, true);
    SelectionEdits::setJointBodyOfSelected(m_document, false, 1);
    EXPECT_EQ(lastText(), "set body B of 2 joints");
    // Joint 1 (hinge) joins bodies 1 and 2: body 1 as B is its A. Without an
    // interactive user the question is answered no.
    EXPECT_EQ(world().findJoint(1)->bodyB, world().findBody(2));
    EXPECT_EQ(world().findJoint(3)->bodyB, world().findBody(1)) << "the other joint takes the body";

    QStringList asked;
    UserNotifier::setHandlers([](UserNotifier::Kind, const QString&, const QString&) {},
                              [&](const QString& title, const QString& text) {
                                  asked << title << text;
                                  return true;
                              });
    LogCapture capture;
    SelectionEdits::setSelected(m_document, ItemKind::Joint, {3}, false);
    SelectionEdits::setJointBodyOfSelected(m_document, true, 2);
    EXPECT_EQ(lastText(), "set body A of 1 joint");
    EXPECT_EQ(asked, QStringList({"Invalid joint setting",
                                  "The same body cannot be set for both bodies of a joint.\nWould you like to switch "
                                  "bodyA and bodyB for joint 'hinge'?"}));
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Cannot set same body for both bodyA and bodyB of joint."));
    EXPECT_TRUE(capture.texts(LOG_INFO).contains("Switched body A and B for joint hinge (id: 1)"));
    const MetaJoint& hinge = *world().findJoint(1);
    EXPECT_EQ(hinge.bodyA, world().findBody(2));
    EXPECT_EQ(hinge.bodyB, world().findBody(1));
    EXPECT_EQ(hinge.anchorA, (Vec2{0, 0})) << "the anchors go with their bodies";
    EXPECT_EQ(hinge.anchorB, (Vec2{1, 2}));
    EXPECT_TRUE(m_document.selection().contains(ItemKind::Joint, 1)) << "still selected";

    m_document.undoStack().undo();
    EXPECT_EQ(world().findJoint(1)->bodyA, world().findBody(1));
    EXPECT_EQ(world().findJoint(1)->anchorA, (Vec2{1, 2}));
    EXPECT_EQ(world().joints()[0]->id(), 1u) << "back in its place";
    m_document.undoStack().redo();
    EXPECT_EQ(world().findJoint(1)->bodyA, world().findBody(2));
}

TEST_F(SelectionEditsTest, ReversingTheWindingOfTheSelectedFixturesIsOneStepThatUndoTakesBack)
{
    const int before = m_document.undoStack().count();
    EXPECT_EQ(SelectionEdits::reverseWindingOfSelected(m_document), 0);
    EXPECT_EQ(m_document.undoStack().count(), before) << "nothing selected: nothing recorded";

    MetaFixture& box = *body("crate").fixtures()[0];
    MetaFixture& ball = *body("ball").fixtures()[0];
    const std::vector<Vec2> boxVertices = box.vertices();
    ASSERT_GE(boxVertices.size(), 3u);
    SelectionEdits::setSelected(m_document, ItemKind::Fixture, {box.id(), ball.id()}, true);
    const QByteArray selected = saved();
    const int count = m_document.undoStack().count();
    EXPECT_EQ(SelectionEdits::reverseWindingOfSelected(m_document), 2);
    EXPECT_EQ(m_document.undoStack().count(), count + 1);
    EXPECT_EQ(lastText(), "reverse winding of 2 fixtures");
    EXPECT_EQ(box.vertices(), std::vector<Vec2>(boxVertices.rbegin(), boxVertices.rend()));
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), selected);
}
