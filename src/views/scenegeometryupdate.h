#pragma once

#include "views/scenegeometry.h"
#include "views/viewcolors.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

/// What an update changed in a scene geometry.
struct GeometryChange
{
    /// Everything was drawn again: the arrays were laid out anew.
    bool full = true;
    /// Stretches of the triangle vertices written (first, count).
    std::vector<std::pair<size_t, size_t>> triangles;
    /// Stretches of the line vertices written (first, count).
    std::vector<std::pair<size_t, size_t>> lines;
    /// The world box whose pixels may have changed (before the pixel
    /// margins of markers); lo > hi when no pixel changed.
    Vec2 lo{1, 1};
    Vec2 hi{-1, -1};

    /// True when nothing drawn changed.
    bool isEmpty() const { return !full && hi.x < lo.x && triangles.empty() && lines.empty(); }
    /// Grows the changed box to hold a point.
    void touch(Vec2 p);
};

/// Keeps a view's drawing of a scene up to date with the scene and its
/// selection, drawing again only the parts an edit touched: each body's
/// digest tells whether its drawing changed, and only the regions holding
/// such bodies, or whose bodies came or went, are drawn again, together
/// with the small parts (images, joints, samplers, object instances),
/// which are compared with what they drew before. Everything is drawn again
/// when the grid of regions moves, the colours, detail or file change, or
/// most regions changed. A part drawn again writes its vertices where it
/// had them when they fit, at the end of the arrays otherwise. The result
/// draws the same pixels as SceneGeometry::rebuild.
class SceneGeometryUpdater
{
public:
    /// Brings `geometry` up to date (it must be changed by this updater only),
    /// drawing the fixtures of `heldFills` with the fills held there.
    GeometryChange update(SceneGeometry& geometry, const MetaWorld& world, const Selection& selection,
                          const ViewColors& colors, const QString& sceneFilePath, int circleSegments,
                          const std::vector<HeldFill>& heldFills = {});
    /// The next update draws everything again.
    void invalidate() { m_valid = false; }
    /// Parts drawn again by the last update (all of them when it was full).
    size_t lastPartsDrawn() const { return m_partsDrawn; }

private:
    // One part of the drawing and where its output lies in the geometry.
    struct Slot
    {
        ScenePart part = ScenePart::Images;
        size_t index = 0;           // the region or object instance
        size_t firstTriangle = 0;
        size_t triangleCount = 0;
        size_t triangleRoom = 0;    // vertices it may use from firstTriangle on
        size_t firstLine = 0;
        size_t lineCount = 0;
        size_t lineRoom = 0;
        size_t firstLabel = 0;
        size_t labelCount = 0;
        std::vector<ImageDraw> images;
        Vec2 lo{1, 1};              // box of the part's drawing (as SceneGeometry's own)
        Vec2 hi{-1, -1};
        std::vector<GeomChunk> chunks; // its chunks, counted from its own first vertices
    };
    struct BodyState
    {
        const MetaBody* body = nullptr;
        std::uint64_t digest = 0;
    };

    void buildAll(SceneGeometry& geometry, const MetaWorld& world, const Selection& selection);
    void drawSlot(Slot& slot, SceneGeometry& geometry, const MetaWorld& world, const Selection& selection,
                  GeometryChange& change, bool& labelsMoved);
    void finish(SceneGeometry& geometry);
    const std::vector<std::uint32_t>* cellOf(const Slot& slot) const;

    bool m_valid = false;
    const MetaWorld* m_world = nullptr;
    ViewColors m_colors;
    QString m_filePath;
    int m_circleSegments = 0;
    SceneRegions m_regions;
    std::vector<BodyState> m_bodies;
    std::vector<std::vector<const MetaBody*>> m_cellBodies;
    std::vector<Slot> m_slots;
    size_t m_partsDrawn = 0;
    const std::vector<HeldFill>* m_heldFills = nullptr; // the fills of the update under way
    SceneGeometry m_scratch;
    std::vector<SceneLabel> m_labelScratch;
};
