#pragma once

#include "player/displaytoggles.h"
#include "views/scenegeometry.h"

#include <vector>

class PlayerWorld;
struct ViewColors;

/// The drawing of a running simulation. The fixtures of every body are
/// tessellated once per load in the body's own coordinates; each frame only
/// places them where Box2D has the bodies now, and adds the joints, the body
/// origins and the images, as the display toggles allow.
class PlayerGeometry
{
public:
    /// Tessellates the bodies of a newly loaded world.
    void build(const PlayerWorld& world, const ViewColors& colors, const QString& sceneFilePath);
    /// Forgets the world (it was reloaded or closed).
    void clear();
    /// Fills `frame` with the world as it is now.
    void place(const PlayerWorld& world, const PlayerDisplayToggles& toggles, const ViewColors& colors,
               SceneGeometry& frame) const;

private:
    struct ImageEntry
    {
        ImageDraw draw;                 // corners in the body's (or the world's) coordinates
        int bodyIndex = -1;
        float renderOrder = 0;
    };

    SceneGeometry m_local;
    std::vector<BodyVertexRange> m_ranges;
    std::vector<ImageEntry> m_images;
};
