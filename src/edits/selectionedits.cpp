#include "edits/selectionedits.h"

#include "api/scriptapisupport.h"
#include "api/scriptcustomprops.h"
#include "api/scriptfixture.h"
#include "api/scriptitemops.h"
#include "api/scriptjoint.h"
#include "api/scriptplacedapi.h"
#include "base/log.h"
#include "base/notify.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "io/jsontext.h"
#include "model/metaworld.h"
#include "sampling/samplerframe.h"

#include <rapidjson/document.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace SelectionEdits
{
namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("SelectionEdits", text);
}

void deleteItem(MetaItem& item)
{
    switch (item.kind()) {
    case ItemKind::Body: ItemOps::deleteBody(static_cast<MetaBody&>(item)); break;
    case ItemKind::Fixture: ItemOps::deleteFixture(static_cast<MetaFixture&>(item)); break;
    case ItemKind::Joint: ItemOps::deleteJoint(static_cast<MetaJoint&>(item)); break;
    case ItemKind::Image: ItemOps::deleteImage(static_cast<MetaImage&>(item)); break;
    case ItemKind::Sampler: ItemOps::deleteSampler(static_cast<MetaSampler&>(item)); break;
    case ItemKind::Object: ItemOps::deleteObject(static_cast<MetaObject&>(item)); break;
    }
}

Vec2 toLocal(const MetaFixture& f, Vec2 world)
{
    const MetaBody* b = f.body();
    if (!b)
        return world;
    const Vec2 d = world - b->position;
    const float c = std::cos(-b->angle), s = std::sin(-b->angle);
    return {c * d.x - s * d.y, s * d.x + c * d.y};
}
} // namespace

QString kindWord(ItemKind kind, qsizetype count)
{
    static const char* const kWords[][2] = {{"body", "bodies"},   {"fixture", "fixtures"}, {"joint", "joints"},
                                            {"image", "images"}, {"sampler", "samplers"}, {"object", "objects"}};
    return tr(kWords[int(kind)][count < 2 ? 0 : 1]);
}

int reverseWindingOfSelected(ScriptDocument& document)
{
    const std::vector<ItemId> ids = document.selection().items(ItemKind::Fixture);
    if (ids.empty())
        return 0;
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("reverse winding of %1 %2")
                                                   .arg(ids.size())
                                                   .arg(kindWord(ItemKind::Fixture, qsizetype(ids.size()))));
    for (ItemId id : ids) {
        ScriptFixture handle = ScriptApi::fixtureHandle(document.world().findFixture(id));
        FixtureApi::reverseWinding(&handle);
    }
    return int(ids.size());
}

void deleteSelected(ScriptDocument& document, ItemKind kind)
{
    const std::vector<ItemId> ids = document.selection().items(kind);
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("delete %1 %2").arg(ids.size()).arg(kindWord(kind, qsizetype(ids.size()))));
    std::vector<MetaItem*> items;
    for (ItemId id : ids)
        if (MetaItem* item = document.world().findItem(kind, id))
            items.push_back(item);
    for (MetaItem* item : items)
        ScriptApi::setSelected(*item, false);
    for (MetaItem* item : items)
        if (document.world().findItem(kind, item->id()) == item)
            deleteItem(*item);
    Q_ASSERT_X(document.selection().items(kind).empty(), "deleteSelected", "m_selectedBodies.empty()");
}

void deleteSelectedVertices(ScriptDocument& document)
{
    std::vector<Selection::VertexRef> vertices = document.selection().vertices();
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("delete %1 %2").arg(vertices.size()).arg(
                                                   tr(vertices.size() < 2 ? "vertex" : "vertices")));
    // Highest index first, so the others keep theirs.
    std::sort(vertices.begin(), vertices.end(), [](const auto& a, const auto& b) {
        return a.fixture != b.fixture ? a.fixture < b.fixture : a.index > b.index;
    });
    for (const Selection::VertexRef& v : vertices)
        if (MetaFixture* f = document.world().findFixture(v.fixture))
            VertexEdits::remove(*f, v.index);
}

void insertVertex(ScriptDocument& document, ItemId fixture, int index, Vec2 position)
{
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("insert 1 vertex"));
    if (MetaFixture* f = document.world().findFixture(fixture))
        VertexEdits::insert(*f, index, position);
}

void setBitForSelectedFixtures(ScriptDocument& document, int bit, bool on, int propertyId)
{
    if ((propertyId != CategoryBits && propertyId != MaskBits) || bit < 0 || bit > 31) {
        plaxLog(LOG_WARNING, "setBitForSelectedFixtures got invalid propertyId: %d", propertyId);
        return;
    }
    const std::vector<ItemId> ids = document.selection().items(ItemKind::Fixture);
    const int mask = int(1u << unsigned(bit));
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("set %1 of %2 fixtures")
                                                   .arg(tr(propertyId == CategoryBits ? "category bit" : "mask bit"))
                                                   .arg(ids.size()));
    for (ItemId id : ids) {
        MetaFixture* f = document.world().findFixture(id);
        if (!f)
            continue;
        int& bits = propertyId == CategoryBits ? f->filterCategoryBits : f->filterMaskBits;
        const int wanted = on ? (bits | mask) : (bits & ~mask);
        if (wanted != bits)
            ScriptApi::setInt(*f, propertyId == CategoryBits ? "setFilterCategoryBits" : "setFilterMaskBits", bits, wanted);
    }
}

void setSelectedVertexPositions(ScriptDocument& document, const QString& operation, const std::vector<Vec2>& positions)
{
    const std::vector<Selection::VertexRef> vertices = document.selection().vertices();
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("%1 of %2 %3").arg(operation).arg(vertices.size()).arg(
                                                   tr(vertices.size() < 2 ? "vertex" : "vertices")));
    for (size_t i = 0; i < vertices.size() && i < positions.size(); ++i)
        if (MetaFixture* f = document.world().findFixture(vertices[i].fixture))
            VertexEdits::move(*f, vertices[i].index, toLocal(*f, positions[i]));
}

void rename(ScriptDocument& document, ItemKind kind, ItemId id, const QString& name)
{
    MetaItem* item = document.world().findItem(kind, id);
    if (!item) {
        plaxLog(LOG_WARNING, "Tried to set name of unknown meta item");
        return;
    }
    if (!isValidItemName(name)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set name with invalid characters");
        return;
    }
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("rename of %1 %2").arg(kindWord(kind, 1), name));
    ScriptApi::setName(*item, name);
}

void setSelected(ScriptDocument& document, ItemKind kind, const std::vector<ItemId>& ids, bool selected)
{
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(),
                         tr(selected ? "%1 selection" : "%1 deselection").arg(kindWord(kind, 1)));
    for (ItemId id : ids)
        if (MetaItem* item = document.world().findItem(kind, id))
            ScriptApi::setSelected(*item, selected);
}

void setVerticesSelected(ScriptDocument& document, const std::vector<std::pair<ItemId, int>>& vertices, bool selected)
{
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr(selected ? "vertex selection" : "vertex deselection"));
    for (const auto& [fixture, index] : vertices) {
        ScriptVertex v = ScriptApi::vertexHandle(document.world().findFixture(fixture), index);
        if (selected)
            VertexApi::select(&v);
        else
            VertexApi::deselect(&v);
    }
}

void clearSelection(ScriptDocument& document)
{
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("%1 deselection").arg(tr("item")));
    const Selection snapshot = document.selection();
    for (int k = 0; k < kItemKindCount; ++k)
        for (ItemId id : snapshot.items(ItemKind(k)))
            if (MetaItem* item = document.world().findItem(ItemKind(k), id))
                ScriptApi::setSelected(*item, false);
    for (const Selection::VertexRef& v : snapshot.vertices()) {
        ScriptVertex h = ScriptApi::vertexHandle(document.world().findFixture(v.fixture), v.index);
        VertexApi::deselect(&h);
    }
}

namespace
{
// Attaches an image or sampler to a body, keeping its world placement.
template <class Handle, class Item>
void reattach(Item& item, MetaBody* body)
{
    const Vec2 world = bodyToWorld(item.body, item.center);
    const float angle = (item.body ? item.body->angle : 0.0f) + item.angle;
    Handle h = PlacedApi<Handle, Item>::handleOf(item);
    PlacedApi<Handle, Item>::setBodyId(&h, body ? int(body->id()) : 0);
    if (item.body != body)
        return;
    PlacedApi<Handle, Item>::setCenterV(&h, ScriptApi::toScript(worldToBody(body, world)));
    PlacedApi<Handle, Item>::setAngle(&h, angle - (body ? body->angle : 0.0f));
}
} // namespace

namespace
{
void swapMembers(rapidjson::Document& record, const char* first, const char* second)
{
    auto& alloc = record.GetAllocator();
    rapidjson::Value a, b;
    if (auto it = record.FindMember(first); it != record.MemberEnd())
        a.CopyFrom(it->value, alloc);
    if (auto it = record.FindMember(second); it != record.MemberEnd())
        b.CopyFrom(it->value, alloc);
    record.RemoveMember(first);
    record.RemoveMember(second);
    if (!b.IsNull())
        record.AddMember(rapidjson::StringRef(first), b, alloc);
    if (!a.IsNull())
        record.AddMember(rapidjson::StringRef(second), a, alloc);
}

// Exchanges a joint's bodies (with their anchors). A joint cannot hold the
// same body twice even for a moment, so the exchange is recorded as the
// joint deleted and added again under its id with the bodies switched.
bool switchJointBodies(MetaJoint& joint)
{
    rapidjson::Document record;
    QString error;
    if (!parseJson(ItemOps::recordText(joint).toUtf8(), &record, &error) || !record.IsObject())
        return false;
    swapMembers(record, "bodyA", "bodyB");
    swapMembers(record, "anchorA", "anchorB");
    const ItemId id = joint.id();
    const bool selected = ScriptApi::isSelected(joint);
    ItemOps::deleteJoint(joint);
    MetaJoint* added = ItemOps::addJoint(id, QString::fromUtf8(jsonToText(record, false)));
    if (added && selected)
        ScriptApi::setSelected(*added, true);
    return added != nullptr;
}
} // namespace

void setBodyOfSelected(ScriptDocument& document, ItemKind kind, ItemId bodyId)
{
    if (kind != ItemKind::Image && kind != ItemKind::Sampler) {
        plaxLog(LOG_WARNING, "Tried to set body of non-image meta item");
        return;
    }
    const char* word = kind == ItemKind::Image ? "image" : "sampler";
    MetaBody* body = bodyId ? document.world().findBody(bodyId) : nullptr;
    if (bodyId && !body) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not find body of id %1 to set for %2.").arg(bodyId).arg(QLatin1String(word)));
        return;
    }
    const std::vector<ItemId> ids = document.selection().items(kind);
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(),
                         tr("set body of %1 %2").arg(ids.size()).arg(kindWord(kind, qsizetype(ids.size()))));
    for (ItemId id : ids) {
        if (kind == ItemKind::Image) {
            if (MetaImage* image = document.world().findImage(id))
                reattach<ScriptImage>(*image, body);
        } else if (MetaSampler* sampler = document.world().findSampler(id)) {
            reattach<ScriptSampler>(*sampler, body);
        }
    }
}

void setJointBodyOfSelected(ScriptDocument& document, bool bodyA, ItemId bodyId)
{
    MetaBody* body = document.world().findBody(bodyId);
    if (!body) {
        plaxLog(LOG_ERROR, "Could not find id for new body being set in joint");
        return;
    }
    const std::vector<ItemId> ids = document.selection().items(ItemKind::Joint);
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("set body %1 of %2 %3")
                                                   .arg(QLatin1String(bodyA ? "A" : "B"))
                                                   .arg(ids.size())
                                                   .arg(kindWord(ItemKind::Joint, qsizetype(ids.size()))));
    for (ItemId id : ids) {
        MetaJoint* joint = document.world().findJoint(id);
        if (!joint)
            continue;
        ScriptJoint h = ScriptApi::jointHandle(joint);
        MetaBody* other = bodyA ? joint->bodyB : joint->bodyA;
        if (body != other) {
            if (bodyA)
                JointApi::setBodyA(&h, int(bodyId));
            else
                JointApi::setBodyB(&h, int(bodyId));
            continue;
        }
        plaxLog(LOG_ERROR, "Cannot set same body for both bodyA and bodyB of joint.");
        const QString question = tr("The same body cannot be set for both bodies of a joint.\nWould you like to "
                                    "switch bodyA and bodyB for joint '%1'?")
                                     .arg(joint->name());
        if (!UserNotifier::ask(tr("Invalid joint setting"), question, false))
            continue;
        if (!switchJointBodies(*joint))
            continue;
        joint = document.world().findJoint(id);
        plaxLog(LOG_INFO, QStringLiteral("Switched body A and B for joint %1 (id: %2)").arg(joint->name()).arg(id));
    }
}

void setCustomProperty(ScriptDocument& document, ItemKind kind, const QString& name, const CustomValue& value)
{
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("set custom property '%1'").arg(name));
    for (ItemId id : document.selection().items(kind))
        if (MetaItem* item = document.world().findItem(kind, id))
            setCustomValue({item, &item->customProperties}, name, value);
}
} // namespace SelectionEdits
