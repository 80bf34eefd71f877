#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <QColor>
#include <QString>

#include <array>
#include <cstdint>
#include <vector>

class MetaBody;
class MetaWorld;
class Selection;
struct ViewColors;

/// One vertex of the editor's drawing: a world position, an offset in pixels
/// (markers keep their size on screen whatever the zoom) and a colour.
struct GeomVertex
{
    float x, y;
    float ox, oy;
    std::uint8_t r, g, b, a;
};

/// An image to draw as a textured quad, with its corners in world coordinates.
struct ImageDraw
{
    /// Absolute path of the image file.
    QString path;
    /// Bottom-left, bottom-right, top-right, top-left in world coordinates.
    std::array<Vec2, 4> corners;
    /// Texture coordinates of the corners.
    std::array<float, 8> texCoords;
    /// Opacity 0..1 and tint (dimmed for images of object instances).
    float opacity = 1;
    QColor tint = Qt::white;
};

/// A name drawn beside an item: its anchor in world coordinates, the kind
/// of item it names (views show the labels of the current edit mode) and
/// whether the item is selected.
struct SceneLabel
{
    Vec2 at;
    QString text;
    ItemKind kind = ItemKind::Body;
    ItemId id = 0;
    bool selected = false;
};

/// A part of the drawing lying in one region of the scene: ranges of the
/// triangle and line vertices and the world box they cover, so that a view
/// draws only the chunks it can see.
struct GeomChunk
{
    Vec2 lo{1, 1};
    Vec2 hi{-1, -1};
    int firstTriangle = 0;
    int triangleCount = 0;
    int firstLine = 0;
    int lineCount = 0;
};

/// Where one body's drawing lies in a geometry's vertex arrays.
struct BodyVertexRange
{
    size_t firstTriangle = 0;
    size_t triangleCount = 0;
    size_t firstLine = 0;
    size_t lineCount = 0;
};

/// The drawable form of a scene, built once per scene change and then drawn
/// every frame without walking the model: triangles and line segments in
/// world coordinates with colours, and the images. Selected items carry the
/// selection colour. Items with non-finite coordinates are left out.
struct SceneGeometry
{
    /// Filled areas, three vertices per triangle, drawn in order.
    std::vector<GeomVertex> triangles;
    /// Outlines, two vertices per segment.
    std::vector<GeomVertex> lines;
    /// Images, in render order (drawn before the triangles).
    std::vector<ImageDraw> images;
    /// Names of the scene's own items (not of object contents).
    std::vector<SceneLabel> labels;
    /// The regions of the drawing; together they cover every vertex once.
    std::vector<GeomChunk> chunks;
    /// Filled areas and outlines drawn from shared vertices: the triangles
    /// are drawn before `triangles`, the lines before `lines` (a player
    /// frame draws its bodies so, each corner shaded once).
    std::vector<GeomVertex> sharedVertices;
    /// Three indices into `sharedVertices` per triangle.
    std::vector<std::uint32_t> sharedTriangles;
    /// Two indices into `sharedVertices` per line segment.
    std::vector<std::uint32_t> sharedLines;
    /// Segments of a full circle in this drawing (its level of detail).
    int circleSegments = 32;
    /// Median size of the scene's fixtures (world units), for choosing the level of detail.
    float typicalFixtureSize = 0;
    /// Fixtures drawn smaller than this many pixels use the coarse drawing.
    static constexpr double kCoarseBelowPixels = 24;

    /// The fixtures of every body drawn in the body's own coordinates (no
    /// markers, labels, joints or images), one range per body in the scene's
    /// order given (null bodies draw nothing): a running simulation places
    /// the ranges each frame.
    static void buildBodiesLocal(SceneGeometry& geometry, const std::vector<const MetaBody*>& bodies,
                                 const ViewColors& colors, int circleSegments, std::vector<BodyVertexRange>* ranges);
    /// The median size of a scene's fixtures, from a sample of at most a
    /// thousand bodies; 0 for a scene without fixtures.
    static float measureTypicalFixtureSize(const MetaWorld& world);
    /// World box of everything drawn; lo > hi when nothing is drawn.
    Vec2 lo{1, 1};
    Vec2 hi{-1, -1};

    /// True when nothing has a finite position.
    bool isEmpty() const { return hi.x < lo.x; }
    /// Builds the geometry of a scene, its selection and the expanded items of
    /// its object instances (dimmed). `sceneFilePath` resolves relative image
    /// files; `circleSegments` sets the level of detail. Bodies are grouped
    /// by region into chunks (the order of drawing follows the regions, and
    /// within a region the scene's order).
    static SceneGeometry build(const MetaWorld& world, const Selection& selection, const ViewColors& colors,
                               const QString& sceneFilePath, int circleSegments = 32);
    /// The same into an existing geometry, reusing its memory (big scenes
    /// rebuild without allocating and touching fresh pages again).
    static void rebuild(SceneGeometry& geometry, const MetaWorld& world, const Selection& selection,
                        const ViewColors& colors, const QString& sceneFilePath, int circleSegments = 32);
};
