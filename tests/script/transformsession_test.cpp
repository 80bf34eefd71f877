// Interactive transforms: previews change nothing for good, finishing is one
// undo step with its own text, and undo returns the scene bit for bit.
#include "scripttesting.h"

#include "api/scripthookdata.h"
#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "edits/transformsession.h"
#include "hooks/hookevents.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cmath>

namespace
{
using Op = TransformApi::Operation;

class TransformSessionTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }
    void TearDown() override { HookEvents::setHandler({}); }

    MetaBody& body(const char* name)
    {
        return *static_cast<MetaBody*>(m_document.world().registry(ItemKind::Body).findByName(name));
    }
    MetaFixture& fixture(const char* name)
    {
        return *static_cast<MetaFixture*>(m_document.world().registry(ItemKind::Fixture).findByName(name));
    }
    QByteArray saved() { return TestFiles::savedScene(m_document.world(), m_dir.filePath("s.plax")); }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }
    void select(ItemKind kind, std::vector<ItemId> ids) { SelectionEdits::setSelected(m_document, kind, ids, true); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(TransformSessionTest, PreviewsReplaceEachOtherAndCancelRestoresTheSceneBitForBit)
{
    select(ItemKind::Body, {body("ball").id(), body("crate").id()});
    const QByteArray before = saved();
    const int steps = m_document.undoStack().count();
    {
        TransformSession session(m_document, EditMode::Bodies, Op::Translate);
        EXPECT_EQ(session.count(), 2);
        session.preview(1.5f, -2);
        EXPECT_FLOAT_EQ(body("ball").position.x, -0.5f);
        EXPECT_FLOAT_EQ(body("crate").position.y, 3);
        session.preview(0.1f, 0); // from the start, not from the last preview
        EXPECT_FLOAT_EQ(body("ball").position.x, -1.9f);
        EXPECT_FLOAT_EQ(body("ball").position.y, 8);
        session.cancel();
    }
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(m_document.undoStack().count(), steps) << "previews record nothing";

    {
        TransformSession session(m_document, EditMode::Bodies, Op::Rotate);
        session.preview(0.7f);
        // Leaving the scope unfinished cancels.
    }
    EXPECT_EQ(saved(), before);
}

TEST_F(TransformSessionTest, FinishingIsOneUndoStepAndUndoAndRedoAreExact)
{
    select(ItemKind::Body, {body("ball").id(), body("crate").id()});
    const QByteArray before = saved();
    const int steps = m_document.undoStack().count();
    TransformSession session(m_document, EditMode::Bodies, Op::Rotate);
    const Vec2 pivot = session.pivot();
    EXPECT_FLOAT_EQ(pivot.x, -4); // middle of (-2, 8) and (-6, 5)
    EXPECT_FLOAT_EQ(pivot.y, 6.5f);
    session.preview(0.3f);
    ASSERT_TRUE(session.finish(float(M_PI / 2)));
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(lastText(), "rotation of 2 bodies");
    // The ball at (-2, 8) turns a quarter about (-4, 6.5): to (-5.5, 8.5).
    EXPECT_NEAR(body("ball").position.x, -5.5f, 1e-5);
    EXPECT_NEAR(body("ball").position.y, 8.5f, 1e-5);
    EXPECT_NEAR(body("ball").angle, M_PI / 2, 1e-6);
    const QByteArray after = saved();

    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
    m_document.undoStack().redo();
    EXPECT_EQ(saved(), after);
    EXPECT_FALSE(session.finish(1)) << "a session finishes once";
}

TEST_F(TransformSessionTest, ScalingTextsAndRefusedValues)
{
    select(ItemKind::Fixture, {fixture("box").id()});
    const int steps = m_document.undoStack().count();
    {
        TransformSession session(m_document, EditMode::Fixtures, Op::Scale);
        EXPECT_EQ(session.macroText(2, 2), "scale of 1 fixture");
        EXPECT_FALSE(session.finish(0, 1)) << "a zero scale would collapse the fixture";
    }
    {
        TransformSession session(m_document, EditMode::Fixtures, Op::Translate);
        EXPECT_FALSE(session.finish(std::nanf(""), 1));
    }
    {
        TransformSession session(m_document, EditMode::Fixtures, Op::Scale);
        EXPECT_FALSE(session.finish(1, 1)) << "no change, no step";
    }
    EXPECT_EQ(m_document.undoStack().count(), steps);

    const std::vector<Vec2> before = fixture("box").vertices();
    TransformSession session(m_document, EditMode::Fixtures, Op::Scale);
    ASSERT_TRUE(session.finish(-1, 1));
    EXPECT_EQ(lastText(), "negative scale of 1 fixture");
    const std::vector<Vec2>& mirrored = fixture("box").vertices();
    ASSERT_EQ(mirrored.size(), before.size());
    // Mirrored about the fixture's centre, with the winding kept.
    float area = 0;
    for (size_t i = 0; i < mirrored.size(); ++i) {
        const Vec2 a = mirrored[i], b = mirrored[(i + 1) % mirrored.size()];
        area += a.x * b.y - b.x * a.y;
    }
    EXPECT_GT(area, 0);
}

TEST_F(TransformSessionTest, VerticesTurnAboutTheCursorAndJointsMoveBothAnchors)
{
    MetaFixture& box = fixture("box");
    SelectionEdits::setVerticesSelected(m_document, {{box.id(), 0}, {box.id(), 1}}, true);
    m_document.editorState().cursor = {-6, 5}; // the crate's origin
    const Vec2 v0 = box.vertices()[0];
    TransformSession session(m_document, EditMode::Vertices, Op::Rotate, 2);
    EXPECT_EQ(session.count(), 2);
    ASSERT_TRUE(session.finish(float(M_PI)));
    EXPECT_EQ(lastText(), "rotation of 2 vertices");
    // The crate's body is not turned much, so half a turn about its origin
    // mirrors a vertex through the body origin in body coordinates as well.
    const MetaBody& crate = body("crate");
    const float c = std::cos(crate.angle), s = std::sin(crate.angle);
    const Vec2 world{crate.position.x + c * v0.x - s * v0.y, crate.position.y + s * v0.x + c * v0.y};
    const Vec2 turned{2 * -6 - world.x, 2 * 5 - world.y};
    const Vec2 now = box.vertices()[0];
    const Vec2 nowWorld{crate.position.x + c * now.x - s * now.y, crate.position.y + s * now.x + c * now.y};
    EXPECT_NEAR(nowWorld.x, turned.x, 1e-4);
    EXPECT_NEAR(nowWorld.y, turned.y, 1e-4);

    MetaJoint* joint = m_document.world().joints().front().get();
    select(ItemKind::Joint, {joint->id()});
    const Vec2 a = joint->anchorA, b = joint->anchorB;
    TransformSession move(m_document, EditMode::Joints, Op::Translate);
    ASSERT_TRUE(move.finish(1, 0));
    EXPECT_EQ(lastText(), "translation of 1 joint");
    EXPECT_FALSE(joint->anchorA == a);
    EXPECT_FALSE(joint->anchorB == b);
}

TEST_F(TransformSessionTest, FinishingRaisesTheManipulationEventOnceWithTheItems)
{
    std::vector<std::pair<ScriptHookEvent, ScriptHookData>> raised;
    HookEvents::setHandler([&](ScriptDocument&, ScriptHookEvent event, const ScriptHookData& data) {
        raised.emplace_back(event, data);
    });
    const ItemId ball = body("ball").id();
    select(ItemKind::Body, {ball});
    TransformSession session(m_document, EditMode::Bodies, Op::Translate);
    session.preview(1, 1);
    EXPECT_TRUE(raised.empty());
    ASSERT_TRUE(session.finish(2, 0));
    ASSERT_EQ(raised.size(), 1u);
    EXPECT_EQ(raised[0].first, SHE_BODIES_MANIPULATED);
    EXPECT_EQ(raised[0].second.manipulationType, "TRANSLATE");
    EXPECT_EQ(raised[0].second.bodies, std::vector<ItemId>{ball});
}
