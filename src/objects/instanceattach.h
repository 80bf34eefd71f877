#pragma once

#include "engine/objectinstancehost.h"

#include <QString>

class EditorDocument;
class MetaObject;
class ObjectManager;

/// Deepest nesting of object instances that is followed; deeper instances are
/// left without a document (attaching) or skipped (expansion) with a warning.
constexpr int kMaxObjectNesting = 64;

/// The file of an instance as an absolute path: a relative file is taken
/// relative to the directory of the document that contains the instance
/// (`containingDocumentPath`, the document's own file path). Empty when the
/// instance names no file.
QString instanceFilePath(const MetaObject& instance, const QString& containingDocumentPath);

/// Gives every instance of a scene its object document from the cache, and
/// recursively the instances inside those documents (their parent set to the
/// instance that placed them). Instances whose file is already on the way
/// from the scene down (the scene's own file included) are loops: they are
/// left without a document and a warning is logged.
void attachSceneObjects(EditorDocument& scene, ObjectManager& cache);

/// (Re)attaches one instance of `scene` after its file changed: the old
/// document is released and the new one attached as above. False when the
/// instance ends without a document (no file, a loop, a load failure).
bool attachInstance(MetaObject& instance, const EditorDocument& scene, ObjectManager& cache);

/// Gives an instance another file and attaches it. A file that cannot be
/// loaded, or that would make a loop, is refused (with the loader's
/// message): the instance keeps its file and document. An empty file
/// detaches it. Returns whether the change was made.
bool changeInstanceFile(MetaObject& instance, const QString& file, const EditorDocument& scene, ObjectManager& cache);

/// Releases an instance's document reference (if any) and clears it.
void detachInstance(MetaObject& instance, ObjectManager& cache);

/// Detaches every instance of a document (the scene's before it closes, an
/// object document's before the cache deletes it).
void detachDocumentInstances(EditorDocument& document, ObjectManager& cache);

/// Keeps a scene's instances attached while it lives: attaches them on
/// construction, serves as the document's object instance host (so that
/// scripts adding, deleting or re-filing instances attach them at once) and
/// releases them on destruction.
class SceneObjectsAttachment : public ObjectInstanceHost
{
public:
    /// Attaches the scene's instances through `cache`.
    explicit SceneObjectsAttachment(EditorDocument& scene, ObjectManager& cache);
    /// Releases every instance the scene holds at that time.
    ~SceneObjectsAttachment() override;

    /// attachInstance for an instance of the scene.
    bool attach(MetaObject& instance) override;
    /// detachInstance.
    void detach(MetaObject& instance) override;
    /// changeInstanceFile for an instance of the scene.
    bool changeFile(MetaObject& instance, const QString& file) override;
    SceneObjectsAttachment(const SceneObjectsAttachment&) = delete;
    SceneObjectsAttachment& operator=(const SceneObjectsAttachment&) = delete;

private:
    EditorDocument& m_scene;
    ObjectManager& m_cache;
};
