#include "sampling/pathfixture.h"

#include "geometry/signedarea.h"
#include "model/metabody.h"
#include "model/metasampler.h"
#include "model/metashape.h"
#include "sampling/samplerframe.h"

#include <algorithm>
#include <cmath>

PathShape pathToShape(const MetaPath& path, const SamplerFrame& frame, const MetaBody* body)
{
    PathShape shape;
    shape.type = path.type == ShapeType::Unknown ? ShapeType::Polygon : path.type;
    shape.radius = std::isfinite(path.radius) ? std::max(path.radius, 0.0f) : 0.0f;
    const size_t needed = shape.type == ShapeType::Polygon || shape.type == ShapeType::Loop ? 3 : shape.type == ShapeType::Line ? 2 : 1;
    if (path.controlPoints.size() < needed) {
        shape.error = QStringLiteral("a %1 needs at least %2 points; the path has %3")
                          .arg(MetaShape::typeWord(shape.type))
                          .arg(needed)
                          .arg(path.controlPoints.size());
        return shape;
    }
    for (const Vec2& c : path.controlPoints)
        shape.vertices.push_back(worldToBody(body, frame.toWorld(c)));

    if (shape.type == ShapeType::Polygon && signedArea(shape.vertices) < 0)
        std::reverse(shape.vertices.begin(), shape.vertices.end());
    if (shape.type == ShapeType::Circle) {
        Vec2 centre;
        for (const Vec2& v : shape.vertices)
            centre = centre + v;
        centre = centre * (1.0f / float(shape.vertices.size()));
        if (shape.radius == 0) {
            double sum = 0;
            for (const Vec2& v : shape.vertices)
                sum += double((v - centre).length());
            shape.radius = float(sum / double(shape.vertices.size()));
        }
        shape.vertices = {centre};
    }
    return shape;
}
