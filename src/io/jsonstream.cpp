#include "io/jsonstream.h"

#include <QFile>
#include <QThread>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <array>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>
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

// Hands the elements of the streamed array over in order, a batch at a
// time. Once there is more than a batch, the batches are handed over on a
// helper thread while the parser reads on; a few batches, reused, bound the
// memory of elements read ahead. Each batch has its own allocator, which
// the elements of the batch are built with.
class ElementQueue
{
public:
    explicit ElementQueue(const std::function<void(const Value&)>& element)
        : m_element(element), m_parallel(QThread::idealThreadCount() > 1)
    {
        for (size_t i = 1; i < kBatches; ++i)
            m_free.push_back(i);
        for (Batch& batch : m_batches)
            batch.elements.reserve(kBatchElements);
    }
    ~ElementQueue() { finish(); }
    ElementQueue(const ElementQueue&) = delete;
    ElementQueue& operator=(const ElementQueue&) = delete;

    // The allocator of the element being read.
    Allocator& allocator() { return m_batches[m_filling].allocator; }

    // Takes a complete element, built with allocator().
    void push(Value&& element)
    {
        Batch& batch = m_batches[m_filling];
        batch.elements.push_back(std::move(element));
        if (batch.elements.size() >= kBatchElements)
            handOver();
    }

    // Hands over what is left and waits until every element was handed over.
    void finish()
    {
        if (m_finished)
            return;
        if (!m_helper.joinable()) {
            m_finished = true;
            run(m_batches[m_filling]);
            return;
        }
        {
            std::lock_guard lock(m_mutex);
            if (!m_batches[m_filling].elements.empty())
                m_full.push_back(m_filling);
            m_finished = true;
        }
        m_changed.notify_all();
        m_helper.join();
    }

private:
    static constexpr size_t kBatchElements = 32;
    static constexpr size_t kBatches = 4;

    struct Batch
    {
        Allocator allocator;
        std::vector<Value> elements;
    };

    void run(Batch& batch)
    {
        for (const Value& element : batch.elements)
            m_element(element);
        batch.elements.clear();
        batch.allocator.Clear();
    }

    // Hands the batch being filled over and takes a free one.
    void handOver()
    {
        if (!m_parallel) {
            run(m_batches[m_filling]);
            return;
        }
        if (!m_helper.joinable())
            m_helper = std::thread([this] { handOverLoop(); });
        std::unique_lock lock(m_mutex);
        m_full.push_back(m_filling);
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_free.empty(); });
        m_filling = m_free.back();
        m_free.pop_back();
    }

    void handOverLoop()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return !m_full.empty() || m_finished; });
            if (m_full.empty())
                return;
            const size_t index = m_full.front();
            m_full.pop_front();
            lock.unlock();
            run(m_batches[index]);
            lock.lock();
            m_free.push_back(index);
            m_changed.notify_all();
        }
    }

    const std::function<void(const Value&)>& m_element;
    const bool m_parallel;
    std::array<Batch, kBatches> m_batches;
    size_t m_filling = 0;
    std::deque<size_t> m_full;
    std::vector<size_t> m_free;
    bool m_finished = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread m_helper;
};

// Builds values from the parser's events; the elements of the chosen array
// are built with the allocators of the element queue and handed to it.
class Builder
{
public:
    Builder(Allocator& allocator, const char* outerKey, const char* arrayKey, ElementQueue& elements)
        : m_allocator(allocator), m_outerKey(outerKey), m_arrayKey(arrayKey), m_elements(elements)
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
    // element queue's allocator.
    Allocator& allocator() { return m_inElement > 0 ? m_elements.allocator() : m_allocator; }

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
            m_elements.push(std::move(value));
            return true;
        }
        Allocator& into = allocator();
        if (parent.value.IsObject())
            parent.value.AddMember(parent.key, value, into);
        else
            parent.value.PushBack(value, into);
        return true;
    }

    Allocator& m_allocator;
    const char* m_outerKey;
    const char* m_arrayKey;
    ElementQueue& m_elements;
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
    ElementQueue elements(element);
    Builder builder(rest->GetAllocator(), outerKey, arrayKey, elements);
    rapidjson::Reader reader;
    const rapidjson::ParseResult result = reader.Parse<rapidjson::kParseIterativeFlag>(stream, builder);
    std::fclose(file);
    elements.finish();
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
