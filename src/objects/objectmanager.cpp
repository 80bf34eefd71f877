#include "objects/objectmanager.h"

#include "base/flags.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"

#include <QFileInfo>

namespace
{
// Cache lines are debug chatter that the quiet flag silences.
void cacheLog(const QString& text)
{
    if (!AppFlags::isQuiet())
        plaxLog(LOG_DEBUG, text);
}

QString handleText(const void* p)
{
    return QString::number(unsigned(reinterpret_cast<quintptr>(p)), 16).toUpper().rightJustified(8, QLatin1Char('0'));
}
} // namespace

ObjectManager::ObjectManager() = default;

ObjectManager::~ObjectManager()
{
    // Documents inside the cache may point at each other through their
    // instances; nothing is released one by one any more, so drop the
    // pointers before the documents go.
    for (auto& [key, entry] : m_entries) {
        for (const auto& object : entry.document->world().objects()) {
            object->objectDocument = nullptr;
            object->parentInstance = nullptr;
        }
    }
    m_entries.clear();
}

ObjectManager& ObjectManager::instance()
{
    static ObjectManager s_instance;
    return s_instance;
}

QString ObjectManager::keyFor(const QString& fileName)
{
    const QFileInfo info(fileName);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

EditorDocument* ObjectManager::getObject(const QString& fileName, const void* user)
{
    if (fileName.isEmpty())
        return nullptr;
    const QString key = keyFor(fileName);
    std::lock_guard<std::recursive_mutex> lock(m_mutex);

    auto found = m_entries.find(key);
    if (found != m_entries.end()) {
        Entry& entry = found->second;
        cacheLog(QStringLiteral("Found object '%1' in cache (%2)").arg(key, handleText(entry.document.get())));
        entry.users.insert(user);
        ++entry.references;
        return entry.document.get();
    }

    auto document = std::make_unique<EditorDocument>();
    const bool wasLoading = AppFlags::setLoadingObject(true);
    const bool loaded = document->load(key);
    AppFlags::setLoadingObject(wasLoading);
    if (!loaded)
        return nullptr;

    Entry entry;
    entry.document = std::move(document);
    entry.loaded = QDateTime::currentDateTime();
    entry.users.insert(user);
    entry.references = 1;
    EditorDocument* result = entry.document.get();
    m_entries.emplace(key, std::move(entry));
    cacheLog(QStringLiteral("Loaded object '%1'").arg(key));
    return result;
}

void ObjectManager::releaseObject(const EditorDocument* document, const void* user)
{
    if (!document)
        return;
    std::unique_ptr<EditorDocument> removed;
    {
        std::lock_guard<std::recursive_mutex> lock(m_mutex);
        for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
            Entry& entry = it->second;
            if (entry.document.get() != document)
                continue;
            --entry.references;
            if (user)
                entry.users.erase(user);
            cacheLog(QStringLiteral("Decremented reference for object '%1'").arg(it->first));
            if (entry.references <= 0) {
                cacheLog(QStringLiteral("Removing object '%1' from cache").arg(it->first));
                removed = std::move(entry.document);
                m_entries.erase(it);
            }
            break;
        }
    }
    // Outside the lock: the removed document's own instances give back their
    // references before it is deleted.
    if (removed)
        detachDocumentInstances(*removed, *this);
}

const ObjectManager::Entry* ObjectManager::findEntry(const QString& fileName) const
{
    auto it = m_entries.find(keyFor(fileName));
    return it == m_entries.end() ? nullptr : &it->second;
}

int ObjectManager::entryCount() const
{
    std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return int(m_entries.size());
}

int ObjectManager::referenceCount(const QString& fileName) const
{
    std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const Entry* entry = findEntry(fileName);
    return entry ? entry->references : 0;
}

int ObjectManager::userCount(const QString& fileName) const
{
    std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const Entry* entry = findEntry(fileName);
    return entry ? int(entry->users.size()) : 0;
}

EditorDocument* ObjectManager::cachedDocument(const QString& fileName) const
{
    std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const Entry* entry = findEntry(fileName);
    return entry ? entry->document.get() : nullptr;
}

QDateTime ObjectManager::loadedAt(const QString& fileName) const
{
    std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const Entry* entry = findEntry(fileName);
    return entry ? entry->loaded : QDateTime();
}
