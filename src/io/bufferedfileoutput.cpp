#include "io/bufferedfileoutput.h"

#include <algorithm>
#include <cstring>

BufferedFileOutput::BufferedFileOutput(const QString& path) : m_file(path), m_buffer(new char[kBufferSize])
{
    m_open = m_file.open(QIODevice::WriteOnly);
}

BufferedFileOutput::~BufferedFileOutput()
{
    // Without commit() the target stays as it was.
    if (m_open)
        m_file.cancelWriting();
}

void BufferedFileOutput::write(const char* data, size_t length)
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
        m_failed = m_file.write(m_buffer.get(), qint64(m_used)) != qint64(m_used);
    m_used = 0;
}

bool BufferedFileOutput::commit()
{
    if (!m_open)
        return false;
    drain();
    if (m_failed) {
        m_file.cancelWriting();
        m_open = false;
        return false;
    }
    m_open = false;
    return m_file.commit();
}
