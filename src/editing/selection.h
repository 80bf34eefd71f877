#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <array>
#include <cstdint>
#include <unordered_set>
#include <vector>

/// The selected items of a document, per kind in the order they were
/// selected, and the selected vertices (fixture id and vertex index). The
/// selection is editor state: it is not saved with the scene.
class Selection
{
public:
    /// Identifies one vertex of a fixture.
    struct VertexRef
    {
        ItemId fixture = 0;
        int index = 0;
        friend bool operator==(const VertexRef&, const VertexRef&) = default;
    };

    /// True when the item is selected.
    bool contains(ItemKind kind, ItemId id) const { return m_sets[size_t(kind)].count(id) != 0; }
    /// Adds an item; false when it was already selected.
    bool add(ItemKind kind, ItemId id);
    /// Removes an item; false when it was not selected.
    bool remove(ItemKind kind, ItemId id);
    /// Selected ids of a kind, in selection order.
    const std::vector<ItemId>& items(ItemKind kind) const { return m_items[size_t(kind)]; }
    /// Number of selected items of a kind.
    size_t count(ItemKind kind) const { return m_items[size_t(kind)].size(); }

    /// True when the vertex is selected.
    bool containsVertex(ItemId fixture, int index) const;
    /// Adds a vertex; false when it was already selected.
    bool addVertex(ItemId fixture, int index);
    /// Removes a vertex; false when it was not selected.
    bool removeVertex(ItemId fixture, int index);
    /// Selected vertices in selection order.
    const std::vector<VertexRef>& vertices() const { return m_vertices; }
    /// Shifts the selected vertex indices of a fixture after a vertex was
    /// inserted at (delta 1) or removed from (delta -1) `index`; a removed
    /// vertex is deselected.
    void vertexIndexShifted(ItemId fixture, int index, int delta);

    /// Deselects everything.
    void clear();

private:
    static std::uint64_t vertexKey(ItemId fixture, int index)
    {
        return (std::uint64_t(fixture) << 32) | std::uint32_t(index);
    }

    std::array<std::vector<ItemId>, kItemKindCount> m_items;
    std::array<std::unordered_set<ItemId>, kItemKindCount> m_sets;
    std::vector<VertexRef> m_vertices;
    // The keys of m_vertices, so that a look-up does not walk the list.
    std::unordered_set<std::uint64_t> m_vertexSet;
};
