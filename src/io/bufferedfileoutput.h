#pragma once

#include <QString>

#include <QFileDevice>

#include <cstddef>
#include <cstring>
#include <memory>

/// An output stream (in rapidjson's sense: Put and Flush) that collects
/// bytes in a fixed buffer and hands full buffers to a file written through
/// a temporary file, which replaces the target only on commit(). Memory use
/// does not grow with the text. Flush() does nothing: rapidjson calls it
/// after every complete value, and the buffer is emptied when full or on
/// commit().
///
/// A target that exists but is not a regular file (a device such as
/// /dev/null or /dev/stdout, a named pipe, a socket) is written in place
/// instead: replacing it would put a plain file where the device was, or
/// fail. Such a target gets the bytes as they are produced.
class BufferedFileOutput
{
public:
    /// rapidjson's character type.
    using Ch = char;

    /// Opens a temporary file beside path, or the path itself when it is not
    /// a regular file; isOpen() tells whether it worked.
    explicit BufferedFileOutput(const QString& path);
    ~BufferedFileOutput();
    BufferedFileOutput(const BufferedFileOutput&) = delete;
    BufferedFileOutput& operator=(const BufferedFileOutput&) = delete;

    /// True when the temporary file could be opened.
    bool isOpen() const { return m_open; }

    /// Appends one byte.
    void Put(char c)
    {
        if (m_used == kBufferSize)
            drain();
        m_buffer[m_used++] = c;
    }
    /// Appends bytes.
    void write(const char* data, size_t length)
    {
        if (length <= kBufferSize - m_used) {
            std::memcpy(m_buffer.get() + m_used, data, length);
            m_used += length;
            return;
        }
        writeAcross(data, length);
    }
    /// rapidjson's end-of-value hook; the bytes stay buffered.
    void Flush() {}

    /// Writes what is buffered and replaces the target file. False when any
    /// write failed or the file could not be put in place (nothing replaced).
    bool commit();
    /// The reason of the last failure.
    QString errorString() const { return m_file->errorString(); }
    /// True when the target is written in place (it is not a regular file).
    bool writesInPlace() const { return m_inPlace; }

    /// True when path names something that exists and is neither a regular
    /// file (or a link to one) nor a folder: a device, a named pipe, a socket.
    static bool isSpecialFile(const QString& path);

private:
    static constexpr size_t kBufferSize = size_t(1) << 16;

    // Appends bytes that do not fit in what is left of the buffer.
    void writeAcross(const char* data, size_t length);
    void drain();
    void cancel();

    // A QSaveFile, or a plain QFile for a target written in place.
    std::unique_ptr<QFileDevice> m_file;
    bool m_inPlace = false;
    std::unique_ptr<char[]> m_buffer;
    size_t m_used = 0;
    bool m_open = false;
    bool m_failed = false;
};
