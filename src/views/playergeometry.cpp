#include "views/playergeometry.h"

#include "document/imagedata.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "player/playerworld.h"
#include "views/shapegeometry.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <unordered_map>

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
    m_full = Detail{};
    m_coarse = Detail{};
    m_reach.clear();
    m_typicalSize = 0;
    m_images.clear();
}

void PlayerGeometry::index(const SceneGeometry& local, const std::vector<BodyVertexRange>& ranges, Detail& detail)
{
    detail = Detail{};
    detail.ranges.reserve(ranges.size());
    detail.vertices.reserve(local.triangles.size() / 2 + local.lines.size() / 2);
    detail.triangles.reserve(local.triangles.size());
    detail.lines.reserve(local.lines.size());
    // Corners are shared within a body when every byte is the same (same
    // place, offset and colour), so drawing them shared looks the same.
    struct Key
    {
        const GeomVertex* v;
        bool operator==(const Key& o) const { return std::memcmp(v, o.v, sizeof(GeomVertex)) == 0; }
    };
    struct Hash
    {
        size_t operator()(const Key& k) const
        {
            std::uint32_t w[5];
            std::memcpy(w, k.v, sizeof(w));
            std::uint64_t h = 0x9E3779B97F4A7C15ull;
            for (std::uint32_t x : w)
                h = (h ^ x) * 0x100000001B3ull;
            return size_t(h ^ (h >> 29));
        }
    };
    static_assert(sizeof(GeomVertex) == 20, "corners are compared byte by byte");
    std::unordered_map<Key, std::uint32_t, Hash> seen;
    for (const BodyVertexRange& range : ranges) {
        BodyRange body;
        body.firstVertex = std::uint32_t(detail.vertices.size());
        seen.clear();
        const auto corner = [&](const GeomVertex& v) {
            const auto [it, added] = seen.emplace(Key{&v}, std::uint32_t(detail.vertices.size()));
            if (added)
                detail.vertices.push_back(v);
            return it->second;
        };
        body.firstTriangle = std::uint32_t(detail.triangles.size());
        for (size_t k = 0; k < range.triangleCount; ++k)
            detail.triangles.push_back(corner(local.triangles[range.firstTriangle + k]));
        body.triangleCount = std::uint32_t(detail.triangles.size()) - body.firstTriangle;
        body.firstLine = std::uint32_t(detail.lines.size());
        for (size_t k = 0; k < range.lineCount; ++k)
            detail.lines.push_back(corner(local.lines[range.firstLine + k]));
        body.lineCount = std::uint32_t(detail.lines.size()) - body.firstLine;
        body.vertexCount = std::uint32_t(detail.vertices.size()) - body.firstVertex;
        detail.ranges.push_back(body);
    }
}

void PlayerGeometry::build(const PlayerWorld& world, const ViewColors& colors, const QString& sceneFilePath)
{
    clear();
    std::vector<const MetaBody*> bodies;
    for (const BuiltBody& built : world.build().bodies())
        bodies.push_back(built.source);
    {
        SceneGeometry local;
        std::vector<BodyVertexRange> ranges;
        SceneGeometry::buildBodiesLocal(local, bodies, colors, ShapeTessellator::kCircleSegments, &ranges);
        index(local, ranges, m_full);
        SceneGeometry::buildBodiesLocal(local, bodies, colors, ShapeTessellator::kCoarseCircleSegments, &ranges);
        index(local, ranges, m_coarse);
    }
    // How far each body's drawing reaches from its origin, for culling.
    m_reach.assign(m_full.ranges.size(), 0.f);
    for (size_t i = 0; i < m_full.ranges.size(); ++i) {
        const BodyRange& range = m_full.ranges[i];
        float reach = 0;
        for (size_t k = 0; k < range.vertexCount; ++k) {
            // Markers and rounded outlines add pixels; those are allowed for when culling.
            const GeomVertex& v = m_full.vertices[range.firstVertex + k];
            const float d = std::hypot(v.x, v.y);
            if (std::isfinite(d))
                reach = std::max(reach, d);
        }
        m_reach[i] = reach;
    }
    std::vector<float> sizes;
    const size_t step = std::max<size_t>(1, m_reach.size() / 1000);
    for (size_t i = 0; i < m_reach.size(); i += step)
        if (m_reach[i] > 0)
            sizes.push_back(2 * m_reach[i]);
    if (!sizes.empty()) {
        std::nth_element(sizes.begin(), sizes.begin() + long(sizes.size() / 2), sizes.end());
        m_typicalSize = sizes[sizes.size() / 2];
    }
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
                           SceneGeometry& frame, const ViewCamera* camera) const
{
    frame.clear();
    frame.lo = {INFINITY, INFINITY};
    frame.hi = {-INFINITY, -INFINITY};
    const auto grow = [&frame](Vec2 p) {
        if (!finite(p))
            return;
        frame.lo = {std::min(frame.lo.x, p.x), std::min(frame.lo.y, p.y)};
        frame.hi = {std::max(frame.hi.x, p.x), std::max(frame.hi.y, p.y)};
    };
    const size_t bodies = std::min(m_full.ranges.size(), world.bodyCount());

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
        // Far out, the coarse drawing looks the same and draws far fewer triangles.
        const double worldPerPixel = camera ? std::max(camera->worldPerPixel(), 1e-12) : 0;
        const bool coarse = camera && m_typicalSize > 0 && m_typicalSize / worldPerPixel < SceneGeometry::kCoarseBelowPixels;
        const Detail& detail = coarse ? m_coarse : m_full;
        // The view's box with a margin for what is drawn in pixels.
        Vec2 viewLo{-INFINITY, -INFINITY}, viewHi{INFINITY, INFINITY};
        if (camera) {
            const float halfHeight = camera->height / 2 + float(8 * worldPerPixel);
            const float halfWidth = float(camera->pixelSize.width() * worldPerPixel / 2 + 8 * worldPerPixel);
            viewLo = {camera->center.x - halfWidth, camera->center.y - halfHeight};
            viewHi = {camera->center.x + halfWidth, camera->center.y + halfHeight};
        }
        // Count first, then write in place: no growing vectors in the frame loop.
        std::vector<unsigned char> inSight(bodies, 0);
        size_t vertexCount = 0, triangleCount = 0, lineCount = 0;
        for (size_t i = 0; i < bodies; ++i) {
            const b2Body* body = world.body(i);
            if (!body)
                continue;
            const b2Vec2 p = body->GetPosition();
            const float r = m_reach[i];
            if (!(p.x + r >= viewLo.x && p.x - r <= viewHi.x && p.y + r >= viewLo.y && p.y - r <= viewHi.y))
                continue;
            inSight[i] = 1;
            vertexCount += detail.ranges[i].vertexCount;
            triangleCount += detail.ranges[i].triangleCount;
            lineCount += detail.ranges[i].lineCount;
        }
        frame.sharedVertices.resize(vertexCount);
        frame.sharedTriangles.resize(triangleCount);
        frame.sharedLines.resize(lineCount);
        GeomVertex* vertex = frame.sharedVertices.data();
        std::uint32_t* triangle = frame.sharedTriangles.data();
        std::uint32_t* line = frame.sharedLines.data();
        const auto copyIndices = [](const std::uint32_t* from, size_t count, std::uint32_t shift, std::uint32_t* to) {
            for (size_t k = 0; k < count; ++k)
                to[k] = from[k] + shift;
        };
        for (size_t i = 0; i < bodies; ++i) {
            const b2Body* body = world.body(i);
            if (!body)
                continue;
            const b2Transform& t = body->GetTransform();
            grow({t.p.x, t.p.y});
            if (!inSight[i])
                continue;
            const BodyRange& range = detail.ranges[i];
            const GeomVertex* from = detail.vertices.data() + range.firstVertex;
            for (size_t k = 0; k < range.vertexCount; ++k) {
                GeomVertex v = from[k];
                const float x = v.x, y = v.y;
                v.x = t.p.x + t.q.c * x - t.q.s * y;
                v.y = t.p.y + t.q.s * x + t.q.c * y;
                vertex[k] = v;
            }
            // Shifted from the body's place in the detail to its place in the frame.
            const std::uint32_t shift =
                std::uint32_t(vertex - frame.sharedVertices.data()) - range.firstVertex;
            copyIndices(detail.triangles.data() + range.firstTriangle, range.triangleCount, shift, triangle);
            copyIndices(detail.lines.data() + range.firstLine, range.lineCount, shift, line);
            vertex += range.vertexCount;
            triangle += range.triangleCount;
            line += range.lineCount;
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
