#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QSet>
#include <QString>

/// The decoded image files of one document, shared by its views. An image is
/// read on first use and read again when its file changes on disk (checked by
/// refresh()). A file that is missing or not an image yields a placeholder
/// picture and one warning in the log.
class TextureCache
{
public:
    /// One decoded image with a version that grows with every reload.
    struct Entry
    {
        QImage image;
        quint64 version = 0;
        bool placeholder = false;
        QDateTime modified;
        qint64 size = -1;
    };

    /// The image of a file (loaded now if new).
    const Entry& entry(const QString& path);
    /// Re-reads the files that changed on disk since they were read; returns
    /// true when any image was reloaded.
    bool refresh();
    /// Number of files held.
    int count() const { return int(m_entries.size()); }
    /// The picture drawn for images that cannot be read.
    static QImage placeholderImage();

private:
    void load(const QString& path, Entry& entry);

    QHash<QString, Entry> m_entries;
    QSet<QString> m_reported;
    quint64 m_nextVersion = 1;
};
