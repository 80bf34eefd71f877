#include "io/jsonvalues.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace
{
using rapidjson::Value;

constexpr std::uint32_t kZeroBits = 0x00000000u;
constexpr std::uint32_t kOneBits = 0x3F800000u;

// Half an ulp above the largest float: doubles below it round to a finite float.
constexpr double kFloatOverflow = 0x1.ffffffp127;

std::uint32_t bitsOf(float value)
{
    return std::bit_cast<std::uint32_t>(value);
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

Value keyRef(const char* key)
{
    return Value(rapidjson::StringRef(key));
}

int clampChannel(int channel)
{
    return std::clamp(channel, 0, 255);
}

// Clamps a double to the int range (JSON numbers are finite).
int clampToInt(double value)
{
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return int(value);
}
} // namespace

void writeFloatHex(float value, char out[8])
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::uint32_t bits = bitsOf(value);
    for (int i = 7; i >= 0; --i) {
        out[i] = kDigits[bits & 0xFu];
        bits >>= 4;
    }
}

QByteArray floatToHex(float value)
{
    char text[8];
    writeFloatHex(value, text);
    return QByteArray(text, 8);
}

bool floatFromHex(const char* text, size_t length, float* value)
{
    if (length == 0 || length > 8)
        return false;
    std::uint32_t bits = 0;
    for (size_t i = 0; i < length; ++i) {
        const int digit = hexDigit(text[i]);
        if (digit < 0)
            return false;
        bits = (bits << 4) | std::uint32_t(digit);
    }
    *value = std::bit_cast<float>(bits);
    return true;
}

QByteArray floatToShortestText(float value)
{
    if (!std::isfinite(value))
        return QByteArray();
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
    if (result.ec != std::errc())
        return QByteArray();
    return QByteArray(text, int(result.ptr - text));
}

FloatEncoding encodeFloat(float value, const JsonStyle& style)
{
    FloatEncoding e;
    // -0 compares equal to 0 and is written as 0 in every form.
    if (value == 0)
        value = 0;
    const std::uint32_t bits = bitsOf(value);
    if (style.compactCommonFloats && (bits == kZeroBits || bits == kOneBits)) {
        e.kind = FloatEncoding::Kind::Integer;
        e.integer = bits == kOneBits ? 1 : 0;
        return e;
    }
    if (style.humanReadableFloats && std::isfinite(value)) {
        // The double nearest to the shortest decimal text, so that the writer
        // prints that text. In the rare case where that double does not round
        // back to the same float, the exact value is written instead.
        e.kind = FloatEncoding::Kind::Real;
        e.real = double(value);
        char text[32];
        const std::to_chars_result printed = std::to_chars(text, text + sizeof text, value);
        double shortest = 0;
        if (printed.ec == std::errc() &&
            std::from_chars(text, printed.ptr, shortest).ec == std::errc() &&
            bitsOf(floatFromDouble(shortest)) == bits)
            e.real = shortest;
        return e;
    }
    e.kind = FloatEncoding::Kind::Hex;
    writeFloatHex(value, e.hex);
    return e;
}

bool isCompactZeroVec2(Vec2 value, const JsonStyle& style)
{
    return style.compactZeroVecs && value.x == 0 && value.y == 0;
}

float floatFromDouble(double value)
{
    if (std::isnan(value))
        return std::numeric_limits<float>::quiet_NaN();
    const double magnitude = std::fabs(value);
    if (magnitude <= double(std::numeric_limits<float>::max()))
        return float(value);
    const float limit = magnitude < kFloatOverflow ? std::numeric_limits<float>::max()
                                                   : std::numeric_limits<float>::infinity();
    return value < 0 ? -limit : limit;
}

Value JsonEncoder::floatValue(float value) const
{
    const FloatEncoding e = encodeFloat(value, m_style);
    switch (e.kind) {
    case FloatEncoding::Kind::Integer:
        return Value(e.integer);
    case FloatEncoding::Kind::Real:
        return Value(e.real);
    case FloatEncoding::Kind::Hex:
        break;
    }
    return Value(e.hex, rapidjson::SizeType(sizeof e.hex), m_allocator);
}

Value JsonEncoder::vec2Value(Vec2 value) const
{
    if (isCompactZeroVec2(value, m_style))
        return Value(0);
    Value object(rapidjson::kObjectType);
    addFloat(object, "x", value.x);
    addFloat(object, "y", value.y);
    return object;
}

Value JsonEncoder::pointListValue(const std::vector<Vec2>& points) const
{
    Value xs(rapidjson::kArrayType);
    Value ys(rapidjson::kArrayType);
    xs.Reserve(rapidjson::SizeType(points.size()), m_allocator);
    ys.Reserve(rapidjson::SizeType(points.size()), m_allocator);
    for (const Vec2& p : points) {
        xs.PushBack(floatValue(p.x), m_allocator);
        ys.PushBack(floatValue(p.y), m_allocator);
    }
    Value object(rapidjson::kObjectType);
    object.AddMember(keyRef("x"), xs, m_allocator);
    object.AddMember(keyRef("y"), ys, m_allocator);
    return object;
}

Value JsonEncoder::colorValue(const Color& color) const
{
    Value array(rapidjson::kArrayType);
    array.Reserve(4, m_allocator);
    array.PushBack(clampChannel(color.r), m_allocator);
    array.PushBack(clampChannel(color.g), m_allocator);
    array.PushBack(clampChannel(color.b), m_allocator);
    array.PushBack(clampChannel(color.a), m_allocator);
    return array;
}

Value JsonEncoder::stringValue(const QString& text) const
{
    const QByteArray utf8 = text.toUtf8();
    return Value(utf8.constData(), rapidjson::SizeType(utf8.size()), m_allocator);
}

Value JsonEncoder::stringListValue(const QStringList& texts) const
{
    Value array(rapidjson::kArrayType);
    array.Reserve(rapidjson::SizeType(texts.size()), m_allocator);
    for (const QString& text : texts)
        array.PushBack(stringValue(text), m_allocator);
    return array;
}

void JsonEncoder::add(Value& object, const char* key, Value&& value) const
{
    object.AddMember(keyRef(key), value, m_allocator);
}

void JsonEncoder::addFloat(Value& object, const char* key, float value) const
{
    add(object, key, floatValue(value));
}

void JsonEncoder::addVec2(Value& object, const char* key, Vec2 value) const
{
    add(object, key, vec2Value(value));
}

void JsonEncoder::addPointList(Value& object, const char* key, const std::vector<Vec2>& points) const
{
    add(object, key, pointListValue(points));
}

void JsonEncoder::addColor(Value& object, const char* key, const Color& color) const
{
    add(object, key, colorValue(color));
}

void JsonEncoder::addString(Value& object, const char* key, const QString& text) const
{
    add(object, key, stringValue(text));
}

void JsonEncoder::addBool(Value& object, const char* key, bool value) const
{
    add(object, key, Value(value));
}

void JsonEncoder::addInt(Value& object, const char* key, int value) const
{
    add(object, key, Value(value));
}

void JsonEncoder::addUint(Value& object, const char* key, unsigned value) const
{
    add(object, key, Value(value));
}

void JsonEncoder::addStringList(Value& object, const char* key, const QStringList& texts) const
{
    add(object, key, stringListValue(texts));
}

const Value* jsonMember(const Value& object, const char* key)
{
    if (!object.IsObject())
        return nullptr;
    const Value::ConstMemberIterator it = object.FindMember(key);
    if (it == object.MemberEnd() || it->value.IsNull())
        return nullptr;
    return &it->value;
}

float decodeFloat(const Value* value, float defaultValue)
{
    if (!value)
        return defaultValue;
    if (value->IsString()) {
        float result = defaultValue;
        floatFromHex(value->GetString(), value->GetStringLength(), &result);
        return result;
    }
    if (value->IsInt64())
        return float(value->GetInt64());
    if (value->IsUint64())
        return float(value->GetUint64());
    if (value->IsNumber())
        return floatFromDouble(value->GetDouble());
    return defaultValue;
}

Vec2 decodeVec2(const Value* value, Vec2 defaultValue)
{
    if (!value)
        return defaultValue;
    if (value->IsNumber())
        return Vec2{0, 0};
    if (!value->IsObject())
        return defaultValue;
    return Vec2{readFloat(*value, "x", defaultValue.x), readFloat(*value, "y", defaultValue.y)};
}

std::vector<Vec2> decodePointList(const Value* value)
{
    std::vector<Vec2> points;
    if (!value)
        return points;
    if (value->IsArray()) {
        points.reserve(value->Size());
        for (const Value& element : value->GetArray())
            points.push_back(decodeVec2(&element, Vec2{}));
        return points;
    }
    const Value* xs = jsonMember(*value, "x");
    const Value* ys = jsonMember(*value, "y");
    if (!xs || !ys || !xs->IsArray() || !ys->IsArray())
        return points;
    const rapidjson::SizeType count = std::min(xs->Size(), ys->Size());
    points.reserve(count);
    for (rapidjson::SizeType i = 0; i < count; ++i)
        points.push_back(Vec2{decodeFloat(&(*xs)[i], 0), decodeFloat(&(*ys)[i], 0)});
    return points;
}

Color decodeColor(const Value* value, const Color& defaultValue)
{
    if (!value || !value->IsArray())
        return defaultValue;
    int channels[4] = {defaultValue.r, defaultValue.g, defaultValue.b, defaultValue.a};
    const rapidjson::SizeType count = std::min<rapidjson::SizeType>(value->Size(), 4);
    for (rapidjson::SizeType i = 0; i < count; ++i)
        channels[i] = clampChannel(decodeInt(&(*value)[i], channels[i]));
    return Color{channels[0], channels[1], channels[2], channels[3]};
}

bool decodeBool(const Value* value, bool defaultValue)
{
    if (!value)
        return defaultValue;
    if (value->IsBool())
        return value->GetBool();
    if (value->IsNumber())
        return value->GetDouble() != 0;
    return defaultValue;
}

int decodeInt(const Value* value, int defaultValue)
{
    if (!value || !value->IsNumber())
        return defaultValue;
    if (value->IsInt())
        return value->GetInt();
    if (value->IsInt64())
        return value->GetInt64() < 0 ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    if (value->IsUint64())
        return std::numeric_limits<int>::max();
    return clampToInt(value->GetDouble());
}

unsigned decodeUint(const Value* value, unsigned defaultValue)
{
    if (!value || !value->IsUint())
        return defaultValue;
    return value->GetUint();
}

QString decodeString(const Value* value, const QString& defaultValue)
{
    if (!value || !value->IsString())
        return defaultValue;
    return QString::fromUtf8(value->GetString(), qsizetype(value->GetStringLength()));
}

QStringList decodeStringList(const Value* value)
{
    QStringList texts;
    if (!value || !value->IsArray())
        return texts;
    texts.reserve(qsizetype(value->Size()));
    for (const Value& element : value->GetArray())
        texts.append(decodeString(&element));
    return texts;
}

float readFloat(const Value& object, const char* key, float defaultValue)
{
    return decodeFloat(jsonMember(object, key), defaultValue);
}

Vec2 readVec2(const Value& object, const char* key, Vec2 defaultValue)
{
    return decodeVec2(jsonMember(object, key), defaultValue);
}

std::vector<Vec2> readPointList(const Value& object, const char* key)
{
    return decodePointList(jsonMember(object, key));
}

Color readColor(const Value& object, const char* key, const Color& defaultValue)
{
    return decodeColor(jsonMember(object, key), defaultValue);
}

bool readBool(const Value& object, const char* key, bool defaultValue)
{
    return decodeBool(jsonMember(object, key), defaultValue);
}

int readInt(const Value& object, const char* key, int defaultValue)
{
    return decodeInt(jsonMember(object, key), defaultValue);
}

unsigned readUint(const Value& object, const char* key, unsigned defaultValue)
{
    return decodeUint(jsonMember(object, key), defaultValue);
}

QString readString(const Value& object, const char* key, const QString& defaultValue)
{
    return decodeString(jsonMember(object, key), defaultValue);
}

QStringList readStringList(const Value& object, const char* key)
{
    return decodeStringList(jsonMember(object, key));
}

QString describeJsonValue(const Value* value)
{
    if (!value || value->IsNull())
        return QStringLiteral("null");
    if (value->IsString())
        return decodeString(value);
    if (value->IsBool())
        return value->GetBool() ? QStringLiteral("true") : QStringLiteral("false");
    if (value->IsInt64())
        return QString::number(value->GetInt64());
    if (value->IsUint64())
        return QString::number(value->GetUint64());
    if (value->IsNumber())
        return QString::number(value->GetDouble());
    return value->IsArray() ? QStringLiteral("array") : QStringLiteral("object");
}
