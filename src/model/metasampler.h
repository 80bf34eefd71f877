#pragma once

#include "model/metaitem.h"

#include <vector>

class MetaBody;

/// An editable curve of a sampler.
struct MetaPath
{
    int type = 0;   ///< shape type, or -1 when unknown
    float radius = 0;
    int maxPoints = 0;
    int minAngle = 0;
    std::vector<Vec2> controlPoints;

    friend bool operator==(const MetaPath&, const MetaPath&) = default;
};

/// A sampler: turns an image's pixels into outlines.
class MetaSampler : public MetaItem
{
public:
    MetaSampler() : MetaItem(ItemKind::Sampler) {}

    MetaBody* body = nullptr;
    QString file;
    Vec2 center;
    int outputWidth = 0;
    int outputHeight = 0;
    float angle = 0;
    float height = 1;
    float opacity = 1;
    float alphaEdgeThreshold = 0.5f;
    Color colorTint;
    bool flip = false;
    bool autoUpdate = false;
    bool useColor = false;
    std::vector<MetaPath> paths;
};
