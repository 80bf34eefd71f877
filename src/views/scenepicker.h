#pragma once

#include "base/types.h"
#include "editing/editmode.h"

#include <QString>

#include <array>
#include <unordered_map>
#include <vector>

class MetaWorld;
class Selection;

/// One item found under the pointer: its kind and id, and for vertices the
/// vertex index (the id is then the fixture's).
struct PickHit
{
    ItemKind kind = ItemKind::Body;
    ItemId id = 0;
    int vertex = -1;
    friend bool operator==(const PickHit&, const PickHit&) = default;
};

/// Finds the items of an edit mode under a point or inside a box. It is
/// built once per scene change: fixtures go into a uniform grid by their
/// world bounds, so a point query looks at one cell's fixtures, not at the
/// whole scene; joints, images, samplers and objects are kept with their
/// world geometry. Items drawn later lie on top and come first.
class ScenePicker
{
public:
    /// Takes the geometry of a scene (its own items, not object contents).
    void build(const MetaWorld& world);
    /// True once built.
    bool isBuilt() const { return m_built; }
    /// Forgets the scene (it changed).
    void clear();

    /// Distinct items of the mode at `point`, within `tolerance` of thin
    /// things (outlines, anchors, vertices), topmost first. In the vertex
    /// mode the vertices of the selected fixtures are found, or of all
    /// fixtures when none is selected.
    std::vector<PickHit> pick(EditMode mode, Vec2 point, float tolerance, const Selection& selection) const;
    /// Items of the mode lying wholly inside the box [lo, hi].
    std::vector<PickHit> pickInBox(EditMode mode, Vec2 lo, Vec2 hi, const Selection& selection) const;
    /// World position of a vertex (the vertex mode's hits).
    Vec2 vertexPosition(ItemId fixture, int index) const;
    /// Vertices within `radius` of `point` whose fixtures are not in `skip`,
    /// nearest first (for snapping to other items' vertices).
    std::vector<Vec2> verticesNear(Vec2 point, float radius, const std::vector<ItemId>& skipFixtures) const;

private:
    struct FixtureEntry
    {
        ItemId id;
        ItemId body;
        size_t order;
        Vec2 lo, hi;
        size_t firstVertex, vertexCount;
    };
    struct BoxEntry
    {
        ItemKind kind;
        ItemId id;
        Vec2 lo, hi;
        std::array<Vec2, 4> quad; // images, samplers
        Vec2 a, b;                // joint anchors; object position in a
    };

    std::vector<const FixtureEntry*> fixturesNear(Vec2 lo, Vec2 hi) const;
    bool cellRange(Vec2 lo, Vec2 hi, int* x0, int* y0, int* x1, int* y1) const;

    const MetaWorld* m_world = nullptr;
    bool m_built = false;
    std::vector<FixtureEntry> m_fixtures;
    std::unordered_map<ItemId, size_t> m_fixtureIndex;
    std::vector<Vec2> m_vertices;
    std::vector<BoxEntry> m_others;
    std::vector<std::pair<ItemId, Vec2>> m_bodyOrigins;
    Vec2 m_gridLo, m_gridHi;
    float m_cell = 1;
    int m_columns = 0, m_rows = 0;
    std::vector<std::vector<uint32_t>> m_cells;
    std::vector<uint32_t> m_outside; // fixtures too big or too far out for the grid
};
