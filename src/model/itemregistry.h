#pragma once

#include "model/itemkind.h"
#include "base/types.h"

#include <QMultiHash>
#include <QString>

#include <unordered_map>

class MetaItem;

/// Per-kind look-up of a world's items by id and by name, and the allocation
/// of free ids and unused names.
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
    int nameCount(const QString& name) const { return int(m_byName.count(name)); }
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

    ItemKind m_kind;
    std::unordered_map<ItemId, MetaItem*> m_byId;
    QMultiHash<QString, MetaItem*> m_byName;
    ItemId m_lastId = 0;
    // Every pattern name below this number is in use; the search for a
    // unique name starts here.
    quint64 m_firstPossiblyFreeName = 0;
};
