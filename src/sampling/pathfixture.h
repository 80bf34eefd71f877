#pragma once

#include "base/types.h"
#include "model/metashape.h"

#include <QString>

#include <vector>

class MetaBody;
struct MetaPath;
struct SamplerFrame;

/// A path of a sampler as the shape of a fixture on a body: the shape type
/// and radius, and the vertices in the body's coordinates.
struct PathShape
{
    ShapeType type = ShapeType::Circle;
    float radius = 0;
    std::vector<Vec2> vertices;
    /// Why the path cannot become a shape; empty when it can.
    QString error;
};

/// Turns a path (its control points in the sampler's frame `frame`) into a
/// shape on `body` (null: world coordinates). A polygon (also a path of
/// unknown type) needs three points and is made counter-clockwise; a loop
/// needs three points and a line two, both keeping the path's order; a
/// circle is centred on the mean of the points, with the path's radius or,
/// when that is 0, the mean distance of the points from the centre.
PathShape pathToShape(const MetaPath& path, const SamplerFrame& frame, const MetaBody* body);
