#pragma once

#include "model/itemkind.h"
#include "base/types.h"

#include <QMultiHash>
#include <QString>

#include <atomic>
#include <mutex>
#include <unordered_map>
#include <vector>

class MetaItem;

/// Per-kind look-up of a world's items by id and by name, and the allocation
/// of free ids and unused names. The look-up by name is made at its first
/// use: a scene read and exported without a script never needs it, and
/// indexing the names of many thousand items takes a sixth of their reading.
class ItemRegistry
{
public:
    /// The registry of one kind.
    explicit ItemRegistry(ItemKind kind) : m_kind(kind) {}

    /// Item with that id, or null.
    MetaItem* find(ItemId id) const;
    /// True when an item has that id.
    bool contains(ItemId id) const { return m_byId.count(id) != 0; }
    /// Number of registered items.
    size_t size() const { return m_byId.size(); }

    /// Registers an item under its id (non-zero, not yet used) and name.
    bool insert(MetaItem* item);
    /// Unregisters an item.
    void erase(MetaItem* item);

    /// Some item with that name (the first registered), or null.
    MetaItem* findByName(const QString& name) const;
    /// How many items carry that name.
    int nameCount(const QString& name) const { return int(names().count(name)); }
    /// Moves an item from its old name to a new one.
    void rename(MetaItem* item, const QString& oldName, const QString& newName);

    /// A free id: from the last allocated id plus 1, or from 1 (filling gaps). 0 when none is left.
    ItemId allocate(bool continueFromLast);
    /// The last id allocated or registered.
    ItemId lastId() const { return m_lastId; }

    /// The first name of the kind's pattern ("body0", "body1", ...) that no item carries.
    QString uniqueName();

private:
    void nameRemoved(const QString& name);
    // The look-up by name, made from the items registered so far when first asked for.
    const QMultiHash<QString, MetaItem*>& names() const;
    QMultiHash<QString, MetaItem*>& names();

    ItemKind m_kind;
    std::unordered_map<ItemId, MetaItem*> m_byId;
    // Until the names are indexed, the items in the order they were registered.
    mutable std::vector<MetaItem*> m_unindexed;
    mutable QMultiHash<QString, MetaItem*> m_byName;
    mutable std::atomic<bool> m_indexed{false};
    mutable std::mutex m_indexing;
    ItemId m_lastId = 0;
    // Every pattern name below this number is in use; the search for a
    // unique name starts here.
    quint64 m_firstPossiblyFreeName = 0;
};
