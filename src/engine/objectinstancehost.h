#pragma once

#include <QString>

class MetaObject;

/// Keeps the object instances of a scene attached to their object files.
/// The object layer implements it for each scene it attaches (see
/// SceneObjectsAttachment) and registers it with the scene's document; the
/// script API calls it when an instance is added, deleted or given another
/// file, so that a change takes effect at once.
class ObjectInstanceHost
{
public:
    virtual ~ObjectInstanceHost() = default;

    /// Attaches a newly added (or re-added) instance to its file. False when
    /// it stays without a document (no file, a loop, a load failure; logged).
    virtual bool attach(MetaObject& instance) = 0;
    /// Releases the instance's document before it is deleted.
    virtual void detach(MetaObject& instance) = 0;
    /// Gives the instance another file. A file that cannot be loaded or that
    /// would make a loop is refused with the loader's message and the
    /// instance is left as it was (same file, same document). An empty file
    /// detaches the instance.
    virtual bool changeFile(MetaObject& instance, const QString& file) = 0;
};
