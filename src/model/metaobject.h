#pragma once

#include "model/metaitem.h"

/// An instance of another scene file placed in this scene.
class MetaObject : public MetaItem
{
public:
    MetaObject() : MetaItem(ItemKind::Object) {}

    QString file;   ///< path of the object file, relative to the referring scene
    Vec2 position;
    float angle = 0;
    float scale = 1;
    bool flip = false;
};
