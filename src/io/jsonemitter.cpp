#include "io/jsonemitter.h"

#include <algorithm>

void JsonEmitter::floatValue(float value) const
{
    const FloatEncoding e = encodeFloat(value, m_style);
    switch (e.kind) {
    case FloatEncoding::Kind::Integer:
        m_sink.integer(e.integer);
        return;
    case FloatEncoding::Kind::Real:
        m_sink.real(e.real);
        return;
    case FloatEncoding::Kind::Hex:
        m_sink.string(e.hex, sizeof e.hex);
        return;
    }
}

void JsonEmitter::vec2Value(Vec2 value) const
{
    if (isCompactZeroVec2(value, m_style)) {
        m_sink.integer(0);
        return;
    }
    m_sink.startObject();
    key("x");
    floatValue(value.x);
    key("y");
    floatValue(value.y);
    m_sink.endObject();
}

void JsonEmitter::pointListValue(const Vec2* points, size_t count) const
{
    m_sink.startObject();
    key("x");
    m_sink.startArray();
    for (size_t i = 0; i < count; ++i)
        floatValue(points[i].x);
    m_sink.endArray();
    key("y");
    m_sink.startArray();
    for (size_t i = 0; i < count; ++i)
        floatValue(points[i].y);
    m_sink.endArray();
    m_sink.endObject();
}

void JsonEmitter::colorValue(const Color& color) const
{
    m_sink.startArray();
    for (int channel : {color.r, color.g, color.b, color.a})
        m_sink.integer(std::clamp(channel, 0, 255));
    m_sink.endArray();
}

void JsonEmitter::stringValue(const QString& text) const
{
    const QByteArray utf8 = text.toUtf8();
    m_sink.string(utf8.constData(), size_t(utf8.size()));
}

void JsonEmitter::stringListValue(const QStringList& texts) const
{
    m_sink.startArray();
    for (const QString& text : texts)
        stringValue(text);
    m_sink.endArray();
}
