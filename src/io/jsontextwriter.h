#pragma once

#include "io/jsontextlayout.h"

#include <rapidjson/writer.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <vector>

/// A rapidjson SAX handler writing the program's JSON text layout to an
/// output stream: compact on one line, or pretty printed with three-space
/// indentation, "key": value members, and arrays on one line when their
/// elements are plain values ("[0, 1.5, 2]"), one element a line otherwise.
/// Whether an array is written on one line is decided by its first element:
/// the program never writes arrays that mix plain values and containers.
/// Scalars are formatted by rapidjson's own writer, so numbers and string
/// escapes are exactly rapidjson's. Non-finite reals are refused (the
/// handler returns false). The final newline of a pretty text is the
/// caller's (see finish()).
template <typename OutputStream>
class JsonTextWriter
{
public:
    /// A writer into the stream, which must outlive it.
    JsonTextWriter(OutputStream& out, bool pretty) : m_out(out), m_pretty(pretty), m_scalar(out) {}
    /// A writer into the stream that goes on from `layout`: its text
    /// continues the text of the writer the layout was taken from.
    JsonTextWriter(OutputStream& out, const JsonTextLayout& layout)
        : m_out(out), m_pretty(layout.pretty), m_afterKey(layout.afterKey), m_scalar(out), m_levels(layout.levels)
    {
    }

    /// Where the writer stands now.
    JsonTextLayout layout() const { return {m_pretty, m_afterKey, m_levels}; }
    /// Appends text that another writer wrote going on from this one's
    /// layout, and goes on from where that text ended.
    void append(std::string_view text, const JsonTextLayout& end)
    {
        putBytes(text.data(), text.size());
        m_afterKey = end.afterKey;
        m_levels = end.levels;
    }

    /// Appends the newline that ends a pretty text; nothing for compact text.
    void finish()
    {
        if (m_pretty)
            m_out.Put('\n');
    }

    bool Null() { return scalar([this] { return m_scalar.Null(); }); }
    bool Bool(bool b) { return scalar([this, b] { return m_scalar.Bool(b); }); }
    bool Int(int i) { return scalar([this, i] { return m_scalar.Int(i); }); }
    bool Uint(unsigned u) { return scalar([this, u] { return m_scalar.Uint(u); }); }
    bool Int64(int64_t i) { return scalar([this, i] { return m_scalar.Int64(i); }); }
    bool Uint64(uint64_t u) { return scalar([this, u] { return m_scalar.Uint64(u); }); }
    bool Double(double d) { return scalar([this, d] { return m_scalar.Double(d); }); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool copy = false)
    {
        return scalar([=, this] { return m_scalar.RawNumber(text, length, copy); });
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy = false)
    {
        if (!plain(text, length))
            return scalar([=, this] { return m_scalar.String(text, length, copy); });
        beforeValue(false);
        m_out.Put('"');
        putBytes(text, length);
        m_out.Put('"');
        return true;
    }

    bool StartObject()
    {
        beforeValue(true);
        m_out.Put('{');
        m_levels.push_back(Level{false, true, false, 0});
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy = false)
    {
        Level& level = m_levels.back();
        const bool first = level.count++ == 0;
        m_afterKey = true;
        const size_t depth = m_levels.size();
        // Separator, line break, indentation and the quoted key in one write
        // when they fit a line's room (keys are short and need no escapes).
        char line[kKeyRoom];
        if (length + 3 * depth + 6 <= sizeof line && plain(text, length)) {
            char* at = line;
            if (!first)
                *at++ = ',';
            if (m_pretty) {
                *at++ = '\n';
                std::memset(at, ' ', 3 * depth);
                at += 3 * depth;
            }
            *at++ = '"';
            std::memcpy(at, text, length);
            at += length;
            *at++ = '"';
            *at++ = ':';
            if (m_pretty)
                *at++ = ' ';
            putBytes(line, size_t(at - line));
            return true;
        }
        if (!first)
            m_out.Put(',');
        if (m_pretty)
            newline(depth);
        bool ok = true;
        if (plain(text, length)) {
            m_out.Put('"');
            putBytes(text, length);
            m_out.Put('"');
        } else {
            m_scalar.Reset(m_out);
            ok = m_scalar.String(text, length, copy);
        }
        m_out.Put(':');
        if (m_pretty)
            m_out.Put(' ');
        return ok;
    }
    bool EndObject(rapidjson::SizeType = 0)
    {
        const Level level = m_levels.back();
        m_levels.pop_back();
        if (m_pretty && level.count > 0)
            newline(m_levels.size());
        m_out.Put('}');
        return true;
    }
    bool StartArray()
    {
        beforeValue(true);
        m_out.Put('[');
        m_levels.push_back(Level{true, true, false, 0});
        return true;
    }
    bool EndArray(rapidjson::SizeType = 0)
    {
        const Level level = m_levels.back();
        m_levels.pop_back();
        if (m_pretty && !level.singleLine && level.count > 0)
            newline(m_levels.size());
        m_out.Put(']');
        return true;
    }

private:
    using Level = JsonTextLayout::Level;

    template <typename Write>
    bool scalar(Write write)
    {
        beforeValue(false);
        // A fresh document for rapidjson's writer: it only formats the value.
        m_scalar.Reset(m_out);
        return write();
    }

    // Separator and layout before a value in an array (a member's value
    // follows its key directly).
    void beforeValue(bool container)
    {
        if (m_afterKey || m_levels.empty()) {
            m_afterKey = false;
            return;
        }
        Level& level = m_levels.back();
        if (level.count > 0)
            m_out.Put(',');
        if (m_pretty) {
            if (!level.decided) {
                level.singleLine = !container;
                level.decided = true;
            }
            if (!level.singleLine)
                newline(m_levels.size());
            else if (level.count > 0)
                m_out.Put(' ');
        }
        ++level.count;
    }

    // True for printable ASCII without quotes or backslashes: rapidjson
    // writes such text as it is.
    static bool plain(const char* text, size_t length)
    {
        for (size_t i = 0; i < length; ++i) {
            const unsigned char c = static_cast<unsigned char>(text[i]);
            if (c < 0x20 || c >= 0x7F || c == '"' || c == '\\')
                return false;
        }
        return true;
    }

    void putBytes(const char* text, size_t length)
    {
        if constexpr (requires(OutputStream& out) { out.write(text, length); }) {
            m_out.write(text, length);
        } else {
            for (size_t i = 0; i < length; ++i)
                m_out.Put(text[i]);
        }
    }

    void newline(size_t depth)
    {
        const size_t length = 1 + depth * 3;
        if (length <= kIndent.size()) {
            putBytes(kIndent.data(), length);
            return;
        }
        m_out.Put('\n');
        for (size_t i = 0; i < depth * 3; ++i)
            m_out.Put(' ');
    }

    // Room for a member's key with its separator and indentation, written in one go.
    static constexpr size_t kKeyRoom = 128;

    // A line break and the indentation of up to 32 levels, written in one go.
    static constexpr std::array<char, 1 + 3 * 32> kIndent = [] {
        std::array<char, 1 + 3 * 32> text{};
        text[0] = '\n';
        for (size_t i = 1; i < text.size(); ++i)
            text[i] = ' ';
        return text;
    }();

    OutputStream& m_out;
    bool m_pretty;
    bool m_afterKey = false;
    rapidjson::Writer<OutputStream> m_scalar;
    std::vector<Level> m_levels;
};
