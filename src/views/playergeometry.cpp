#include "views/playergeometry.h"

#include "document/imagedata.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "player/playerworld.h"
#include "views/shapegeometry.h"
#include "views/viewcolors.h"

#include <algorithm>
#include <cmath>

namespace
{
Vec2 placed(const b2Transform& t, Vec2 p)
{
    return {t.p.x + t.q.c * p.x - t.q.s * p.y, t.p.y + t.q.s * p.x + t.q.c * p.y};
}

bool finite(Vec2 p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}
} // namespace

void PlayerGeometry::clear()
{
    m_local = SceneGeometry{};
    m_ranges.clear();
    m_images.clear();
}

void PlayerGeometry::build(const PlayerWorld& world, const ViewColors& colors, const QString& sceneFilePath)
{
    clear();
    std::vector<const MetaBody*> bodies;
    for (const BuiltBody& built : world.build().bodies())
        bodies.push_back(built.source);
    SceneGeometry::buildBodiesLocal(m_local, bodies, colors, ShapeTessellator::kCircleSegments, &m_ranges);
    for (const BuiltImage& built : world.build().images()) {
        const MetaImage& image = built.placed ? *built.placed : *built.source;
        const ImageQuad quad = computeImageQuad(image);
        ImageEntry entry;
        entry.bodyIndex = built.bodyIndex;
        entry.renderOrder = image.renderOrder;
        entry.draw.path = resolveImagePath(image, sceneFilePath);
        std::copy(quad.corners.begin(), quad.corners.end(), entry.draw.corners.begin());
        std::copy(quad.texCoordPointer.begin(), quad.texCoordPointer.end(), entry.draw.texCoords.begin());
        entry.draw.opacity = std::clamp(image.opacity, 0.f, 1.f);
        entry.draw.tint = QColor(std::clamp(image.colorTint.r, 0, 255), std::clamp(image.colorTint.g, 0, 255),
                                 std::clamp(image.colorTint.b, 0, 255), std::clamp(image.colorTint.a, 0, 255));
        m_images.push_back(entry);
    }
    // Images are drawn in render order, as in the editor.
    std::stable_sort(m_images.begin(), m_images.end(),
                     [](const ImageEntry& a, const ImageEntry& b) { return a.renderOrder < b.renderOrder; });
}

void PlayerGeometry::place(const PlayerWorld& world, const PlayerDisplayToggles& toggles, const ViewColors& colors,
                           SceneGeometry& frame) const
{
    frame.triangles.clear();
    frame.lines.clear();
    frame.images.clear();
    frame.labels.clear();
    frame.chunks.clear();
    frame.lo = {INFINITY, INFINITY};
    frame.hi = {-INFINITY, -INFINITY};
    const auto grow = [&frame](Vec2 p) {
        if (!finite(p))
            return;
        frame.lo = {std::min(frame.lo.x, p.x), std::min(frame.lo.y, p.y)};
        frame.hi = {std::max(frame.hi.x, p.x), std::max(frame.hi.y, p.y)};
    };
    const size_t bodies = std::min(m_ranges.size(), world.bodyCount());

    // Images under everything: backing images unless hidden, body images unless hidden.
    for (const ImageEntry& entry : m_images) {
        const bool onBody = entry.bodyIndex >= 0;
        if ((onBody && !toggles.showBodyImages) || (!onBody && !toggles.showBackingImages))
            continue;
        ImageDraw draw = entry.draw;
        if (onBody) {
            const b2Body* body = size_t(entry.bodyIndex) < bodies ? world.body(size_t(entry.bodyIndex)) : nullptr;
            if (!body)
                continue;
            for (Vec2& corner : draw.corners)
                corner = placed(body->GetTransform(), corner);
        }
        if (std::all_of(draw.corners.begin(), draw.corners.end(), [](Vec2 p) { return finite(p); }))
            frame.images.push_back(draw);
    }

    if (toggles.showFixtures) {
        for (size_t i = 0; i < bodies; ++i) {
            const b2Body* body = world.body(i);
            const BodyVertexRange& range = m_ranges[i];
            if (!body)
                continue;
            const b2Transform& t = body->GetTransform();
            for (size_t k = 0; k < range.triangleCount; ++k) {
                GeomVertex v = m_local.triangles[range.firstTriangle + k];
                const Vec2 p = placed(t, {v.x, v.y});
                v.x = p.x;
                v.y = p.y;
                frame.triangles.push_back(v);
            }
            for (size_t k = 0; k < range.lineCount; ++k) {
                GeomVertex v = m_local.lines[range.firstLine + k];
                const Vec2 p = placed(t, {v.x, v.y});
                v.x = p.x;
                v.y = p.y;
                frame.lines.push_back(v);
            }
            grow({t.p.x, t.p.y});
        }
    }
    ShapeTessellator shapes(frame);
    if (toggles.showBodyNubs) {
        for (size_t i = 0; i < bodies; ++i) {
            if (const b2Body* body = world.body(i)) {
                const Vec2 origin{body->GetPosition().x, body->GetPosition().y};
                if (finite(origin))
                    shapes.cross(origin, 3, colors.bodyColor(body->GetType() == b2_staticBody      ? BodyType::Static
                                                             : body->GetType() == b2_kinematicBody ? BodyType::Kinematic
                                                                                                   : BodyType::Dynamic));
            }
        }
    }
    if (toggles.showJointNubs) {
        // Joints as Box2D has them now, the mouse joint too.
        for (const b2Joint* joint = const_cast<PlayerWorld&>(world).world().GetJointList(); joint;
             joint = joint->GetNext()) {
            const Vec2 a{joint->GetAnchorA().x, joint->GetAnchorA().y};
            const Vec2 b{joint->GetAnchorB().x, joint->GetAnchorB().y};
            if (!finite(a) || !finite(b))
                continue;
            const QColor colour = joint->GetType() == e_mouseJoint ? colors.cursor : colors.joint;
            shapes.segment(a, b, colour);
            shapes.marker(a, 6, colour);
            shapes.marker(b, 6, colour);
        }
    }
    GeomChunk all;
    all.lo = {-INFINITY, -INFINITY};
    all.hi = {INFINITY, INFINITY};
    all.triangleCount = int(frame.triangles.size());
    all.lineCount = int(frame.lines.size());
    frame.chunks.push_back(all);
}
