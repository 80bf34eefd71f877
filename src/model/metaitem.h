#pragma once

#include "base/types.h"
#include "model/customproperties.h"
#include "model/itemkind.h"

#include <QString>

#include <cstdint>

class MetaWorld;

/// Base of the six scene item kinds: an id unique within its kind, a name and
/// custom property values. Ids and names are registered with the owning
/// world, so they change only through MetaWorld.
class MetaItem
{
public:
    virtual ~MetaItem() = default;
    MetaItem(const MetaItem&) = delete;
    MetaItem& operator=(const MetaItem&) = delete;

    /// Kind of the item.
    ItemKind kind() const { return m_kind; }
    /// Item id; 0 while the item is not part of a world.
    ItemId id() const { return m_id; }
    /// Name, possibly empty.
    const QString& name() const { return m_name; }
    /// The world the item belongs to, or null.
    MetaWorld* world() const { return m_world; }

    /// A number that changes whenever the item's id or name changes, and
    /// for a body or fixture whenever its fixture list, vertices or shapes
    /// do; no two items ever share one. A change of a fixture changes its
    /// body's revision too. Public fields (a body's place, a fixture's
    /// material) are not covered: compare them directly.
    std::uint64_t revision() const { return m_revision; }
    /// Gives the item (and a fixture's body) a new revision. The model's
    /// own mutators call it; code that changes private state through them
    /// need not.
    virtual void markChanged();

    /// Custom property values of the item.
    CustomProperties customProperties;

protected:
    explicit MetaItem(ItemKind kind);

private:
    friend class MetaWorld;
    friend class ItemRegistry;

    ItemKind m_kind;
    ItemId m_id = 0;
    QString m_name;
    MetaWorld* m_world = nullptr;
    std::uint64_t m_revision;
};
