#pragma once

#include "model/metaitem.h"

class MetaBody;

/// What images and samplers share: an item lying over an image file, placed
/// by its centre and angle (in its body's coordinates when it has a body,
/// else in the world's) and drawn with an opacity, a colour tint and an
/// optional mirror flip.
class MetaPlacedItem : public MetaItem
{
public:
    /// The body it is attached to, or null.
    MetaBody* body = nullptr;
    /// The image file as the scene names it (relative to the scene's folder
    /// unless absolute).
    QString file;
    /// Centre of the picture.
    Vec2 center;
    /// Angle in radians.
    float angle = 0;
    /// 0 (transparent) to 1.
    float opacity = 1;
    /// Tint multiplied into the picture's colours.
    Color colorTint;
    /// Mirrors the picture horizontally.
    bool flip = false;

protected:
    /// An item of `kind` (image or sampler).
    explicit MetaPlacedItem(ItemKind kind) : MetaItem(kind) {}
};
