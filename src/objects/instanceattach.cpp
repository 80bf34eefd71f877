#include "objects/instanceattach.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/objectmanager.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <set>

namespace
{
QString loopWarning(const MetaObject& instance)
{
    return QStringLiteral("Detected loop in object instances, ignoring object file: %1").arg(instance.file);
}

QString cacheKeyOf(const EditorDocument& document)
{
    return document.filePath().isEmpty() ? QString() : ObjectManager::keyFor(document.filePath());
}

// Files of the instance's ancestors (their attached documents), with the
// scene's own file, and the number of ancestors.
QStringList ancestorKeys(const MetaObject& instance, const QString& rootKey, int* depth)
{
    QStringList keys;
    if (!rootKey.isEmpty())
        keys.append(rootKey);
    *depth = 0;
    for (const MetaObject* up = instance.parentInstance; up; up = up->parentInstance) {
        ++*depth;
        if (up->objectDocument)
            keys.append(cacheKeyOf(*up->objectDocument));
        if (*depth > kMaxObjectNesting)
            break;
    }
    return keys;
}

// Documents whose inner instances one attaching pass has already handled.
// A document placed many times (or through many routes) is walked once per
// pass, so wide nestings cannot multiply the work.
using VisitedDocuments = std::set<const EditorDocument*>;

bool attachRecursive(MetaObject& instance, const QString& containingPath, const QString& rootKey,
                     ObjectManager& cache, VisitedDocuments& visited)
{
    const QString path = instanceFilePath(instance, containingPath);
    if (path.isEmpty()) {
        detachInstance(instance, cache);
        return false;
    }
    int depth = 0;
    const QStringList ancestors = ancestorKeys(instance, rootKey, &depth);
    const QString key = ObjectManager::keyFor(path);
    if (ancestors.contains(key)) {
        plaxLog(LOG_WARNING, loopWarning(instance));
        detachInstance(instance, cache);
        return false;
    }
    if (depth >= kMaxObjectNesting) {
        plaxLog(LOG_WARNING, QStringLiteral("Object instances are nested more than %1 levels deep, ignoring object file: %2")
                                 .arg(kMaxObjectNesting)
                                 .arg(instance.file));
        detachInstance(instance, cache);
        return false;
    }

    // An instance keeps the reference it already holds on the same file.
    if (!instance.objectDocument || cacheKeyOf(*instance.objectDocument) != key) {
        detachInstance(instance, cache);
        instance.objectDocument = cache.getObject(path, &instance);
        if (!instance.objectDocument) {
            plaxLog(LOG_WARNING, QStringLiteral("Could not load object file: %1").arg(instance.file));
            return false;
        }
    }

    EditorDocument& document = *instance.objectDocument;
    if (!visited.insert(&document).second)
        return true;
    for (const auto& inner : document.world().objects()) {
        inner->parentInstance = &instance;
        attachRecursive(*inner, document.filePath(), rootKey, cache, visited);
    }
    return true;
}
} // namespace

QString instanceFilePath(const MetaObject& instance, const QString& containingDocumentPath)
{
    if (instance.file.isEmpty())
        return QString();
    if (QFileInfo(instance.file).isAbsolute() || containingDocumentPath.isEmpty())
        return QFileInfo(instance.file).absoluteFilePath();
    return QFileInfo(QFileInfo(containingDocumentPath).absoluteDir(), instance.file).absoluteFilePath();
}

void attachSceneObjects(EditorDocument& scene, ObjectManager& cache)
{
    VisitedDocuments visited;
    for (const auto& instance : scene.world().objects()) {
        instance->parentInstance = nullptr;
        attachRecursive(*instance, scene.filePath(), cacheKeyOf(scene), cache, visited);
    }
}

bool attachInstance(MetaObject& instance, const EditorDocument& scene, ObjectManager& cache)
{
    VisitedDocuments visited;
    instance.parentInstance = nullptr;
    return attachRecursive(instance, scene.filePath(), cacheKeyOf(scene), cache, visited);
}

bool changeInstanceFile(MetaObject& instance, const QString& file, const EditorDocument& scene, ObjectManager& cache)
{
    if (file == instance.file)
        return true;
    const QString oldFile = instance.file;
    // One more reference on the current document keeps it cached while the
    // new file is tried, so a refusal can put it back without reloading.
    EditorDocument* old = instance.objectDocument;
    const int keeper = 0;
    if (old)
        cache.getObject(old->filePath(), &keeper);
    instance.file = file;
    bool changed = file.isEmpty() ? (detachInstance(instance, cache), true) : attachInstance(instance, scene, cache);
    if (!changed) {
        instance.file = oldFile;
        if (old)
            attachInstance(instance, scene, cache);
        else
            detachInstance(instance, cache);
    }
    if (old)
        cache.releaseObject(old, &keeper);
    return changed;
}

void detachInstance(MetaObject& instance, ObjectManager& cache)
{
    EditorDocument* document = instance.objectDocument;
    if (!document)
        return;
    instance.objectDocument = nullptr;
    // The shared document may outlive this instance: its inner instances
    // must not keep pointing at it.
    for (const auto& inner : document->world().objects()) {
        if (inner->parentInstance == &instance)
            inner->parentInstance = nullptr;
    }
    cache.releaseObject(document, &instance);
}

void detachDocumentInstances(EditorDocument& document, ObjectManager& cache)
{
    for (const auto& instance : document.world().objects()) {
        detachInstance(*instance, cache);
        instance->parentInstance = nullptr;
    }
}

SceneObjectsAttachment::SceneObjectsAttachment(EditorDocument& scene, ObjectManager& cache)
    : m_scene(scene), m_cache(cache)
{
    attachSceneObjects(m_scene, m_cache);
    m_scene.setObjectInstanceHost(this);
}

SceneObjectsAttachment::~SceneObjectsAttachment()
{
    if (m_scene.objectInstanceHost() == this)
        m_scene.setObjectInstanceHost(nullptr);
    detachDocumentInstances(m_scene, m_cache);
}

bool SceneObjectsAttachment::attach(MetaObject& instance)
{
    return attachInstance(instance, m_scene, m_cache);
}

void SceneObjectsAttachment::detach(MetaObject& instance)
{
    detachInstance(instance, m_cache);
    instance.parentInstance = nullptr;
}

bool SceneObjectsAttachment::changeFile(MetaObject& instance, const QString& file)
{
    return changeInstanceFile(instance, file, m_scene, m_cache);
}
