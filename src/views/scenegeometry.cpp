#include "views/scenegeometry.h"

#include "document/editordocument.h"
#include "document/imagedata.h"
#include "editing/selection.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/placement.h"
#include "views/shapegeometry.h"
#include "views/viewcolors.h"

#include <algorithm>
#include <cmath>

namespace
{
// Object instances nest; deeper levels than this are not drawn.
constexpr int kMaxObjectDepth = 8;

bool finite(Vec2 p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

Vec2 bodyPoint(const MetaBody& body, Vec2 local)
{
    const float c = std::cos(body.angle), s = std::sin(body.angle);
    return {body.position.x + c * local.x - s * local.y, body.position.y + s * local.x + c * local.y};
}

QColor withAlpha(QColor colour, int alpha)
{
    colour.setAlpha(alpha);
    return colour;
}

QColor dimmed(const QColor& colour)
{
    return QColor((colour.red() + 2 * 128) / 3, (colour.green() + 2 * 128) / 3, (colour.blue() + 2 * 128) / 3,
                  colour.alpha() / 2);
}

class Builder
{
public:
    Builder(SceneGeometry& target, const ViewColors& colors) : m_target(target), m_shapes(target), m_colors(colors) {}

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
        const float angle = placement.applyToAngle(body.angle);
        float scale = std::abs(placement.scale);
        for (const auto& fixture : body.fixtures()) {
            const bool selected =
                bodySelected || (selection && selection->contains(ItemKind::Fixture, fixture->id()));
            const QColor line = selected ? m_colors.selection : outline;
            const QColor fill = withAlpha(selected ? m_colors.selection : outline,
                                          selected ? std::min(255, m_colors.fillAlpha + 60)
                                                   : (selection ? m_colors.fillAlpha : m_colors.fillAlpha / 2));
            std::vector<Vec2> points;
            points.reserve(fixture->vertices().size());
            bool usable = true;
            for (const Vec2& v : fixture->vertices()) {
                const Vec2 p = place(placement, bodyPoint(body, v));
                usable = usable && finite(p);
                points.push_back(p);
            }
            if (!usable)
                continue;
            for (const MetaShape& shape : fixture->shapes()) {
                const float radius = shape.radius() * scale;
                switch (shape.type()) {
                case SHAPE_CIRCLE: {
                    const Vec2 centre = points.empty() ? place(placement, body.position) : points.front();
                    if (finite(centre) && std::isfinite(radius))
                        m_shapes.circle(centre, radius, angle, fill, line);
                    break;
                }
                case SHAPE_POLYGON: m_shapes.polygon(points, shape.isRounded() ? radius : 0, fill, line); break;
                case SHAPE_LINE: m_shapes.chain(points, false, shape.isRounded() ? radius : 0, fill, line); break;
                case SHAPE_LOOP: m_shapes.chain(points, true, shape.isRounded() ? radius : 0, fill, line); break;
                default: m_shapes.chain(points, true, 0, fill, line); break;
                }
            }
        }
        const Vec2 origin = place(placement, body.position);
        if (finite(origin))
            m_shapes.cross(origin, bodySelected ? 6 : 3, bodySelected ? m_colors.selection : outline);
        if (!selection)
            return;
        label(origin, body, bodySelected);
        for (const auto& fixture : body.fixtures()) {
            if (fixture->vertices().empty())
                continue;
            // A fixture is named at the middle of its vertices.
            Vec2 sum;
            for (const Vec2& v : fixture->vertices())
                sum = {sum.x + v.x, sum.y + v.y};
            const float n = float(fixture->vertices().size());
            label(bodyPoint(body, {sum.x / n, sum.y / n}), *fixture,
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
        const Vec2 a = place(placement, bodyPoint(*joint.bodyA, joint.anchorA));
        const Vec2 b = place(placement, bodyPoint(*joint.bodyB, joint.anchorB));
        if (!finite(a) || !finite(b))
            return;
        const Vec2 originA = place(placement, joint.bodyA->position);
        const Vec2 originB = place(placement, joint.bodyB->position);
        if (finite(originA) && finite(originB)) {
            m_shapes.segment(originA, a, withAlpha(colour, colour.alpha() / 2));
            m_shapes.segment(originB, b, withAlpha(colour, colour.alpha() / 2));
        }
        m_shapes.segment(a, b, colour);
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
                const Vec2 p = place(placement, image->body ? bodyPoint(*image->body, local) : local);
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
            for (size_t i = 0; i < 4; ++i) {
                m_shapes.segment(draw.corners[i], draw.corners[(i + 1) % 4], outline);
                m_shapes.include(draw.corners[i]);
            }
        }
    }

    void object(const MetaObject& object, const Selection* selection, const Placement& placement, int depth)
    {
        const Vec2 at = place(placement, object.position);
        if (!finite(at))
            return;
        const bool selected = selection && selection->contains(ItemKind::Object, object.id());
        m_shapes.cross(at, 8, selected ? m_colors.selection : m_colors.object);
        m_shapes.marker(at, 4, selected ? m_colors.selection : m_colors.object);
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
};
} // namespace

SceneGeometry SceneGeometry::build(const MetaWorld& world, const Selection& selection, const ViewColors& colors,
                                   const QString& sceneFilePath)
{
    SceneGeometry geometry;
    geometry.triangles.reserve(world.fixtureCount() * 24);
    geometry.lines.reserve(world.fixtureCount() * 16);
    Builder(geometry, colors).world(world, &selection, Placement{}, sceneFilePath, 0);
    return geometry;
}
