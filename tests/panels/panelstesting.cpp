#include "panelstesting.h"

#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>


namespace PanelsTesting
{
std::unique_ptr<EditorDocument> exampleDocument()
{
    auto document = std::make_unique<EditorDocument>();
    EXPECT_TRUE(document->load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    return document;
}

QList<MetaBody*> bodies(EditorDocument& document)
{
    QList<MetaBody*> list;
    for (const auto& body : document.world().bodies())
        list.append(body.get());
    return list;
}

void selectBodies(EditorDocument& document, const QList<MetaBody*>& bodies)
{
    SelectionEdits::clearSelection(document);
    std::vector<ItemId> ids;
    for (MetaBody* body : bodies)
        ids.push_back(body->id());
    if (!ids.empty())
        SelectionEdits::setSelected(document, ItemKind::Body, ids, true);
}
} // namespace PanelsTesting
