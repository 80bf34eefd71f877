#include "io/jsonstream.h"

#include <QFile>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace
{
// A buffered input stream over a C file, as rapidjson reads streams: Peek()
// gives '\0' at the end (and at a zero byte, as an in-place parse stops
// there); Tell() counts from after the byte-order mark.
class FileStream
{
public:
    using Ch = char;

    explicit FileStream(std::FILE* file) : m_file(file), m_buffer(1 << 16) { fill(); }

    Ch Peek() const { return m_at < m_end ? *m_at : '\0'; }
    Ch Take()
    {
        if (m_at >= m_end)
            return '\0';
        const Ch c = *m_at++;
        if (m_at == m_end)
            fill();
        return c;
    }
    size_t Tell() const { return m_read - size_t(m_end - m_at) - m_skipped; }
    // Skips a leading UTF-8 byte-order mark.
    void skipByteOrderMark()
    {
        if (m_end - m_at >= 3 && std::memcmp(m_at, "\xEF\xBB\xBF", 3) == 0) {
            m_at += 3;
            m_skipped = 3;
            if (m_at == m_end)
                fill();
        }
    }

    // Skips spaces, tabs and line breaks a buffer at a time (rapidjson's own
    // loop peeks and takes them one by one; indented files have many).
    void skipWhitespace()
    {
        while (m_at < m_end) {
            const char* p = m_at;
            for (;;) {
                // Indentation eight spaces at a time.
                constexpr std::uint64_t kSpaces = 0x2020202020202020ull;
                std::uint64_t eight = 0;
                while (m_end - p >= 8 && (std::memcpy(&eight, p, 8), eight == kSpaces))
                    p += 8;
                if (p < m_end && (*p == ' ' || *p == '\n' || *p == '\r' || *p == '\t'))
                    ++p;
                else
                    break;
            }
            m_at = p;
            if (p < m_end)
                return;
            fill();
        }
    }

    // Unused by the reader; declared for rapidjson's stream concept.
    Ch* PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    size_t PutEnd(Ch*) { return 0; }

private:
    void fill()
    {
        const size_t got = std::fread(m_buffer.data(), 1, m_buffer.size(), m_file);
        m_read += got;
        m_at = m_buffer.data();
        m_end = m_at + got;
    }

    std::FILE* m_file;
    std::vector<char> m_buffer;
    const char* m_at = nullptr;
    const char* m_end = nullptr;
    size_t m_read = 0;
    size_t m_skipped = 0;
};

} // namespace

namespace rapidjson
{
template <>
inline void SkipWhitespace(FileStream& is)
{
    is.skipWhitespace();
}
} // namespace rapidjson

namespace
{
using Value = rapidjson::Value;
using Allocator = rapidjson::Document::AllocatorType;

// Builds values from the parser's events; the elements of the chosen array
// are built with an allocator of their own, handed over and dropped.
class Builder
{
public:
    Builder(Allocator& allocator, const char* outerKey, const char* arrayKey,
            const std::function<void(const Value&)>& element)
        : m_allocator(allocator), m_outerKey(outerKey), m_arrayKey(arrayKey), m_element(element)
    {
    }

    bool Null() { return add(Value()); }
    bool Bool(bool b) { return add(Value(b)); }
    bool Int(int i) { return add(Value(i)); }
    bool Uint(unsigned u) { return add(Value(u)); }
    bool Int64(int64_t i) { return add(Value(i)); }
    bool Uint64(uint64_t u) { return add(Value(u)); }
    bool Double(double d) { return add(Value(d)); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) { return add(Value(text, length, allocator())); }
    bool String(const char* text, rapidjson::SizeType length, bool) { return add(Value(text, length, allocator())); }

    bool StartObject() { return open(Value(rapidjson::kObjectType)); }
    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        m_frames.back().key = Value(text, length, allocator());
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool StartArray() { return open(Value(rapidjson::kArrayType)); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    // The whole document, once parsed.
    Value& root() { return m_root; }

private:
    struct Frame
    {
        Value value;
        Value key;           // the pending member key of an object
        bool outer = false;  // the object under the outer key
        bool streamed = false; // the array whose elements are handed over
    };

    // Elements of the streamed array (and everything in them) use the
    // element allocator.
    Allocator& allocator() { return m_inElement > 0 ? m_elementAllocator : m_allocator; }

    bool open(Value&& container)
    {
        Frame frame;
        if (m_frames.empty()) {
            m_frames.push_back(std::move(frame));
            m_frames.back().value = std::move(container);
            return true;
        }
        const Frame& parent = m_frames.back();
        const bool isObject = parent.value.IsObject();
        // The first object under the outer key at the top; in it, the first array under the array key.
        if (m_frames.size() == 1 && isObject && !m_outerSeen && parent.key == m_outerKey && container.IsObject()) {
            m_outerSeen = true;
            frame.outer = true;
        } else if (parent.outer && isObject && !m_arraySeen && parent.key == m_arrayKey && container.IsArray()) {
            m_arraySeen = true;
            frame.streamed = true;
        }
        if (parent.streamed)
            ++m_inElement;
        else if (m_inElement > 0)
            ++m_inElement;
        frame.value = std::move(container);
        m_frames.push_back(std::move(frame));
        return true;
    }

    bool close()
    {
        Frame frame = std::move(m_frames.back());
        m_frames.pop_back();
        if (m_inElement > 0)
            --m_inElement;
        if (m_frames.empty()) {
            m_root = std::move(frame.value);
            return true;
        }
        return add(std::move(frame.value));
    }

    bool add(Value&& value)
    {
        if (m_frames.empty()) {
            m_root = std::move(value);
            return true;
        }
        Frame& parent = m_frames.back();
        if (parent.streamed) {
            m_element(value);
            value.SetNull();
            m_elementAllocator.Clear();
            return true;
        }
        Allocator& into = m_inElement > 0 ? m_elementAllocator : m_allocator;
        if (parent.value.IsObject())
            parent.value.AddMember(parent.key, value, into);
        else
            parent.value.PushBack(value, into);
        return true;
    }

    Allocator& m_allocator;
    Allocator m_elementAllocator;
    const char* m_outerKey;
    const char* m_arrayKey;
    const std::function<void(const Value&)>& m_element;
    std::vector<Frame> m_frames;
    Value m_root;
    int m_inElement = 0;
    bool m_outerSeen = false;
    bool m_arraySeen = false;
};
} // namespace

bool streamJsonFile(const QString& path, const char* outerKey, const char* arrayKey,
                    const std::function<void(const rapidjson::Value&)>& element, rapidjson::Document* rest,
                    QString* error)
{
    std::FILE* file = std::fopen(QFile::encodeName(path).constData(), "rb");
    if (!file) {
        if (error)
            *error = QStringLiteral("The file cannot be read.");
        return false;
    }
    FileStream stream(file);
    stream.skipByteOrderMark();
    Builder builder(rest->GetAllocator(), outerKey, arrayKey, element);
    rapidjson::Reader reader;
    const rapidjson::ParseResult result = reader.Parse<rapidjson::kParseIterativeFlag>(stream, builder);
    std::fclose(file);
    if (result.IsError()) {
        if (error)
            *error = QStringLiteral("%1 (at offset %2)")
                         .arg(QString::fromLatin1(rapidjson::GetParseError_En(result.Code())))
                         .arg(result.Offset());
        return false;
    }
    static_cast<rapidjson::Value&>(*rest) = std::move(builder.root());
    return true;
}
