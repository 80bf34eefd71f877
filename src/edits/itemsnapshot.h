#pragma once

#include "base/types.h"
#include "editing/editmode.h"

#include <vector>

class MetaWorld;
class Selection;

/// The placement state of the selected items of one edit mode, as a
/// transform may change it: positions, angles, scales, flips, fixture
/// vertices and radii, joint anchors. Restoring puts those values back
/// exactly (bit for bit), without recording anything; it is how an
/// interactive transform undoes its own preview before it records the
/// final change. Items deleted meanwhile are skipped.
class ItemSnapshot
{
public:
    /// Takes the state of the selection of edit mode `mode`.
    ItemSnapshot(MetaWorld& world, const Selection& selection, EditMode mode);

    /// Puts the taken values back.
    void restore() const;
    /// Number of items (vertices in the vertex mode) taken.
    int count() const { return m_count; }

private:
    struct FixtureState
    {
        ItemId id;
        std::vector<Vec2> vertices;
        std::vector<float> radii;
    };
    struct PlacedState
    {
        ItemId id;
        Vec2 position;
        float angle;
        float scale;
        float aspectScale;
        bool flip;
    };
    void takeFixture(ItemId id);

    MetaWorld& m_world;
    EditMode m_mode;
    int m_count = 0;
    std::vector<PlacedState> m_placed;
    std::vector<FixtureState> m_fixtures;
};
