// Items made in the editor view and selections made by clicks: one undo step
// each, with its text, and the new item selected.
#include "scripttesting.h"

#include "api/scripthookdata.h"
#include "document/editordocument.h"
#include "edits/creationedits.h"
#include "edits/selectionchange.h"
#include "hooks/hookevents.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>

#include <cmath>

namespace
{
class CreationEditsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }
    void TearDown() override { HookEvents::setHandler({}); }

    MetaBody* body(const char* name)
    {
        return static_cast<MetaBody*>(m_document.world().registry(ItemKind::Body).findByName(name));
    }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }
    QByteArray saved() { return TestFiles::savedScene(m_document.world(), m_dir.filePath("s.plax")); }
    static Vec2 world(const MetaBody& b, Vec2 local)
    {
        const float c = std::cos(b.angle), s = std::sin(b.angle);
        return {b.position.x + c * local.x - s * local.y, b.position.y + s * local.x + c * local.y};
    }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(CreationEditsTest, BodiesAndFixturesAreAddedSelectedAndUndoneInOneStep)
{
    const QByteArray before = saved();
    const int steps = m_document.undoStack().count();
    MetaBody* made = CreationEdits::addBody(m_document, {3, 4}, 2, true);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(lastText(), "add body");
    EXPECT_EQ(made->type, BodyType::Dynamic);
    EXPECT_EQ(made->fixtures().size(), 1u);
    EXPECT_EQ(m_document.selection().items(ItemKind::Body), std::vector<ItemId>{made->id()});

    // A polygon drawn in world coordinates lands in the turned crate's frame.
    MetaBody* crate = body("crate");
    const std::vector<Vec2> points{{-7, 4}, {-5, 4}, {-6, 6}};
    MetaFixture* fixture = CreationEdits::addFixture(m_document, crate->id(), ShapeType::Polygon, points, 0);
    ASSERT_NE(fixture, nullptr);
    EXPECT_EQ(lastText(), "add fixture");
    ASSERT_EQ(fixture->vertices().size(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        const Vec2 w = world(*crate, fixture->vertices()[i]);
        EXPECT_NEAR(w.x, points[i].x, 1e-4);
        EXPECT_NEAR(w.y, points[i].y, 1e-4);
    }
    EXPECT_TRUE(m_document.selection().contains(ItemKind::Fixture, fixture->id()));

    // Without a body, the fixture gets a new one in the middle of its points.
    const size_t bodies = m_document.world().bodies().size();
    MetaFixture* loose = CreationEdits::addFixture(m_document, 0, ShapeType::Line, {{0, 0}, {4, 2}}, 0);
    ASSERT_NE(loose, nullptr);
    EXPECT_EQ(m_document.world().bodies().size(), bodies + 1);
    EXPECT_FLOAT_EQ(loose->body()->position.x, 2);

    const int now = m_document.undoStack().count();
    EXPECT_EQ(CreationEdits::addFixture(m_document, crate->id(), ShapeType::Polygon, {{0, 0}, {1, 1}}, 0), nullptr);
    EXPECT_EQ(CreationEdits::addFixture(m_document, crate->id(), ShapeType::Circle, {{0, 0}}, 0), nullptr);
    EXPECT_EQ(CreationEdits::addFixture(m_document, crate->id(), ShapeType::Line, {{0, 0}, {NAN, 1}}, 0), nullptr);
    EXPECT_EQ(CreationEdits::addBody(m_document, {INFINITY, 0}, 2, false), nullptr);
    EXPECT_EQ(m_document.undoStack().count(), now) << "refusals record nothing";

    while (m_document.undoStack().index() > steps)
        m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(CreationEditsTest, JointsJoinTwoBodiesAtTheirAnchors)
{
    MetaBody* ball = body("ball");
    MetaBody* crate = body("crate");
    MetaJoint* pin = CreationEdits::addJoint(m_document, JointType::Revolute, ball->id(), crate->id(), {-4, 6});
    ASSERT_NE(pin, nullptr);
    EXPECT_EQ(lastText(), "add joint");
    const Vec2 a = world(*ball, pin->anchorA), b = world(*crate, pin->anchorB);
    EXPECT_NEAR(a.x, -4, 1e-4);
    EXPECT_NEAR(b.y, 6, 1e-4);
    EXPECT_NEAR(a.x, b.x, 1e-4);

    MetaJoint* rod = CreationEdits::addJoint(m_document, JointType::Distance, ball->id(), crate->id(), {});
    ASSERT_NE(rod, nullptr);
    EXPECT_NEAR(rod->length, (ball->position - crate->position).length(), 1e-5);
    EXPECT_EQ(m_document.selection().items(ItemKind::Joint), std::vector<ItemId>{rod->id()});

    const int steps = m_document.undoStack().count();
    EXPECT_EQ(CreationEdits::addJoint(m_document, JointType::Revolute, ball->id(), ball->id(), {}), nullptr);
    EXPECT_EQ(CreationEdits::addJoint(m_document, JointType(99), ball->id(), crate->id(), {}), nullptr);
    EXPECT_EQ(m_document.undoStack().count(), steps);
}

TEST_F(CreationEditsTest, DroppedImagesAreAddedTogetherAndRaiseTheirEvent)
{
    QImage picture(8, 4, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const QString png = m_dir.filePath("sprite.png");
    ASSERT_TRUE(picture.save(png));
    const QString text = m_dir.filePath("notes.txt");
    writeText(text, "not a picture");

    std::vector<ScriptHookData> raised;
    HookEvents::setHandler([&](ScriptDocument&, ScriptHookEvent event, const ScriptHookData& data) {
        EXPECT_EQ(event, SHE_IMAGES_DROPPED);
        raised.push_back(data);
    });
    const int steps = m_document.undoStack().count();
    const auto images = CreationEdits::addImages(m_document, {png, text, png}, {1, 1}, true);
    ASSERT_EQ(images.size(), 2u);
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(lastText(), "add images");
    ASSERT_EQ(raised.size(), 1u);
    EXPECT_EQ(raised[0].droppedImages.size(), 2u);
    EXPECT_FALSE(images[0]->center == images[1]->center) << "several images do not cover each other";

    EXPECT_TRUE(CreationEdits::addImages(m_document, {text}, {0, 0}, true).empty());
    EXPECT_EQ(raised.size(), 1u);
}

TEST_F(CreationEditsTest, ClickSelectionsReplaceAddToggleAndRemove)
{
    const ItemId ball = body("ball")->id(), crate = body("crate")->id();
    EXPECT_TRUE(changeSelection(m_document, EditMode::Bodies, {{ball, -1}}, SelectionChangeMode::Replace));
    EXPECT_EQ(lastText(), "body selection");
    const int steps = m_document.undoStack().count();
    EXPECT_FALSE(changeSelection(m_document, EditMode::Bodies, {{ball, -1}}, SelectionChangeMode::Replace))
        << "no change, no step";
    EXPECT_EQ(m_document.undoStack().count(), steps);

    EXPECT_TRUE(changeSelection(m_document, EditMode::Bodies, {{crate, -1}}, SelectionChangeMode::Add));
    EXPECT_EQ(m_document.selection().items(ItemKind::Body), (std::vector<ItemId>{ball, crate}));
    EXPECT_TRUE(changeSelection(m_document, EditMode::Bodies, {{ball, -1}}, SelectionChangeMode::Toggle));
    EXPECT_EQ(lastText(), "body deselection");
    EXPECT_EQ(m_document.selection().items(ItemKind::Body), std::vector<ItemId>{crate});
    EXPECT_TRUE(changeSelection(m_document, EditMode::Bodies, {}, SelectionChangeMode::Replace));
    EXPECT_EQ(m_document.selection().count(ItemKind::Body), 0u);

    const ItemId box = body("crate")->fixtures().front()->id();
    EXPECT_TRUE(changeSelection(m_document, EditMode::Vertices, {{box, 1}, {box, 2}}, SelectionChangeMode::Replace));
    EXPECT_EQ(lastText(), "vertex selection");
    EXPECT_TRUE(m_document.selection().containsVertex(box, 2));
    EXPECT_TRUE(changeSelection(m_document, EditMode::Vertices, {{box, 2}}, SelectionChangeMode::Remove));
    EXPECT_EQ(m_document.selection().vertices().size(), 1u);
    EXPECT_FALSE(changeSelection(m_document, EditMode::Vertices, {{box, 99}}, SelectionChangeMode::Add) &&
                 m_document.selection().containsVertex(box, 99));
}
