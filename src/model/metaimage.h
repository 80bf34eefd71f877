#pragma once

#include "model/metaplaceditem.h"

/// An image placed in the scene, optionally attached to a body.
class MetaImage : public MetaPlacedItem
{
public:
    MetaImage() : MetaPlacedItem(ItemKind::Image) {}

    float scale = 1;
    float aspectScale = 1;
    int filter = 1;
    float renderOrder = 0;

    /// Size of the image file in pixels, known once the file has been read (0 before).
    int pixelWidth = 0;
    int pixelHeight = 0;
};
