#pragma once

#include "views/scenegeometry.h"

#include <algorithm>
#include <vector>

/// Appends filled and outlined shapes, already in world coordinates, to a
/// scene geometry. Used by SceneGeometry::build for fixtures, joints and markers.
class ShapeTessellator
{
public:
    /// Appends to `target`, with `circleSegments` segments for a full circle.
    explicit ShapeTessellator(SceneGeometry& target, int circleSegments = kCircleSegments)
        : m_target(target), m_circleSegments(std::max(4, circleSegments))
    {
    }

    /// A circle: filled, outlined and with a radius line showing the body's angle.
    void circle(Vec2 center, float radius, float angle, const QColor& fill, const QColor& outline);
    /// A polygon ring (either winding, convex or not) rounded by `radius` (0: sharp corners).
    void polygon(const std::vector<Vec2>& ring, float radius, const QColor& fill, const QColor& outline);
    /// An open (line) or closed (loop) chain; rounded chains are filled capsules.
    void chain(const std::vector<Vec2>& points, bool closed, float radius, const QColor& fill, const QColor& outline);
    /// Leaves out the outlines of filled shapes and the round caps of thin
    /// rounded chains (the coarse drawing of zoomed-out views); shapes drawn
    /// with a halo (the selection) keep their outlines.
    void setCoarse(bool coarse) { m_coarse = coarse; }
    /// A line segment (with the halo, when one is set).
    void segment(Vec2 a, Vec2 b, const QColor& colour);
    /// While `colour` is valid, every segment is drawn over a halo of that
    /// colour reaching kHaloPixels to each side, so that selected items stand
    /// out whatever they are drawn in; an invalid colour turns it off.
    void setHalo(const QColor& colour) { m_halo = colour; }
    /// Pixels the halo reaches beyond a line on each side.
    static constexpr float kHaloPixels = 2;
    /// A square marker of `pixels` size centred at `at`, filled, keeping its size on screen.
    void marker(Vec2 at, float pixels, const QColor& colour);
    /// A cross marker of `pixels` arm length, keeping its size on screen.
    void cross(Vec2 at, float pixels, const QColor& colour);
    /// Grows the geometry's box to hold a point.
    void include(Vec2 p, float margin = 0);

    /// Segments used for a full circle in the detailed drawing.
    static constexpr int kCircleSegments = 32;
    /// Segments used for a full circle in the coarse drawing of zoomed-out views.
    static constexpr int kCoarseCircleSegments = 6;

    /// The fill of a ring alone (triangles, no outline).
    void fillRing(const std::vector<Vec2>& ring, const QColor& colour);

private:
    bool drawsOutlines() const { return !m_coarse || m_halo.isValid(); }
    void triangle(Vec2 a, Vec2 b, Vec2 c, const QColor& colour);
    void disc(Vec2 center, float radius, int segments, const QColor& colour);
    void fan(Vec2 center, float radius, float from, float to, int segments, const QColor& colour);
    void thickSegment(Vec2 a, Vec2 b, float radius, const QColor& colour);

    SceneGeometry& m_target;
    int m_circleSegments;
    bool m_coarse = false;
    QColor m_halo;
};

/// A vertex of the drawing.
GeomVertex geomVertex(Vec2 p, const QColor& colour, float ox = 0, float oy = 0);
