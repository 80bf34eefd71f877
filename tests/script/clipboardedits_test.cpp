// Copy, paste and duplicate: the clipboard's JSON, the macro texts and log
// lines, fresh ids, and undo returning the scene to its saved bytes.
#include "scripttesting.h"

#include "api/scriptitemops.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "edits/clipboardedits.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class ClipboardEditsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }

    ItemId bodyId(const char* name) { return m_document.world().registry(ItemKind::Body).findByName(name)->id(); }
    QByteArray saved() { return TestFiles::savedScene(m_document.world(), m_dir.filePath("s.plax")); }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }
    void select(ItemKind kind, std::vector<ItemId> ids)
    {
        SelectionEdits::clearSelection(m_document);
        SelectionEdits::setSelected(m_document, kind, ids, true);
    }
    MetaImage* addImage()
    {
        ScriptDocumentScope scope(&m_document);
        return ItemOps::addImage(0, R"({"name":"pic","file":"pic.png","center":{"x":1,"y":2},"scale":2,"body":0})");
    }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(ClipboardEditsTest, CopiedBodiesPasteAsNewBodiesWithTheirFixturesInOneStep)
{
    select(ItemKind::Body, {bodyId("ball"), bodyId("chassis")});
    const QString text = ClipboardEdits::copy(m_document, EditMode::Bodies);
    ASSERT_TRUE(text.startsWith("{\"metabody\":[")) << text.toStdString();
    EXPECT_FALSE(text.contains('\n')) << "compact text";
    const ClipboardEdits::Content content = ClipboardEdits::clipboardKind(text);
    EXPECT_EQ(content.kind, 1);
    EXPECT_EQ(content.count, 2);

    const QByteArray before = saved();
    const size_t bodies = m_document.world().bodies().size();
    const size_t fixtures = m_document.world().fixtureCount();
    const int steps = m_document.undoStack().count();
    EXPECT_EQ(ClipboardEdits::paste(m_document, text), 2);
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(lastText(), "paste 2 bodies");
    EXPECT_EQ(m_document.world().bodies().size(), bodies + 2);
    EXPECT_EQ(m_document.world().fixtureCount(), fixtures + 2);
    // The pasted bodies are new, selected and in place of the old selection.
    const std::vector<ItemId>& selected = m_document.selection().items(ItemKind::Body);
    ASSERT_EQ(selected.size(), 2u);
    for (ItemId id : selected) {
        EXPECT_NE(id, bodyId("ball"));
        EXPECT_NE(id, bodyId("chassis"));
    }
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(ClipboardEditsTest, FixturesNeedBodiesAndImagesGoIntoTheBackgroundWithout)
{
    const ItemId ball = bodyId("ball");
    const ItemId crate = bodyId("crate");
    select(ItemKind::Fixture, {m_document.world().findBody(ball)->fixtures().front()->id()});
    const QString fixtures = ClipboardEdits::copy(m_document, EditMode::Fixtures);
    ASSERT_EQ(ClipboardEdits::clipboardKind(fixtures).kind, 2);
    SelectionEdits::clearSelection(m_document);
    const int steps = m_document.undoStack().count();
    EXPECT_EQ(ClipboardEdits::paste(m_document, fixtures), 0);
    EXPECT_EQ(m_document.undoStack().count(), steps) << "no body selected: nothing happens";

    select(ItemKind::Body, {ball, crate});
    EXPECT_EQ(ClipboardEdits::paste(m_document, fixtures), 2);
    EXPECT_EQ(lastText(), "paste 1 fixture onto 2 bodies");
    EXPECT_EQ(m_document.world().findBody(crate)->fixtures().size(), 2u);

    MetaImage* image = addImage();
    ASSERT_NE(image, nullptr);
    select(ItemKind::Image, {image->id()});
    const QString images = ClipboardEdits::copy(m_document, EditMode::Images);
    SelectionEdits::clearSelection(m_document);
    EXPECT_EQ(ClipboardEdits::paste(m_document, images), 1);
    EXPECT_EQ(lastText(), "paste 1 image into background");
    MetaImage* pasted = m_document.world().findImage(m_document.selection().items(ItemKind::Image).front());
    EXPECT_EQ(pasted->body, nullptr);
    EXPECT_EQ(pasted->file, "pic.png");

    select(ItemKind::Body, {crate});
    EXPECT_EQ(ClipboardEdits::paste(m_document, images), 1);
    EXPECT_EQ(lastText(), "paste 1 image onto 1 body");
    pasted = m_document.world().findImage(m_document.selection().items(ItemKind::Image).front());
    ASSERT_NE(pasted->body, nullptr);
    EXPECT_EQ(pasted->body->id(), crate);
}

TEST_F(ClipboardEditsTest, UnusableTextAndModesThatCopyNothingChangeNothing)
{
    const int steps = m_document.undoStack().count();
    EXPECT_EQ(ClipboardEdits::paste(m_document, "hello"), 0);
    EXPECT_EQ(ClipboardEdits::paste(m_document, "{\"metaworld\":{}}"), 0);
    EXPECT_EQ(ClipboardEdits::paste(m_document, "{\"metabody\":[]}"), 0);
    EXPECT_EQ(ClipboardEdits::clipboardKind("[1,2]").kind, 0);
    // Ten megabytes of text that is almost JSON.
    QString big = QStringLiteral("{\"metabody\":[");
    big += QString(10 * 1024 * 1024, QLatin1Char('x'));
    EXPECT_EQ(ClipboardEdits::paste(m_document, big), 0);
    EXPECT_EQ(m_document.undoStack().count(), steps);

    MetaFixture* box = m_document.world().findBody(bodyId("crate"))->fixtures().front().get();
    SelectionEdits::setVerticesSelected(m_document, {{box->id(), 0}}, true);
    EXPECT_TRUE(ClipboardEdits::copy(m_document, EditMode::Vertices).isEmpty()) << "vertices are not copied";
    select(ItemKind::Joint, {m_document.world().joints().front()->id()});
    EXPECT_TRUE(ClipboardEdits::copy(m_document, EditMode::Joints).isEmpty()) << "joints are not copied";
    SelectionEdits::clearSelection(m_document);
    EXPECT_TRUE(ClipboardEdits::copy(m_document, EditMode::Bodies).isEmpty());
}

TEST_F(ClipboardEditsTest, ObjectsPasteAsNewInstancesOfTheSameFile)
{
    ScriptDocumentScope scope(&m_document);
    MetaObject* object = ItemOps::addObject(0, R"({"name":"thing","file":"missing.plax","position":{"x":3,"y":4}})");
    ASSERT_NE(object, nullptr);
    const ItemId original = object->id();
    select(ItemKind::Object, {original});
    const QString text = ClipboardEdits::copy(m_document, EditMode::Objects);
    EXPECT_EQ(ClipboardEdits::clipboardKind(text).kind, 5);
    const size_t objects = m_document.world().objects().size();
    EXPECT_EQ(ClipboardEdits::paste(m_document, text), 1);
    EXPECT_EQ(lastText(), "paste 1 object");
    ASSERT_EQ(m_document.world().objects().size(), objects + 1);
    const MetaObject* pasted = m_document.world().objects().back().get();
    EXPECT_NE(pasted->id(), original);
    EXPECT_EQ(pasted->file, "missing.plax");
}

TEST_F(ClipboardEditsTest, DuplicateCopiesInPlaceAsOneStepAndSelectsTheCopies)
{
    const QByteArray before = saved();
    select(ItemKind::Body, {bodyId("ball"), bodyId("crate")});
    const int steps = m_document.undoStack().count();
    const size_t bodies = m_document.world().bodies().size();
    EXPECT_EQ(ClipboardEdits::duplicate(m_document, EditMode::Bodies), 2);
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(lastText(), "duplicate 2 bodies");
    EXPECT_EQ(m_document.world().bodies().size(), bodies + 2);
    const std::vector<ItemId>& selected = m_document.selection().items(ItemKind::Body);
    ASSERT_EQ(selected.size(), 2u);
    const MetaBody* copy = m_document.world().findBody(selected[0]);
    EXPECT_EQ(copy->position, m_document.world().findBody(bodyId("ball"))->position);
    EXPECT_NE(copy->name(), "ball") << "copies get fresh names";

    m_document.undoStack().undo();
    m_document.undoStack().undo(); // the selection made above
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(ClipboardEdits::duplicate(m_document, EditMode::Vertices), 0) << "vertices are not duplicated";
}
