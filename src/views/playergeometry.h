#pragma once

#include "player/displaytoggles.h"
#include "views/scenegeometry.h"

#include <vector>

class PlayerWorld;
struct ViewCamera;
struct ViewColors;

/// The drawing of a running simulation. The fixtures of every body are
/// tessellated once per load in the body's own coordinates, in full and in
/// the coarse detail the editor uses for far views; each frame only places
/// the bodies in sight where Box2D has them now, in the detail the zoom
/// wants, and adds the joints, the body origins and the images, as the
/// display toggles allow.
class PlayerGeometry
{
public:
    /// Tessellates the bodies of a newly loaded world.
    void build(const PlayerWorld& world, const ViewColors& colors, const QString& sceneFilePath);
    /// Forgets the world (it was reloaded or closed).
    void clear();
    /// Fills `frame` with the world as it is now, as far as `camera` sees
    /// it (every body when `camera` is null).
    void place(const PlayerWorld& world, const PlayerDisplayToggles& toggles, const ViewColors& colors,
               SceneGeometry& frame, const ViewCamera* camera = nullptr) const;

private:
    struct ImageEntry
    {
        ImageDraw draw;                 // corners in the body's (or the world's) coordinates
        int bodyIndex = -1;
        float renderOrder = 0;
    };

    // Where one body's drawing lies in a detail's arrays.
    struct BodyRange
    {
        std::uint32_t firstVertex = 0;
        std::uint32_t vertexCount = 0;
        std::uint32_t firstTriangle = 0;  ///< first index of its triangles
        std::uint32_t triangleCount = 0;  ///< indices of its triangles
        std::uint32_t firstLine = 0;
        std::uint32_t lineCount = 0;
    };

    // One level of detail: the bodies' drawings in their own coordinates,
    // each distinct corner stored once and the triangles and lines as
    // indices of the corners, and where each body's are.
    struct Detail
    {
        std::vector<GeomVertex> vertices;
        std::vector<std::uint32_t> triangles;
        std::vector<std::uint32_t> lines;
        std::vector<BodyRange> ranges;
    };

    static void index(const SceneGeometry& local, const std::vector<BodyVertexRange>& ranges, Detail& detail);

    Detail m_full;
    Detail m_coarse;
    /// Per body, the distance of its farthest drawn point from its origin.
    std::vector<float> m_reach;
    /// Median size of the bodies' drawings, for choosing the detail.
    float m_typicalSize = 0;
    std::vector<ImageEntry> m_images;
};
