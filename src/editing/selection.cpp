#include "editing/selection.h"

#include <algorithm>

bool Selection::add(ItemKind kind, ItemId id)
{
    if (!m_sets[size_t(kind)].insert(id).second)
        return false;
    m_items[size_t(kind)].push_back(id);
    return true;
}

bool Selection::remove(ItemKind kind, ItemId id)
{
    if (m_sets[size_t(kind)].erase(id) == 0)
        return false;
    std::vector<ItemId>& items = m_items[size_t(kind)];
    items.erase(std::find(items.begin(), items.end(), id));
    return true;
}

bool Selection::containsVertex(ItemId fixture, int index) const
{
    return m_vertexSet.count(vertexKey(fixture, index)) != 0;
}

bool Selection::addVertex(ItemId fixture, int index)
{
    if (!m_vertexSet.insert(vertexKey(fixture, index)).second)
        return false;
    m_vertices.push_back({fixture, index});
    return true;
}

bool Selection::removeVertex(ItemId fixture, int index)
{
    if (m_vertexSet.erase(vertexKey(fixture, index)) == 0)
        return false;
    m_vertices.erase(std::find(m_vertices.begin(), m_vertices.end(), VertexRef{fixture, index}));
    return true;
}

void Selection::vertexIndexShifted(ItemId fixture, int index, int delta)
{
    if (delta < 0)
        removeVertex(fixture, index);
    bool shifted = false;
    for (VertexRef& v : m_vertices) {
        if (v.fixture == fixture && v.index >= index) {
            v.index += delta;
            shifted = true;
        }
    }
    if (!shifted)
        return;
    m_vertexSet.clear();
    for (const VertexRef& v : m_vertices)
        m_vertexSet.insert(vertexKey(v.fixture, v.index));
}

void Selection::clear()
{
    for (auto& items : m_items)
        items.clear();
    for (auto& set : m_sets)
        set.clear();
    m_vertices.clear();
    m_vertexSet.clear();
}
