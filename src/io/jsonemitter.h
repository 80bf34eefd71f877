#pragma once

#include "io/jsonsink.h"
#include "io/jsonvalues.h"

#include <cstring>

/// Streams values in one style into a sink: the streaming counterpart of
/// JsonEncoder, writing the same forms (floats, vec2, point lists, colours).
class JsonEmitter
{
public:
    /// An emitter into the sink, which must outlive it.
    JsonEmitter(JsonSink& sink, const JsonStyle& style) : m_sink(sink), m_style(style) {}

    /// The sink written to.
    JsonSink& sink() const { return m_sink; }
    /// The style values are written in.
    const JsonStyle& style() const { return m_style; }

    /// The key of the next member (a terminated string).
    void key(const char* key) const { m_sink.key(key, std::strlen(key)); }

    /// A float: 0/1 integers, hex string or real, as the style says.
    void floatValue(float value) const;
    /// A vec2 as {"x","y"}, or the integer 0 for the zero vector.
    void vec2Value(Vec2 value) const;
    /// A point list as one object with parallel "x" and "y" arrays.
    void pointListValue(const Vec2* points, size_t count) const;
    /// A colour as an array of four integers 0..255 (out-of-range channels clamped).
    void colorValue(const Color& color) const;
    /// A string (UTF-8).
    void stringValue(const QString& text) const;
    /// A string given as Latin-1/ASCII text.
    void stringValue(const char* text) const { m_sink.string(text, std::strlen(text)); }
    /// An array of strings.
    void stringListValue(const QStringList& texts) const;
    /// A bool.
    void boolValue(bool value) const { m_sink.boolean(value); }
    /// An int.
    void intValue(int value) const { m_sink.integer(value); }

private:
    JsonSink& m_sink;
    JsonStyle m_style;
};
