#include "views/scenegeometry.h"

#include "document/editordocument.h"
#include "document/imagedata.h"
#include "editing/selection.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/placement.h"
#include "sampling/sampleranalysis.h"
#include "sampling/samplerframe.h"
#include "views/shapegeometry.h"
#include "views/viewcolors.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{
// Object instances nest; deeper levels than this are not drawn.
constexpr int kMaxObjectDepth = 8;

bool finite(Vec2 p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

QColor withAlpha(QColor colour, int alpha)
{
    colour.setAlpha(alpha);
    return colour;
}

// The halo around the outlines of selected items.
QColor haloOf(const ViewColors& colors)
{
    return withAlpha(colors.selection, 150);
}

QColor dimmed(const QColor& colour)
{
    return QColor((colour.red() + 2 * 128) / 3, (colour.green() + 2 * 128) / 3, (colour.blue() + 2 * 128) / 3,
                  colour.alpha() / 2);
}

// A body's world box: its origin and its fixtures' vertices (with radii).
bool bodyBox(const MetaBody& body, Vec2* lo, Vec2* hi, float* typicalSize)
{
    *lo = body.position;
    *hi = body.position;
    const BodyFrame frame(&body);
    for (const auto& fixture : body.fixtures()) {
        float radius = 0;
        for (const MetaShape& shape : fixture->shapes())
            radius = std::max(radius, std::isfinite(shape.radius()) ? std::fabs(shape.radius()) : 0.f);
        Vec2 flo{INFINITY, INFINITY}, fhi{-INFINITY, -INFINITY};
        for (const Vec2& v : fixture->vertices()) {
            const Vec2 p = frame.toWorld(v);
            flo = {std::min(flo.x, p.x - radius), std::min(flo.y, p.y - radius)};
            fhi = {std::max(fhi.x, p.x + radius), std::max(fhi.y, p.y + radius)};
        }
        if (!finite(flo) || !finite(fhi))
            continue;
        *typicalSize = std::max(fhi.x - flo.x, fhi.y - flo.y);
        *lo = {std::min(lo->x, flo.x), std::min(lo->y, flo.y)};
        *hi = {std::max(hi->x, fhi.x), std::max(hi->y, fhi.y)};
    }
    return finite(*lo) && finite(*hi);
}

class Builder
{
public:
    Builder(SceneGeometry& target, const ViewColors& colors, int circleSegments)
        : m_target(target), m_shapes(target, circleSegments), m_colors(colors),
          m_coarse(circleSegments < ShapeTessellator::kCircleSegments)
    {
        m_shapes.setCoarse(m_coarse);
    }

    // Draws one part of the scene's own items as one chunk.
    void part(const MetaWorld& world, const Selection& selection, const QString& filePath, ScenePart part,
              const std::vector<std::uint32_t>* bodies, size_t index)
    {
        const Placement identity;
        chunkStart();
        switch (part) {
        case ScenePart::Images: images(world, &selection, identity, filePath); break;
        case ScenePart::Region:
            if (bodies) {
                for (std::uint32_t i : *bodies)
                    body(*world.bodies()[i], &selection, identity);
            }
            break;
        case ScenePart::Joints:
            for (const auto& joint : world.joints())
                this->joint(*joint, &selection, identity);
            break;
        case ScenePart::Samplers:
            for (const auto& sampler : world.samplers())
                this->sampler(*sampler, selection, filePath);
            break;
        case ScenePart::Object:
            if (index < world.objects().size())
                object(*world.objects()[index], &selection, identity, 0);
            break;
        }
        chunkEnd();
    }

    // Draws a world's items placed by `placement`; `selection` is null for object contents (dimmed).
    void world(const MetaWorld& world, const Selection* selection, const Placement& placement,
               const QString& filePath, int depth)
    {
        images(world, selection, placement, filePath);
        for (const auto& body : world.bodies())
            this->body(*body, selection, placement);
        for (const auto& joint : world.joints())
            this->joint(*joint, selection, placement);
        for (const auto& object : world.objects())
            this->object(*object, selection, placement, depth);
    }

private:
    // Chunks record the vertices added between start and end and their box.
    void chunkStart()
    {
        m_chunk = GeomChunk{};
        m_chunk.firstTriangle = int(m_target.triangles.size());
        m_chunk.firstLine = int(m_target.lines.size());
    }
    void chunkEnd()
    {
        m_chunk.triangleCount = int(m_target.triangles.size()) - m_chunk.firstTriangle;
        m_chunk.lineCount = int(m_target.lines.size()) - m_chunk.firstLine;
        if (m_chunk.triangleCount == 0 && m_chunk.lineCount == 0)
            return;
        if (m_chunk.triangleCount + m_chunk.lineCount <= SceneGeometry::kLargestChunk) {
            pushChunk(m_chunk);
            return;
        }
        // A huge part (an outline of many thousand corners) goes in pieces,
        // triangles first, so that a view draws the pieces it can see.
        const int piece = SceneGeometry::kLargestChunk;
        for (int first = 0; first < m_chunk.triangleCount; first += piece) {
            GeomChunk part;
            part.firstTriangle = m_chunk.firstTriangle + first;
            part.triangleCount = std::min(piece, m_chunk.triangleCount - first);
            part.firstLine = m_chunk.firstLine;
            pushChunk(part);
        }
        for (int first = 0; first < m_chunk.lineCount; first += piece) {
            GeomChunk part;
            part.firstTriangle = m_chunk.firstTriangle + m_chunk.triangleCount;
            part.firstLine = m_chunk.firstLine + first;
            part.lineCount = std::min(piece, m_chunk.lineCount - first);
            pushChunk(part);
        }
    }

    // Adds a chunk with the box of its vertices.
    void pushChunk(GeomChunk chunk)
    {
        Vec2 lo{INFINITY, INFINITY}, hi{-INFINITY, -INFINITY};
        const auto grow = [&](const GeomVertex& v) {
            lo = {std::min(lo.x, v.x), std::min(lo.y, v.y)};
            hi = {std::max(hi.x, v.x), std::max(hi.y, v.y)};
        };
        for (int i = 0; i < chunk.triangleCount; ++i)
            grow(m_target.triangles[size_t(chunk.firstTriangle + i)]);
        for (int i = 0; i < chunk.lineCount; ++i)
            grow(m_target.lines[size_t(chunk.firstLine + i)]);
        chunk.lo = lo;
        chunk.hi = hi;
        m_target.chunks.push_back(chunk);
    }

    Vec2 place(const Placement& placement, Vec2 p) const
    {
        return placement.isIdentity() ? p : placement.applyToPoint(p);
    }

    void body(const MetaBody& body, const Selection* selection, const Placement& placement)
    {
        const bool bodySelected = selection && selection->contains(ItemKind::Body, body.id());
        QColor outline = m_colors.bodyColor(body.type);
        if (!selection)
            outline = dimmed(outline);
        // In body coordinates (the player places bodies each frame) the body sits at its origin, unturned.
        const float angle = m_bodyLocal ? 0.f : placement.applyToAngle(body.angle);
        const BodyFrame frame(&body);
        float scale = std::abs(placement.scale);
        for (const auto& fixture : body.fixtures()) {
            const bool selected =
                bodySelected || (selection && selection->contains(ItemKind::Fixture, fixture->id()));
            const QColor line = selected ? m_colors.selection : outline;
            // Without outlines (coarse drawing) fills are more opaque to stay visible.
            const int alpha = m_coarse ? std::min(255, m_colors.fillAlpha + 90) : m_colors.fillAlpha;
            const QColor fill = withAlpha(selected ? m_colors.selection : outline,
                                          selected ? std::min(255, alpha + 60) : (selection ? alpha : alpha / 2));
            const HeldFill* held = nullptr;
            if (m_heldFills && selection && !m_coarse) {
                for (const HeldFill& h : *m_heldFills)
                    held = h.fixture == fixture->id() ? &h : held;
            }
            // A selected body stands out by a halo; selected fixtures by
            // their vertex markers (which a halo would cover).
            m_shapes.setHalo(bodySelected ? haloOf(m_colors) : QColor());
            std::vector<Vec2> points;
            points.reserve(fixture->vertices().size());
            bool usable = true;
            for (const Vec2& v : fixture->vertices()) {
                const Vec2 p = m_bodyLocal ? v : place(placement, frame.toWorld(v));
                usable = usable && finite(p);
                points.push_back(p);
            }
            if (!usable)
                continue;
            for (const MetaShape& shape : fixture->shapes()) {
                const float radius = shape.radius() * scale;
                switch (shape.type()) {
                case ShapeType::Circle: {
                    const Vec2 centre = points.empty() ? (m_bodyLocal ? Vec2{} : place(placement, body.position))
                                                       : points.front();
                    if (finite(centre) && std::isfinite(radius))
                        m_shapes.circle(centre, radius, angle, fill, line);
                    break;
                }
                case ShapeType::Polygon:
                    if (held) {
                        // The fill the drag started from, under the outline as it is now.
                        std::vector<Vec2> ring;
                        ring.reserve(held->vertices.size());
                        for (const Vec2& v : held->vertices)
                            ring.push_back(m_bodyLocal ? v : place(placement, frame.toWorld(v)));
                        m_shapes.fillRing(ring, fill);
                        m_shapes.polygon(points, shape.isRounded() ? radius : 0, QColor(0, 0, 0, 0), line);
                        break;
                    }
                    m_shapes.polygon(points, shape.isRounded() ? radius : 0, fill, line);
                    break;
                case ShapeType::Line: m_shapes.chain(points, false, shape.isRounded() ? radius : 0, fill, line); break;
                case ShapeType::Loop: m_shapes.chain(points, true, shape.isRounded() ? radius : 0, fill, line); break;
                default: m_shapes.chain(points, true, 0, fill, line); break;
                }
            }
        }
        m_shapes.setHalo(QColor());
        if (m_bodyLocal)
            return;
        const Vec2 origin = place(placement, body.position);
        if (finite(origin))
            m_shapes.cross(origin, bodySelected ? 6 : 3, bodySelected ? m_colors.selection : outline);
        if (!selection)
            return;
        // The vertices of selected fixtures, the selected ones larger, so
        // that vertex editing sees what it picks.
        for (const auto& fixture : body.fixtures()) {
            if (!selection->contains(ItemKind::Fixture, fixture->id()))
                continue;
            const auto& vertices = fixture->vertices();
            for (size_t i = 0; i < vertices.size(); ++i) {
                const Vec2 p = place(placement, frame.toWorld(vertices[i]));
                if (!finite(p))
                    continue;
                const bool picked = selection->containsVertex(fixture->id(), int(i));
                m_shapes.marker(p, picked ? 8 : 5, picked ? m_colors.selection : m_colors.vertex);
            }
        }
        label(origin, body, bodySelected);
        for (const auto& fixture : body.fixtures()) {
            if (fixture->vertices().empty())
                continue;
            // A fixture is named at the middle of its vertices.
            Vec2 sum;
            for (const Vec2& v : fixture->vertices())
                sum = {sum.x + v.x, sum.y + v.y};
            const float n = float(fixture->vertices().size());
            label(frame.toWorld({sum.x / n, sum.y / n}), *fixture,
                  selection->contains(ItemKind::Fixture, fixture->id()));
        }
    }

    void joint(const MetaJoint& joint, const Selection* selection, const Placement& placement)
    {
        if (!joint.bodyA || !joint.bodyB)
            return;
        const bool selected = selection && selection->contains(ItemKind::Joint, joint.id());
        QColor colour = selected ? m_colors.jointSelected : m_colors.joint;
        if (!selection)
            colour = dimmed(colour);
        const Vec2 a = place(placement, bodyToWorld(joint.bodyA, joint.anchorA));
        const Vec2 b = place(placement, bodyToWorld(joint.bodyB, joint.anchorB));
        if (!finite(a) || !finite(b))
            return;
        const Vec2 originA = place(placement, joint.bodyA->position);
        const Vec2 originB = place(placement, joint.bodyB->position);
        if (finite(originA) && finite(originB)) {
            m_shapes.segment(originA, a, withAlpha(colour, colour.alpha() / 2));
            m_shapes.segment(originB, b, withAlpha(colour, colour.alpha() / 2));
        }
        m_shapes.setHalo(selected ? haloOf(m_colors) : QColor());
        m_shapes.segment(a, b, colour);
        m_shapes.setHalo(QColor());
        m_shapes.marker(a, selected ? 9 : 7, colour);
        m_shapes.marker(b, selected ? 9 : 7, colour);
        if (selection)
            label({(a.x + b.x) / 2, (a.y + b.y) / 2}, joint, selected);
    }

    void images(const MetaWorld& world, const Selection* selection, const Placement& placement,
                const QString& filePath)
    {
        std::vector<const MetaImage*> ordered;
        for (const auto& image : world.images())
            ordered.push_back(image.get());
        std::stable_sort(ordered.begin(), ordered.end(),
                         [](const MetaImage* a, const MetaImage* b) { return a->renderOrder < b->renderOrder; });
        for (const MetaImage* image : ordered) {
            const ImageQuad quad = computeImageQuad(*image);
            ImageDraw draw;
            draw.path = resolveImagePath(*image, filePath);
            bool usable = true;
            for (size_t i = 0; i < 4; ++i) {
                const Vec2 local = quad.corners[i];
                const Vec2 p = place(placement, bodyToWorld(image->body, local));
                usable = usable && finite(p);
                draw.corners[i] = p;
            }
            if (!usable)
                continue;
            std::copy(quad.texCoordPointer.begin(), quad.texCoordPointer.end(), draw.texCoords.begin());
            draw.opacity = std::clamp(image->opacity, 0.f, 1.f) * (selection ? 1.f : 0.5f);
            draw.tint = QColor(std::clamp(image->colorTint.r, 0, 255), std::clamp(image->colorTint.g, 0, 255),
                               std::clamp(image->colorTint.b, 0, 255), std::clamp(image->colorTint.a, 0, 255));
            m_target.images.push_back(draw);
            const bool selected = selection && selection->contains(ItemKind::Image, image->id());
            const QColor outline = selected ? m_colors.selection : m_colors.imageOutline;
            if (selection) {
                const Vec2 mid{(draw.corners[0].x + draw.corners[2].x) / 2, (draw.corners[0].y + draw.corners[2].y) / 2};
                label(mid, *image, selected);
            }
            m_shapes.setHalo(selected ? haloOf(m_colors) : QColor());
            for (size_t i = 0; i < 4; ++i) {
                m_shapes.segment(draw.corners[i], draw.corners[(i + 1) % 4], outline);
                m_shapes.include(draw.corners[i]);
            }
            m_shapes.setHalo(QColor());
        }
    }

    // A sampler: its picture, the outline its alpha edge gives, and its paths
    // with their control points (marked when the sampler is selected).
    void sampler(const MetaSampler& sampler, const Selection& selection, const QString& filePath)
    {
        const std::shared_ptr<const SamplerAnalysis> analysis = analyseSampler(sampler, filePath);
        const SamplerFrame frame = SamplerFrame::of(sampler);
        const bool selected = selection.contains(ItemKind::Sampler, sampler.id());
        const float h = sampler.height;
        const QSize size = analysis ? analysis->fileSize : QSize();
        const float w = size.height() > 0 ? h * float(size.width()) / float(size.height()) : h;
        ImageDraw draw;
        draw.path = analysis ? analysis->path : QString();
        const Vec2 local[4] = {{-w / 2, -h / 2}, {w / 2, -h / 2}, {w / 2, h / 2}, {-w / 2, h / 2}};
        bool usable = true;
        for (size_t i = 0; i < 4; ++i) {
            draw.corners[i] = frame.toWorld(local[i]);
            usable = usable && finite(draw.corners[i]);
        }
        if (!usable)
            return;
        // Texture v = 0 is the picture's top row; the frame mirrors x when flipped.
        draw.texCoords = {0, 1, 1, 1, 1, 0, 0, 0};
        draw.opacity = std::clamp(sampler.opacity, 0.f, 1.f);
        draw.tint = QColor(std::clamp(sampler.colorTint.r, 0, 255), std::clamp(sampler.colorTint.g, 0, 255),
                           std::clamp(sampler.colorTint.b, 0, 255), std::clamp(sampler.colorTint.a, 0, 255));
        if (!draw.path.isEmpty() && analysis && analysis->error.isEmpty())
            m_target.images.push_back(draw);
        const QColor edge = selected ? m_colors.selection : m_colors.imageOutline;
        m_shapes.setHalo(selected ? haloOf(m_colors) : QColor());
        for (size_t i = 0; i < 4; ++i) {
            m_shapes.segment(draw.corners[i], draw.corners[(i + 1) % 4], edge);
            m_shapes.include(draw.corners[i]);
        }
        m_shapes.setHalo(QColor());
        label({(draw.corners[0].x + draw.corners[2].x) / 2, (draw.corners[0].y + draw.corners[2].y) / 2}, sampler,
              selected);
        if (analysis) {
            for (const SamplerOutline& outline : analysis->toFrame(analysis->alphaRings, h)) {
                const size_t n = outline.points.size();
                for (size_t i = 0; i < n; ++i)
                    m_shapes.segment(frame.toWorld(outline.points[i]), frame.toWorld(outline.points[(i + 1) % n]),
                                     m_colors.samplerOutline);
            }
        }
        for (const MetaPath& path : sampler.paths) {
            const size_t n = path.controlPoints.size();
            const bool closed = path.type != ShapeType::Line;
            for (size_t i = 0; i + (closed ? 0 : 1) < n; ++i)
                m_shapes.segment(frame.toWorld(path.controlPoints[i]), frame.toWorld(path.controlPoints[(i + 1) % n]),
                                 m_colors.path);
            if (selected) {
                for (const Vec2& p : path.controlPoints)
                    m_shapes.marker(frame.toWorld(p), 5, m_colors.path);
            }
        }
    }

    void object(const MetaObject& object, const Selection* selection, const Placement& placement, int depth)
    {
        const Vec2 at = place(placement, object.position);
        if (!finite(at))
            return;
        const bool selected = selection && selection->contains(ItemKind::Object, object.id());
        // A selected instance's mark grows as well as turning white.
        m_shapes.cross(at, selected ? 12 : 8, selected ? m_colors.selection : m_colors.object);
        m_shapes.marker(at, selected ? 7 : 4, selected ? m_colors.selection : m_colors.object);
        if (selection)
            label(at, object, selected);
        if (!object.objectDocument || depth >= kMaxObjectDepth)
            return;
        Placement own;
        own.position = object.position;
        own.angle = object.angle;
        own.scale = object.scale;
        own.flip = object.flip;
        const EditorDocument& inner = *object.objectDocument;
        world(inner.world(), nullptr, placement.then(own), inner.filePath(), depth + 1);
    }

    void label(Vec2 at, const MetaItem& item, bool selected)
    {
        if (finite(at))
            m_target.labels.push_back({at, item.name(), item.kind(), item.id(), selected});
    }

    SceneGeometry& m_target;
    ShapeTessellator m_shapes;
    const ViewColors& m_colors;
    GeomChunk m_chunk;
    bool m_coarse;
    bool m_bodyLocal = false;
    const std::vector<HeldFill>* m_heldFills = nullptr;

public:
    // Fixtures drawn with a held fill (the full drawing only: the coarse
    // one has no outlines to show where they are now).
    void setHeldFills(const std::vector<HeldFill>* fills) { m_heldFills = fills; }

    // The fixtures of each body in its own coordinates, with the vertex
    // ranges each body's drawing takes.
    void bodiesLocal(const std::vector<const MetaBody*>& bodies, std::vector<BodyVertexRange>* ranges)
    {
        m_bodyLocal = true;
        const Selection none;
        for (const MetaBody* body : bodies) {
            BodyVertexRange range;
            range.firstTriangle = m_target.triangles.size();
            range.firstLine = m_target.lines.size();
            if (body)
                this->body(*body, &none, Placement{});
            range.triangleCount = m_target.triangles.size() - range.firstTriangle;
            range.lineCount = m_target.lines.size() - range.firstLine;
            ranges->push_back(range);
        }
        m_bodyLocal = false;
    }
};
} // namespace

void SceneGeometry::buildBodiesLocal(SceneGeometry& geometry, const std::vector<const MetaBody*>& bodies,
                                     const ViewColors& colors, int circleSegments,
                                     std::vector<BodyVertexRange>* ranges)
{
    geometry = SceneGeometry{};
    geometry.circleSegments = circleSegments;
    ranges->clear();
    Builder(geometry, colors, circleSegments).bodiesLocal(bodies, ranges);
}

float SceneGeometry::measureTypicalFixtureSize(const MetaWorld& world)
{
    const auto& bodies = world.bodies();
    const size_t step = std::max<size_t>(1, bodies.size() / 1000);
    std::vector<float> sizes;
    for (size_t i = 0; i < bodies.size(); i += step) {
        Vec2 lo, hi;
        float size = 0;
        if (bodyBox(*bodies[i], &lo, &hi, &size) && size > 0)
            sizes.push_back(size);
    }
    if (sizes.empty())
        return 0;
    std::nth_element(sizes.begin(), sizes.begin() + long(sizes.size() / 2), sizes.end());
    return sizes[sizes.size() / 2];
}

SceneRegions::Place SceneRegions::placeOf(const MetaBody& body)
{
    Place place;
    Vec2 lo, hi;
    if (bodyBox(body, &lo, &hi, &place.size)) {
        place.placed = true;
        place.centre = {(lo.x + hi.x) / 2, (lo.y + hi.y) / 2};
    }
    return place;
}

void SceneRegions::arrange()
{
    lo = {INFINITY, INFINITY};
    hi = {-INFINITY, -INFINITY};
    for (const Place& place : places) {
        if (!place.placed)
            continue;
        lo = {std::min(lo.x, place.centre.x), std::min(lo.y, place.centre.y)};
        hi = {std::max(hi.x, place.centre.x), std::max(hi.y, place.centre.y)};
    }
    side = std::clamp(int(std::ceil(std::sqrt(double(places.size()) / 150.0))), 1, 64);
    cells.assign(size_t(side) * size_t(side), {});
    const double width = std::max(double(hi.x) - lo.x, 1e-9), height = std::max(double(hi.y) - lo.y, 1e-9);
    for (size_t i = 0; i < places.size(); ++i) {
        if (!places[i].placed)
            continue;
        const Vec2 c = places[i].centre;
        const int cx = std::clamp(int((double(c.x) - lo.x) / width * side), 0, side - 1);
        const int cy = std::clamp(int((double(c.y) - lo.y) / height * side), 0, side - 1);
        cells[size_t(cy) * size_t(side) + size_t(cx)].push_back(std::uint32_t(i));
    }
}

float SceneRegions::typicalSize() const
{
    std::vector<float> sizes;
    for (const Place& place : places) {
        if (place.placed && place.size > 0)
            sizes.push_back(place.size);
    }
    if (sizes.empty())
        return 0;
    std::nth_element(sizes.begin(), sizes.begin() + long(sizes.size() / 2), sizes.end());
    return sizes[sizes.size() / 2];
}

SceneGeometry SceneGeometry::build(const MetaWorld& world, const Selection& selection, const ViewColors& colors,
                                   const QString& sceneFilePath, int circleSegments)
{
    SceneGeometry geometry;
    rebuild(geometry, world, selection, colors, sceneFilePath, circleSegments);
    return geometry;
}

void SceneGeometry::clear()
{
    triangles.clear();
    lines.clear();
    images.clear();
    labels.clear();
    chunks.clear();
    sharedVertices.clear();
    sharedTriangles.clear();
    sharedLines.clear();
    lo = {1, 1};
    hi = {-1, -1};
}

void SceneGeometry::rebuild(SceneGeometry& geometry, const MetaWorld& world, const Selection& selection,
                            const ViewColors& colors, const QString& sceneFilePath, int circleSegments)
{
    geometry.clear();
    geometry.circleSegments = circleSegments;
    geometry.typicalFixtureSize = 0;
    geometry.triangles.reserve(world.fixtureCount() * size_t(circleSegments) * 2);
    geometry.lines.reserve(world.fixtureCount() * size_t(circleSegments));
    geometry.labels.reserve(world.bodies().size() + world.fixtureCount());
    SceneRegions regions;
    regions.places.reserve(world.bodies().size());
    for (const auto& body : world.bodies())
        regions.places.push_back(SceneRegions::placeOf(*body));
    regions.arrange();
    geometry.typicalFixtureSize = regions.typicalSize();
    Builder builder(geometry, colors, circleSegments);
    builder.part(world, selection, sceneFilePath, ScenePart::Images, nullptr, 0);
    for (const std::vector<std::uint32_t>& cell : regions.cells) {
        if (!cell.empty())
            builder.part(world, selection, sceneFilePath, ScenePart::Region, &cell, 0);
    }
    builder.part(world, selection, sceneFilePath, ScenePart::Joints, nullptr, 0);
    builder.part(world, selection, sceneFilePath, ScenePart::Samplers, nullptr, 0);
    for (size_t i = 0; i < world.objects().size(); ++i)
        builder.part(world, selection, sceneFilePath, ScenePart::Object, nullptr, i);
}

void SceneGeometry::drawPart(SceneGeometry& target, const MetaWorld& world, const Selection& selection,
                             const ViewColors& colors, const QString& sceneFilePath, int circleSegments,
                             ScenePart part, const std::vector<std::uint32_t>* bodies, size_t index,
                             const std::vector<HeldFill>* heldFills)
{
    target.circleSegments = circleSegments;
    Builder builder(target, colors, circleSegments);
    builder.setHeldFills(heldFills);
    builder.part(world, selection, sceneFilePath, part, bodies, index);
}

namespace
{
// A 64-bit running digest (multiply and fold; not for security, only to
// tell a changed drawing from an unchanged one).
class Digest
{
public:
    void add(std::uint64_t word)
    {
        m_state = (m_state ^ word) * 0x9E3779B97F4A7C15ull;
        m_state ^= m_state >> 29;
    }
    void add(float value)
    {
        std::uint32_t bits;
        std::memcpy(&bits, &value, sizeof(bits));
        add(std::uint64_t(bits));
    }
    void add(Vec2 v)
    {
        std::uint32_t bits[2];
        std::memcpy(bits, &v, sizeof(bits));
        add((std::uint64_t(bits[0]) << 32) | bits[1]);
    }
    void add(const QString& text)
    {
        add(std::uint64_t(text.size()));
        add(std::uint64_t(qHash(text)));
    }
    std::uint64_t value() const { return m_state; }

private:
    std::uint64_t m_state = 0xCBF29CE484222325ull;
};
} // namespace

std::uint64_t SceneGeometry::bodyDigest(const MetaBody& body, std::uint64_t selectionMark)
{
    // Everything Builder::body reads: the body's public fields directly,
    // its name, fixtures, vertices and shapes through its revision.
    Digest digest;
    digest.add(std::uint64_t(body.id()));
    digest.add(std::uint64_t(body.type));
    digest.add(body.position);
    digest.add(body.angle);
    digest.add(body.revision());
    digest.add(selectionMark);
    return digest.value();
}

std::unordered_map<const MetaBody*, std::uint64_t> SceneGeometry::selectionMarks(const MetaWorld& world,
                                                                                 const Selection& selection)
{
    // Each selected thing adds its own well-mixed number to its body's
    // mark, so the mark does not depend on the order of selection.
    const auto mix = [](std::uint64_t x) {
        x += 0x9E3779B97F4A7C15ull;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
        return x ^ (x >> 31);
    };
    std::unordered_map<const MetaBody*, std::uint64_t> marks;
    for (ItemId id : selection.items(ItemKind::Body)) {
        if (const MetaBody* body = world.findBody(id))
            marks[body] += mix(1);
    }
    for (ItemId id : selection.items(ItemKind::Fixture)) {
        const MetaFixture* fixture = world.findFixture(id);
        if (fixture && fixture->body())
            marks[fixture->body()] += mix((std::uint64_t(2) << 32) | id);
    }
    for (const Selection::VertexRef& v : selection.vertices()) {
        const MetaFixture* fixture = world.findFixture(v.fixture);
        if (fixture && fixture->body())
            marks[fixture->body()] += mix(mix(v.fixture) ^ std::uint64_t(std::uint32_t(v.index)));
    }
    return marks;
}
