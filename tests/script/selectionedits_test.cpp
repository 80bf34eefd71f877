// Edits of the current selection: one macro each, with its own text.
#include "scripttesting.h"

#include "document/editordocument.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "script/selectionedits.h"

#include <gtest/gtest.h>

#include <QFile>
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
    QByteArray saved()
    {
        const QString path = m_dir.filePath("s.plax");
        EXPECT_TRUE(saveSceneFile(m_document.world(), path));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
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
