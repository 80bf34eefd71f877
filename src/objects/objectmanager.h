#pragma once

#include <QDateTime>
#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <set>

class EditorDocument;

/// The cache of loaded object files. Each file is loaded once into an
/// `EditorDocument` that every user (instance, export) shares; the entry
/// counts its references and is removed, with its document, when the last
/// one is released.
///
/// Files are keyed by their canonical absolute path, so two spellings of one
/// file share an entry. The process-wide cache (`instance()`) serves the
/// editor and the batch tool; code that wants isolation (tests) makes its
/// own. Every operation takes the cache's lock.
class ObjectManager
{
public:
    ObjectManager();
    /// Deletes every cached document, whatever its count.
    ~ObjectManager();
    ObjectManager(const ObjectManager&) = delete;
    ObjectManager& operator=(const ObjectManager&) = delete;

    /// The process-wide cache. It lives until the end of the process; users
    /// release their references before their own documents go.
    static ObjectManager& instance();

    /// The cache key of a file name: its canonical absolute path, or the
    /// absolute path when the file does not exist.
    static QString keyFor(const QString& fileName);

    /// The document of a file, loading it on first use, with one more
    /// reference held by `user`. Null for an empty name or a file that cannot
    /// be loaded.
    EditorDocument* getObject(const QString& fileName, const void* user);
    /// Gives back one reference on a document (and forgets `user` as one of
    /// its users). The last release deletes the document after releasing the
    /// instances inside it.
    void releaseObject(const EditorDocument* document, const void* user = nullptr);

    /// Number of cached files.
    int entryCount() const;
    /// References held on a file (0 when not cached).
    int referenceCount(const QString& fileName) const;
    /// Distinct users of a file (0 when not cached).
    int userCount(const QString& fileName) const;
    /// The cached document of a file without taking a reference, or null.
    EditorDocument* cachedDocument(const QString& fileName) const;
    /// When a file was loaded into the cache (invalid when not cached).
    QDateTime loadedAt(const QString& fileName) const;

private:
    struct Entry
    {
        std::unique_ptr<EditorDocument> document;
        QDateTime loaded;
        std::set<const void*> users;
        int references = 0;
    };

    const Entry* findEntry(const QString& fileName) const;

    mutable std::recursive_mutex m_mutex;
    std::map<QString, Entry> m_entries;
};
