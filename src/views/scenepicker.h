#pragma once

#include "base/types.h"
#include "editing/editmode.h"

#include <QString>

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

class MetaBody;
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

/// Finds the items of an edit mode under a point or inside a box. Fixtures
/// go into a uniform grid by their world bounds, so a point query looks at
/// one cell's fixtures, not at the whole scene; joints, images, samplers and
/// objects are kept with their world geometry. Items drawn later lie on top
/// and come first. After an edit, `update` reads again only the bodies whose
/// digest changed and gives the answers a fresh build would give.
class ScenePicker
{
public:
    /// Takes the geometry of a scene (its own items, not object contents);
    /// `sceneFilePath` finds the pictures of samplers.
    void build(const MetaWorld& world, const QString& sceneFilePath = QString());
    /// Brings the picker up to date with an edited scene: when it was built
    /// for this world, only the fixtures of bodies whose digest changed, or
    /// that came or went, are read again and moved in the grid; joints,
    /// images, samplers, objects and body origins are read again whole.
    /// Builds everything instead when it was not built for this world, when
    /// bodies were reordered or inserted before others, when more than about
    /// a quarter of them changed, or when the storage left behind by earlier
    /// updates has grown large.
    void update(const MetaWorld& world, const QString& sceneFilePath = QString());
    /// True once built.
    bool isBuilt() const { return m_built; }
    /// Forgets the scene (it was replaced).
    void clear();
    /// True when the last build or update read the whole scene (for tests
    /// and benchmarks).
    bool lastUpdateWasFull() const { return m_lastFull; }
    /// Bodies whose fixtures the last build or update read (for tests and
    /// benchmarks).
    size_t lastBodiesRead() const { return m_lastBodiesRead; }

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
        std::uint64_t order;       // the body's key, then the fixture's index in its body
        Vec2 lo, hi;
        size_t firstVertex, vertexCount;
        bool live = true;          // false once its body changed or went
        bool outside = false;      // in m_outside rather than in grid cells
    };
    struct BoxEntry
    {
        ItemKind kind;
        ItemId id;
        Vec2 lo, hi;
        std::array<Vec2, 4> quad; // images, samplers
        Vec2 a, b;                // joint anchors; object position in a
    };
    // What the picker holds of one body: where its entries and vertices
    // lie, with the room they may grow into there.
    struct BodyState
    {
        const MetaBody* body = nullptr; // compared only: it may be gone
        std::uint64_t digest = 0;
        std::uint32_t key = 0;          // increases with the body's place in the scene
        size_t firstEntry = 0, entryCount = 0, entryRoom = 0;
        size_t firstVertex = 0, vertexRoom = 0;
    };

    static void readBody(const MetaBody& body, std::uint32_t key, std::vector<FixtureEntry>& entries,
                         std::vector<Vec2>& vertices);
    void readLists(const MetaWorld& world, const QString& sceneFilePath);
    void buildGrid(Vec2 sceneLo, Vec2 sceneHi);
    void rereadBody(const MetaBody& body, BodyState& state);
    void forgetEntries(const BodyState& state);
    void placeEntry(size_t index);
    void unplaceEntry(size_t index);
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

    // Kept for updates.
    std::vector<BodyState> m_bodies;
    std::uint32_t m_maxStoredKey = 0; // largest key of a body with entries stored
    bool m_inOrder = true;           // m_fixtures lie in the order of their `order`
    size_t m_liveEntries = 0;
    size_t m_builtEntries = 0;       // live entries and m_outside's size at the last build
    size_t m_builtOutside = 0;
    size_t m_staleVertices = 0;      // vertices no entry reads any more
    std::vector<FixtureEntry> m_scratchEntries;
    std::vector<Vec2> m_scratchVertices;
    bool m_lastFull = true;
    size_t m_lastBodiesRead = 0;
};
