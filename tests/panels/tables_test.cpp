// The custom property, collision filter and exported property tables: each
// change goes through the script API as one undo step.
#include "panelstesting.h"

#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "model/metaworld.h"
#include "panels/collisionfiltertable.h"
#include "panels/custompropertytable.h"
#include "panels/exportedpropertytable.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest/QTest>

using namespace PanelsTesting;

namespace
{
const CustomPropertyDef* findDef(const EditorDocument& document, const QString& itemClass, const QString& name)
{
    for (const CustomPropertyDef& def : document.world().customPropertyDefs)
        if (def.itemClass == itemClass && def.name == name)
            return &def;
    return nullptr;
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}
} // namespace

TEST(CustomPropertyTable, AddRenameRetypeEntriesAndRemoveAreUndoableSteps)
{
    auto document = exampleDocument();
    CustomPropertyTable table;
    table.setDocument(document.get());
    const int defs = int(document->world().customPropertyDefs.size());
    EXPECT_EQ(table.table()->rowCount(), defs);
    QUndoStack& stack = document->undoStack();
    const int count = stack.count();

    // Through the form as a person would.
    table.findChild<QComboBox*>("NewCustomPropertyClass")->setCurrentText("fixture");
    table.findChild<QLineEdit*>("NewCustomPropertyName")->setText("hardness");
    table.findChild<QComboBox*>("NewCustomPropertyType")->setCurrentText("float");
    QTest::mouseClick(table.findChild<QPushButton*>("AddCustomProperty"), Qt::LeftButton);
    ASSERT_NE(findDef(*document, "fixture", "hardness"), nullptr);
    EXPECT_EQ(findDef(*document, "fixture", "hardness")->type, "float");
    EXPECT_EQ(table.table()->rowCount(), defs + 1);
    EXPECT_EQ(stack.count(), count + 1);

    EXPECT_FALSE(table.addDefinition("fixture", "hardness", "again", "int")) << "a second one of the same name is refused";
    EXPECT_EQ(stack.count(), count + 1);

    ASSERT_TRUE(table.renameDefinition("fixture", "hardness", "toughness", "Toughness"));
    EXPECT_EQ(findDef(*document, "fixture", "hardness"), nullptr);
    ASSERT_NE(findDef(*document, "fixture", "toughness"), nullptr);
    EXPECT_EQ(findDef(*document, "fixture", "toughness")->displayName, "Toughness");
    EXPECT_EQ(stack.count(), count + 2);

    ASSERT_TRUE(table.changeType("fixture", "toughness", "int"));
    EXPECT_EQ(findDef(*document, "fixture", "toughness")->type, "int");
    EXPECT_EQ(findDef(*document, "fixture", "toughness")->displayName, "Toughness");
    EXPECT_EQ(stack.count(), count + 3) << "remove and add again are one step";

    ASSERT_TRUE(table.addComboEntry("fixture", "toughness", "soft"));
    EXPECT_EQ(findDef(*document, "fixture", "toughness")->comboboxEntries, QStringList({"soft"}));

    ASSERT_TRUE(table.removeDefinition("fixture", "toughness"));
    EXPECT_EQ(findDef(*document, "fixture", "toughness"), nullptr);
    EXPECT_EQ(table.table()->rowCount(), defs);

    stack.undo();
    ASSERT_NE(findDef(*document, "fixture", "toughness"), nullptr) << "undo brings the definition back";
    EXPECT_EQ(table.table()->rowCount(), defs + 1) << "the table follows undo";
    stack.setIndex(count + 2);
    EXPECT_EQ(findDef(*document, "fixture", "toughness")->type, "float");
    stack.setIndex(count);
    EXPECT_EQ(findDef(*document, "fixture", "toughness"), nullptr);
    EXPECT_EQ(findDef(*document, "fixture", "hardness"), nullptr);
}

TEST(CustomPropertyTable, EditingANameCellRenames)
{
    auto document = exampleDocument();
    CustomPropertyTable table;
    table.setDocument(document.get());
    ASSERT_TRUE(table.addDefinition("body", "speed", "Speed", "float"));
    const int row = table.table()->rowCount() - 1;
    table.table()->item(row, CustomPropertyTable::NameColumn)->setText("velocity");
    settle();
    EXPECT_NE(findDef(*document, "body", "velocity"), nullptr);
    EXPECT_EQ(findDef(*document, "body", "speed"), nullptr);
}

TEST(CollisionFilterTable, NamesAndBitsOfTheSelectedFixtures)
{
    auto document = exampleDocument();
    CollisionFilterTable table;
    table.setDocument(document.get());
    QUndoStack& stack = document->undoStack();
    EXPECT_EQ(table.table()->rowCount(), CollisionFilterTable::kBits);

    table.table()->item(3, CollisionFilterTable::NameColumn)->setText("players");
    settle();
    ASSERT_GT(document->world().collisionBitplaneNames.size(), 3);
    EXPECT_EQ(document->world().collisionBitplaneNames[3], "players");
    stack.undo();
    EXPECT_TRUE(document->world().collisionBitplaneNames.size() <= 3 || document->world().collisionBitplaneNames[3].isEmpty());
    EXPECT_TRUE(table.table()->item(3, CollisionFilterTable::NameColumn)->text().isEmpty());

    std::vector<MetaFixture*> fixtures;
    for (const auto& body : document->world().bodies())
        for (const auto& fixture : body->fixtures())
            fixtures.push_back(fixture.get());
    ASSERT_GE(fixtures.size(), 2u);
    SelectionEdits::setSelected(*document, ItemKind::Fixture, {fixtures[0]->id(), fixtures[1]->id()}, true);
    fixtures[0]->filterCategoryBits &= ~(1 << 5);
    fixtures[1]->filterCategoryBits &= ~(1 << 5);
    table.refresh();
    QTableWidgetItem* box = table.table()->item(5, CollisionFilterTable::CategoryColumn);
    ASSERT_TRUE(box->flags() & Qt::ItemIsEnabled);
    EXPECT_EQ(box->checkState(), Qt::Unchecked);
    const int count = stack.count();
    box->setCheckState(Qt::Checked);
    settle();
    EXPECT_TRUE(fixtures[0]->filterCategoryBits & (1 << 5));
    EXPECT_TRUE(fixtures[1]->filterCategoryBits & (1 << 5));
    EXPECT_EQ(stack.count(), count + 1) << "both fixtures in one step";
    EXPECT_EQ(table.table()->item(5, CollisionFilterTable::CategoryColumn)->checkState(), Qt::Checked);

    const bool maskHad = fixtures[0]->filterMaskBits & (1 << 2);
    table.setSelectedFixturesBit(2, true, !maskHad);
    EXPECT_EQ(bool(fixtures[0]->filterMaskBits & (1 << 2)), !maskHad);
    stack.undo();
    EXPECT_EQ(bool(fixtures[0]->filterMaskBits & (1 << 2)), maskHad);
    stack.undo();
    EXPECT_FALSE(fixtures[0]->filterCategoryBits & (1 << 5));
}

TEST(ExportedPropertyTable, UntickingAMemberExcludesItFromExport)
{
    auto document = exampleDocument();
    const QStringList paths = ExportedPropertyTable::memberPaths(document->world());
    EXPECT_TRUE(paths.contains("/world/body/name")) << paths.join(' ').toStdString();
    EXPECT_TRUE(paths.contains("/world/body/fixture/density"));
    EXPECT_TRUE(paths.contains("/world/gravity"));

    ExportedPropertyTable table;
    table.resize(400, 400);
    table.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
    table.setDocument(document.get());
    EXPECT_EQ(table.table()->rowCount(), paths.size());
    QTableWidgetItem* item = nullptr;
    for (int row = 0; row < table.table()->rowCount(); ++row)
        if (table.table()->item(row, 0)->text() == "/world/body/fixture/density")
            item = table.table()->item(row, 0);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->checkState(), Qt::Checked);
    const int count = document->undoStack().count();
    item->setCheckState(Qt::Unchecked);
    settle();
    EXPECT_TRUE(document->world().excludedJsonExportProperties.contains("/world/body/fixture/density"));
    EXPECT_EQ(document->undoStack().count(), count + 1);
    document->undoStack().undo();
    EXPECT_FALSE(document->world().excludedJsonExportProperties.contains("/world/body/fixture/density"));
    document->undoStack().redo();
    EXPECT_TRUE(document->world().excludedJsonExportProperties.contains("/world/body/fixture/density"));
}
