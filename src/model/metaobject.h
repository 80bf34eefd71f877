#pragma once

#include "model/metaitem.h"

class EditorDocument;

/// An instance of another scene file placed in this scene.
class MetaObject : public MetaItem
{
public:
    MetaObject() : MetaItem(ItemKind::Object) {}

    QString file;   ///< path of the object file, relative to the referring scene
    Vec2 position;  ///< where the object's origin lands in the referring scene
    float angle = 0;    ///< rotation, radians
    float scale = 1;    ///< uniform scale
    bool flip = false;  ///< mirror about the object's y axis

    // Runtime state, never written to files. The object layer keeps both up to
    // date; the model only carries them (it never dereferences the document).

    /// The cached document of `file`, or null. While set, the instance holds
    /// one reference on it in the object cache.
    EditorDocument* objectDocument = nullptr;
    /// For an instance inside an object document: the instance that placed
    /// that document (set when the document is attached), else null.
    MetaObject* parentInstance = nullptr;
};
