#include "panels/itemstree.h"

#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "api/scriptfixture.h"
#include "document/editordocument.h"
#include "model/metaworld.h"

#include <algorithm>

namespace
{
constexpr int kKindRole = Qt::UserRole;
constexpr int kIdRole = Qt::UserRole + 1;

quint64 keyOf(ItemKind kind, ItemId id)
{
    return (quint64(kind) << 32) | id;
}

QString labelOf(ItemKind kind, ItemId id, const QString& name)
{
    return name.isEmpty() ? QStringLiteral("%1 %2").arg(itemKindDisplayName(kind)).arg(id) : name;
}

bool renamable(ItemKind kind)
{
    return kind == ItemKind::Body || kind == ItemKind::Fixture;
}
} // namespace

ItemsTree::ItemsTree(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("ItemsTree"));
    setHeaderHidden(true);
    setColumnCount(1);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ItemsTree::selectionEdited);
    connect(this, &QTreeWidget::itemChanged, this, &ItemsTree::nameEdited);
}

void ItemsTree::setDocument(EditorDocument* document)
{
    if (document == m_document)
        return;
    disconnect(m_stackConnection);
    m_document = document;
    m_entries.clear();
    if (m_document) {
        m_stackConnection =
            connect(&m_document->undoStack(), &QUndoStack::indexChanged, this, [this] { refresh(); });
    }
    rebuild(currentEntries());
}

QTreeWidgetItem* ItemsTree::itemFor(ItemKind kind, ItemId id) const
{
    return m_items.value(keyOf(kind, id), nullptr);
}

std::vector<ItemsTree::Entry> ItemsTree::currentEntries() const
{
    std::vector<Entry> entries;
    if (!m_document)
        return entries;
    const MetaWorld& world = m_document->world();
    entries.reserve(world.bodies().size() + world.fixtureCount() + world.joints().size() + world.images().size());
    for (const auto& body : world.bodies()) {
        entries.push_back({ItemKind::Body, body->id(), body->name()});
        for (const auto& fixture : body->fixtures())
            entries.push_back({ItemKind::Fixture, fixture->id(), fixture->name()});
    }
    for (const auto& item : world.joints())
        entries.push_back({ItemKind::Joint, item->id(), item->name()});
    for (const auto& item : world.images())
        entries.push_back({ItemKind::Image, item->id(), item->name()});
    for (const auto& item : world.samplers())
        entries.push_back({ItemKind::Sampler, item->id(), item->name()});
    for (const auto& item : world.objects())
        entries.push_back({ItemKind::Object, item->id(), item->name()});
    return entries;
}

void ItemsTree::refresh()
{
    std::vector<Entry> entries = currentEntries();
    if (entries != m_entries)
        rebuild(std::move(entries));
    else
        syncSelection();
}

void ItemsTree::rebuild(std::vector<Entry> entries)
{
    m_syncing = true;
    setUpdatesEnabled(false);
    clear();
    m_items.clear();
    m_entries = std::move(entries);
    if (m_document) {
        QTreeWidgetItem* groups[kItemKindCount] = {};
        const auto group = [this, &groups](ItemKind kind, const QString& title) {
            auto* item = new QTreeWidgetItem(this, {title});
            item->setFlags(Qt::ItemIsEnabled);
            groups[int(kind)] = item;
        };
        group(ItemKind::Body, tr("Bodies"));
        group(ItemKind::Joint, tr("Joints"));
        group(ItemKind::Image, tr("Images"));
        group(ItemKind::Sampler, tr("Samplers"));
        group(ItemKind::Object, tr("Objects"));
        QTreeWidgetItem* lastBody = nullptr;
        for (const Entry& e : m_entries) {
            QTreeWidgetItem* parent = e.kind == ItemKind::Fixture ? lastBody : groups[int(e.kind)];
            if (!parent)
                continue;
            auto* item = new QTreeWidgetItem(parent, {labelOf(e.kind, e.id, e.name)});
            item->setData(0, kKindRole, int(e.kind));
            item->setData(0, kIdRole, e.id);
            Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
            if (renamable(e.kind))
                flags |= Qt::ItemIsEditable;
            item->setFlags(flags);
            m_items.insert(keyOf(e.kind, e.id), item);
            if (e.kind == ItemKind::Body)
                lastBody = item;
        }
        for (QTreeWidgetItem* g : groups) {
            if (g) {
                g->setText(0, QStringLiteral("%1 (%2)").arg(g->text(0)).arg(g->childCount()));
                g->setExpanded(true);
            }
        }
    }
    setUpdatesEnabled(true);
    m_syncing = false;
    syncSelection();
}

void ItemsTree::syncSelection()
{
    if (!m_document)
        return;
    m_syncing = true;
    const Selection& selection = m_document->selection();
    QTreeWidgetItem* last = nullptr;
    const QList<QTreeWidgetItem*> before = selectedItems();
    for (QTreeWidgetItem* item : before) {
        const auto kind = ItemKind(item->data(0, kKindRole).toInt());
        if (!selection.contains(kind, item->data(0, kIdRole).toUInt()))
            item->setSelected(false);
    }
    for (int k = 0; k < kItemKindCount; ++k) {
        for (ItemId id : selection.items(ItemKind(k))) {
            if (QTreeWidgetItem* item = itemFor(ItemKind(k), id)) {
                item->setSelected(true);
                last = item;
            }
        }
    }
    if (last)
        scrollToItem(last);
    m_syncing = false;
}

void ItemsTree::selectionEdited()
{
    if (m_syncing || !m_document)
        return;
    EditorDocument& doc = *m_document;
    std::vector<ItemId> wanted[2];
    for (QTreeWidgetItem* item : selectedItems()) {
        const auto kind = ItemKind(item->data(0, kKindRole).toInt());
        if (kind == ItemKind::Body || kind == ItemKind::Fixture)
            wanted[int(kind)].push_back(item->data(0, kIdRole).toUInt());
    }
    const Selection& selection = doc.selection();
    bool changes = false;
    for (int k = 0; k < 2; ++k) {
        const auto kind = ItemKind(k);
        for (ItemId id : wanted[k])
            changes = changes || !selection.contains(kind, id);
        for (ItemId id : selection.items(kind))
            changes = changes || std::find(wanted[k].begin(), wanted[k].end(), id) == wanted[k].end();
    }
    if (!changes)
        return;
    ScriptDocumentScope scope(&doc);
    UndoMacroScope macro(doc.undoStack(), tr("selection"));
    for (int k = 0; k < 2; ++k) {
        const auto kind = ItemKind(k);
        const std::vector<ItemId> current = selection.items(kind);
        for (ItemId id : current) {
            if (std::find(wanted[k].begin(), wanted[k].end(), id) != wanted[k].end())
                continue;
            if (kind == ItemKind::Body) {
                ScriptBody h = ScriptApi::bodyHandle(doc.world().findBody(id));
                BodyApi::deselect(&h);
            } else {
                ScriptFixture h = ScriptApi::fixtureHandle(doc.world().findFixture(id));
                FixtureApi::deselect(&h);
            }
        }
        for (ItemId id : wanted[k]) {
            if (selection.contains(kind, id))
                continue;
            if (kind == ItemKind::Body) {
                ScriptBody h = ScriptApi::bodyHandle(doc.world().findBody(id));
                BodyApi::select(&h);
            } else {
                ScriptFixture h = ScriptApi::fixtureHandle(doc.world().findFixture(id));
                FixtureApi::select(&h);
            }
        }
    }
}

void ItemsTree::nameEdited(QTreeWidgetItem* item, int column)
{
    if (m_syncing || !m_document || column != 0 || !item->data(0, kKindRole).isValid())
        return;
    const auto kind = ItemKind(item->data(0, kKindRole).toInt());
    const ItemId id = item->data(0, kIdRole).toUInt();
    MetaItem* target = m_document->world().findItem(kind, id);
    const QString name = item->text(0);
    if (!target || !renamable(kind) || name == labelOf(kind, id, target->name()))
        return;
    EditorDocument& doc = *m_document;
    {
        ScriptDocumentScope scope(&doc);
        UndoMacroScope macro(doc.undoStack(), tr("rename"));
        if (kind == ItemKind::Body) {
            ScriptBody h = ScriptApi::bodyHandle(static_cast<MetaBody*>(target));
            BodyApi::setName(&h, name.toStdString());
        } else {
            ScriptFixture h = ScriptApi::fixtureHandle(static_cast<MetaFixture*>(target));
            FixtureApi::setName(&h, name.toStdString());
        }
    }
    // A refused name leaves the model as it was: show its name again.
    if (MetaItem* now = m_document->world().findItem(kind, id); now && now->name() != name) {
        m_syncing = true;
        item->setText(0, labelOf(kind, id, now->name()));
        m_syncing = false;
    }
}
