#include "io/bufferedfileoutput.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cstring>

bool BufferedFileOutput::isSpecialFile(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() && !info.isDir();
}

BufferedFileOutput::BufferedFileOutput(const QString& path) : m_buffer(new char[kBufferSize])
{
    m_inPlace = isSpecialFile(path);
    if (m_inPlace)
        m_file = std::make_unique<QFile>(path);
    else
        m_file = std::make_unique<QSaveFile>(path);
    m_open = m_file->open(QIODevice::WriteOnly);
}

BufferedFileOutput::~BufferedFileOutput()
{
    // Without commit() a regular target stays as it was. (A device has had
    // its bytes already; there is nothing to take back.)
    cancel();
}

void BufferedFileOutput::cancel()
{
    if (!m_open)
        return;
    m_open = false;
    if (m_inPlace)
        m_file->close();
    else
        static_cast<QSaveFile*>(m_file.get())->cancelWriting();
}

void BufferedFileOutput::writeAcross(const char* data, size_t length)
{
    while (length > 0) {
        if (m_used == kBufferSize)
            drain();
        const size_t part = std::min(length, kBufferSize - m_used);
        std::memcpy(m_buffer.get() + m_used, data, part);
        m_used += part;
        data += part;
        length -= part;
    }
}

void BufferedFileOutput::drain()
{
    if (m_open && !m_failed && m_used > 0)
        m_failed = m_file->write(m_buffer.get(), qint64(m_used)) != qint64(m_used);
    m_used = 0;
}

bool BufferedFileOutput::commit()
{
    if (!m_open)
        return false;
    drain();
    if (m_failed) {
        cancel();
        return false;
    }
    m_open = false;
    if (!m_inPlace)
        return static_cast<QSaveFile*>(m_file.get())->commit();
    const bool flushed = m_file->flush();
    m_file->close();
    return flushed && m_file->error() == QFileDevice::NoError;
}
