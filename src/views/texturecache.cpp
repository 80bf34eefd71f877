#include "views/texturecache.h"

#include "base/log.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

namespace
{
struct FileStamp
{
    QDateTime modified;
    qint64 size = -1;
};

FileStamp stampOf(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    return {info.lastModified(), info.size()};
}
} // namespace

QImage TextureCache::placeholderImage()
{
    // A magenta and grey checkerboard with a cross: obviously not the picture.
    QImage image(32, 32, QImage::Format_RGBA8888);
    image.fill(QColor(128, 128, 128));
    QPainter painter(&image);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            if ((x + y) % 2 == 0)
                painter.fillRect(x * 8, y * 8, 8, 8, QColor(230, 0, 200));
        }
    }
    painter.setPen(QPen(Qt::black, 2));
    painter.drawLine(0, 0, 31, 31);
    painter.drawLine(31, 0, 0, 31);
    return image;
}

void TextureCache::load(const QString& path, Entry& entry)
{
    const FileStamp stamp = stampOf(path);
    QImageReader reader(path);
    QImage image = stamp.size >= 0 ? reader.read() : QImage();
    entry.modified = stamp.modified;
    entry.size = stamp.size;
    entry.version = m_nextVersion++;
    if (image.isNull()) {
        entry.image = placeholderImage();
        entry.placeholder = true;
        if (!m_reported.contains(path)) {
            m_reported.insert(path);
            const QString reason = stamp.size < 0 ? QStringLiteral("file not found") : reader.errorString();
            plaxLog(LOG_WARNING,
                    QStringLiteral("Could not load image '%1' (%2): drawing a placeholder").arg(path, reason));
        }
        return;
    }
    entry.image = image.convertToFormat(QImage::Format_RGBA8888);
    entry.placeholder = false;
    m_reported.remove(path);
}

const TextureCache::Entry& TextureCache::entry(const QString& path)
{
    auto it = m_entries.find(path);
    if (it == m_entries.end()) {
        it = m_entries.insert(path, Entry());
        load(path, *it);
    }
    return *it;
}

bool TextureCache::refresh()
{
    bool changed = false;
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
        const FileStamp stamp = stampOf(it.key());
        if (stamp.modified != it->modified || stamp.size != it->size) {
            load(it.key(), *it);
            changed = true;
        }
    }
    return changed;
}
