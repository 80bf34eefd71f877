#pragma once

#include <QString>

#include <QSaveFile>

#include <cstddef>
#include <memory>

/// An output stream (in rapidjson's sense: Put and Flush) that collects
/// bytes in a fixed buffer and hands full buffers to a file written through
/// a temporary file, which replaces the target only on commit(). Memory use
/// does not grow with the text. Flush() does nothing: rapidjson calls it
/// after every complete value, and the buffer is emptied when full or on
/// commit().
class BufferedFileOutput
{
public:
    /// rapidjson's character type.
    using Ch = char;

    /// Opens a temporary file beside path; isOpen() tells whether it worked.
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
    void write(const char* data, size_t length);
    /// rapidjson's end-of-value hook; the bytes stay buffered.
    void Flush() {}

    /// Writes what is buffered and replaces the target file. False when any
    /// write failed or the file could not be put in place (nothing replaced).
    bool commit();
    /// The reason of the last failure.
    QString errorString() const { return m_file.errorString(); }

private:
    static constexpr size_t kBufferSize = size_t(1) << 16;

    void drain();

    QSaveFile m_file;
    std::unique_ptr<char[]> m_buffer;
    size_t m_used = 0;
    bool m_open = false;
    bool m_failed = false;
};
