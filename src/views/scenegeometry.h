#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <QColor>
#include <QString>

#include <array>
#include <cstdint>
#include <unordered_map>
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

/// The regions of a scene's drawing: where each body lies (the centre of
/// its box; a body without a finite box lies in no region) and a grid of
/// regions over the centres, about 150 bodies a region. A scene is drawn
/// region by region, so that a view draws the regions it sees and an edit
/// draws again only the regions it touched.
struct SceneRegions
{
    /// Where one body lies.
    struct Place
    {
        /// False when the body has no finite box.
        bool placed = false;
        /// Centre of its box: origin and fixtures with their radii.
        Vec2 centre;
        /// Extent of its last fixture with a finite box, for the level of detail.
        float size = 0;
        friend bool operator==(const Place&, const Place&) = default;
    };
    /// One place per body, in the scene's order.
    std::vector<Place> places;
    /// Regions per side of the grid.
    int side = 1;
    /// Box of the placed centres.
    Vec2 lo{1, 1};
    Vec2 hi{-1, -1};
    /// Per region, row by row, the indices of its bodies in the scene's order.
    std::vector<std::vector<std::uint32_t>> cells;

    /// The place of one body.
    static Place placeOf(const MetaBody& body);
    /// Lays the grid over `places` and fills the regions.
    void arrange();
    /// Median size of the placed bodies with a size; 0 when there is none.
    float typicalSize() const;
};

/// The parts of a scene's drawing in the order they are drawn: the images,
/// the regions of bodies, the joints, the samplers and each object instance.
/// Each part is one chunk of the drawing (none when it draws nothing).
enum class ScenePart
{
    Images,
    Region,
    Joints,
    Samplers,
    Object
};

/// A fixture drawn under its current outline with the fill of an earlier
/// vertex list, the one a drag of its vertices started from: refilling a
/// huge outline at every step of the drag would not keep up with the
/// pointer. Without vertices it is drawn without a fill.
struct HeldFill
{
    ItemId fixture = 0;
    std::vector<Vec2> vertices; ///< in the body's coordinates
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
    /// The regions of the drawing, in drawing order; every vertex drawn lies
    /// in one (after updates in place the arrays may hold stretches that no
    /// chunk draws).
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
    /// Vertices of one chunk at most (a multiple of 6: whole triangles and segments).
    static constexpr int kLargestChunk = 6 * 4096;

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
    /// Empties every array (keeping its memory for the next drawing) and
    /// the box.
    void clear();
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
    /// Draws one part of a scene onto the end of `target`, as one chunk: for
    /// a region the bodies `bodies` (indices into the scene's bodies), for
    /// an object instance the one at `index`. Polygons of the fixtures in
    /// `heldFills` take their fill from there (in the full drawing).
    static void drawPart(SceneGeometry& target, const MetaWorld& world, const Selection& selection,
                         const ViewColors& colors, const QString& sceneFilePath, int circleSegments, ScenePart part,
                         const std::vector<std::uint32_t>* bodies = nullptr, size_t index = 0,
                         const std::vector<HeldFill>* heldFills = nullptr);
    /// A digest of everything a body's drawing takes from the scene and the
    /// selection (its place, type, revision, and its mark from
    /// selectionMarks, 0 when it has none): the drawing of a body whose
    /// digest is unchanged is too. It reads only the body itself.
    static std::uint64_t bodyDigest(const MetaBody& body, std::uint64_t selectionMark);
    /// For each body the selection touches, a number standing for what of
    /// it is selected: the body, its fixtures, their picked corners.
    static std::unordered_map<const MetaBody*, std::uint64_t> selectionMarks(const MetaWorld& world,
                                                                            const Selection& selection);
};
