#pragma once

#include "io/jsontextlayout.h"

#include <rapidjson/rapidjson.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// Receives a JSON document as a stream of events, in document order. The
/// raw-info writer talks to this interface, so that the same code writes a
/// text file, a text in memory or a DOM. Once a handler has refused an event
/// (a writer refuses non-finite reals) ok() stays false and the output is
/// not to be used.
class JsonSink
{
public:
    virtual ~JsonSink() = default;

    /// Opens an object; members follow as key() then one value each.
    virtual void startObject() = 0;
    /// Closes the innermost object.
    virtual void endObject() = 0;
    /// Opens an array.
    virtual void startArray() = 0;
    /// Closes the innermost array.
    virtual void endArray() = 0;
    /// The key of the next member (UTF-8, not necessarily terminated).
    virtual void key(const char* text, size_t length) = 0;
    /// A string value (UTF-8, not necessarily terminated).
    virtual void string(const char* text, size_t length) = 0;
    /// A bool value.
    virtual void boolean(bool value) = 0;
    /// A signed integer value.
    virtual void integer(int value) = 0;
    /// An unsigned integer value.
    virtual void unsignedInteger(unsigned value) = 0;
    /// A real value; non-finite values make the sink fail.
    virtual void real(double value) = 0;
    /// False once a handler refused an event.
    virtual bool ok() const = 0;

    /// For a sink that writes text: its layout now, from which text can be
    /// written apart and appended with appendText(). False for other sinks
    /// (a DOM).
    virtual bool textLayout(JsonTextLayout* layout) const
    {
        (void)layout;
        return false;
    }
    /// Appends text written apart, going on from this sink's layout, and
    /// goes on from where it ended; its elements count as elements of the
    /// innermost container. Only for sinks that tell their textLayout().
    virtual void appendText(const JsonTextRun& run) { (void)run; }
};

/// A sink forwarding to a rapidjson SAX handler (a writer, or a Document to
/// build a DOM). The element and member counts that a Document needs at the
/// end of each container are counted here.
template <typename Handler>
class HandlerSink final : public JsonSink
{
public:
    /// A sink feeding the handler, which must outlive it.
    explicit HandlerSink(Handler& handler) : m_handler(handler) {}

    void startObject() override { open(m_handler.StartObject()); }
    void endObject() override { close(m_handler.EndObject(closedCount())); }
    void startArray() override { open(m_handler.StartArray()); }
    void endArray() override { close(m_handler.EndArray(closedCount())); }
    void key(const char* text, size_t length) override
    {
        track(m_handler.Key(text, rapidjson::SizeType(length), true));
        // The key and its value count as one member.
        if (!m_counts.empty())
            --m_counts.back();
    }
    void string(const char* text, size_t length) override
    {
        track(m_handler.String(text, rapidjson::SizeType(length), true));
    }
    void boolean(bool value) override { track(m_handler.Bool(value)); }
    void integer(int value) override { track(m_handler.Int(value)); }
    void unsignedInteger(unsigned value) override { track(m_handler.Uint(value)); }
    void real(double value) override { track(m_handler.Double(value)); }
    bool ok() const override { return m_ok; }

    bool textLayout(JsonTextLayout* layout) const override
    {
        if constexpr (requires(const Handler& h) { h.layout(); }) {
            *layout = m_handler.layout();
            return true;
        } else {
            (void)layout;
            return false;
        }
    }
    void appendText(const JsonTextRun& run) override
    {
        if constexpr (requires(Handler& h) { h.append(run.text, *run.end); }) {
            m_handler.append(run.text, *run.end);
            m_ok = m_ok && run.ok;
            if (!m_counts.empty())
                m_counts.back() += rapidjson::SizeType(run.elements);
        }
    }

private:
    void track(bool handled)
    {
        m_ok = m_ok && handled;
        if (!m_counts.empty())
            ++m_counts.back();
    }
    void open(bool handled)
    {
        track(handled);
        m_counts.push_back(0);
    }
    rapidjson::SizeType closedCount()
    {
        const rapidjson::SizeType count = m_counts.empty() ? 0 : m_counts.back();
        if (!m_counts.empty())
            m_counts.pop_back();
        return count;
    }
    void close(bool handled) { m_ok = m_ok && handled; }

    Handler& m_handler;
    std::vector<rapidjson::SizeType> m_counts;
    bool m_ok = true;
};
