#pragma once

#include "model/metaplaceditem.h"
#include "model/metashape.h"

#include <vector>

/// An editable curve of a sampler.
struct MetaPath
{
    ShapeType type = ShapeType::Circle; ///< shape type, Unknown when the file names none of the known ones
    float radius = 0;
    int maxPoints = 0;
    int minAngle = 0;
    std::vector<Vec2> controlPoints;

    friend bool operator==(const MetaPath&, const MetaPath&) = default;
};

/// A sampler: turns an image's pixels into outlines.
class MetaSampler : public MetaPlacedItem
{
public:
    MetaSampler() : MetaPlacedItem(ItemKind::Sampler) {}

    int outputWidth = 0;
    int outputHeight = 0;
    float height = 1;
    float alphaEdgeThreshold = 0.5f;
    bool autoUpdate = false;
    bool useColor = false;
    std::vector<MetaPath> paths;
};
