#pragma once

#include "model/metaitem.h"

class MetaBody;

/// An image placed in the scene, optionally attached to a body.
class MetaImage : public MetaItem
{
public:
    MetaImage() : MetaItem(ItemKind::Image) {}

    MetaBody* body = nullptr;
    QString file;
    Vec2 center;
    float angle = 0;
    float scale = 1;
    float aspectScale = 1;
    float opacity = 1;
    Color colorTint;
    bool flip = false;
    int filter = 1;
    float renderOrder = 0;

    /// Size of the image file in pixels, known once the file has been read (0 before).
    int pixelWidth = 0;
    int pixelHeight = 0;
};
