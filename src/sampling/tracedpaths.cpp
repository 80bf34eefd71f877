#include "sampling/tracedpaths.h"

#include "model/metashape.h"
#include "sampling/pathsimplify.h"

#include <algorithm>

std::vector<MetaPath> pathsFromOutlines(const std::vector<SamplerOutline>& outlines, int maxPoints, int minAngle)
{
    std::vector<MetaPath> paths;
    paths.reserve(outlines.size());
    for (const SamplerOutline& outline : outlines) {
        MetaPath path;
        path.type = outline.hole ? ShapeType::Loop : ShapeType::Polygon;
        path.maxPoints = std::max(maxPoints, 0);
        path.minAngle = std::clamp(minAngle, 0, 180);
        path.controlPoints = simplifyPath(outline.points, true, path.maxPoints, float(path.minAngle));
        if (path.controlPoints.size() >= 3)
            paths.push_back(std::move(path));
    }
    return paths;
}
