#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <QColor>
#include <QString>

#include <array>
#include <cstdint>
#include <vector>

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
    /// World box of everything drawn; lo > hi when nothing is drawn.
    Vec2 lo{1, 1};
    Vec2 hi{-1, -1};

    /// True when nothing has a finite position.
    bool isEmpty() const { return hi.x < lo.x; }
    /// Builds the geometry of a scene, its selection and the expanded items of
    /// its object instances (dimmed). `sceneFilePath` resolves relative image files.
    static SceneGeometry build(const MetaWorld& world, const Selection& selection, const ViewColors& colors,
                               const QString& sceneFilePath);
};
