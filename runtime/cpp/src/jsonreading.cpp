#include "jsonreading.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace plax::detail
{
namespace
{
bool hexDigit(char c, unsigned* value)
{
    if (c >= '0' && c <= '9')
        *value = unsigned(c - '0');
    else if (c >= 'A' && c <= 'F')
        *value = unsigned(c - 'A' + 10);
    else if (c >= 'a' && c <= 'f')
        *value = unsigned(c - 'a' + 10);
    else
        return false;
    return true;
}

float floatFromBits(std::uint32_t bits)
{
    float f;
    static_assert(sizeof f == sizeof bits);
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

// A double narrowed without undefined behaviour: values beyond the largest
// float by half a unit or more become infinities, as rounding would make them.
float narrow(double d)
{
    constexpr double kMax = double(std::numeric_limits<float>::max());
    const double kOverflow = kMax + std::ldexp(1.0, 103);
    if (std::isnan(d))
        return std::numeric_limits<float>::quiet_NaN();
    if (std::fabs(d) >= kOverflow)
        return d > 0 ? std::numeric_limits<float>::infinity() : -std::numeric_limits<float>::infinity();
    if (std::fabs(d) > kMax)
        return d > 0 ? std::numeric_limits<float>::max() : -std::numeric_limits<float>::max();
    return float(d);
}
} // namespace

std::string Where::pointer() const
{
    std::vector<const Where*> chain;
    for (const Where* w = this; w && w->parent; w = w->parent)
        chain.push_back(w);
    if (chain.empty())
        return "/";
    std::string text;
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        text += '/';
        if ((*it)->key) {
            // JSON pointer escapes of "~" and "/".
            for (const char* c = (*it)->key; *c; ++c) {
                if (*c == '~')
                    text += "~0";
                else if (*c == '/')
                    text += "~1";
                else
                    text += *c;
            }
        } else {
            text += std::to_string((*it)->index);
        }
    }
    return text;
}

void fail(const Where& where, const std::string& what)
{
    throw ReadError{where.pointer() + ": " + what};
}

const char* describe(const Value& value)
{
    switch (value.GetType()) {
    case rapidjson::kNullType: return "null";
    case rapidjson::kFalseType:
    case rapidjson::kTrueType: return "a boolean";
    case rapidjson::kObjectType: return "an object";
    case rapidjson::kArrayType: return "an array";
    case rapidjson::kStringType: return "a string";
    case rapidjson::kNumberType: return "a number";
    }
    return "a value";
}

float readFloat(const Value& value, const Where& where, Finite finite)
{
    float result = 0;
    if (value.IsString()) {
        const char* text = value.GetString();
        const size_t length = value.GetStringLength();
        if (length < 1 || length > 8)
            fail(where, std::string("expected a float (eight hex digits), found the string \"") +
                            std::string(text, std::min<size_t>(length, 40)) + "\"");
        std::uint32_t bits = 0;
        for (size_t i = 0; i < length; ++i) {
            unsigned digit = 0;
            if (!hexDigit(text[i], &digit))
                fail(where, std::string("expected a float (eight hex digits), found the string \"") +
                                std::string(text, length) + "\"");
            bits = (bits << 4) | digit;
        }
        result = floatFromBits(bits);
    } else if (value.IsInt64()) {
        result = float(value.GetInt64());
    } else if (value.IsUint64()) {
        result = float(value.GetUint64());
    } else if (value.IsNumber()) {
        result = narrow(value.GetDouble());
    } else {
        fail(where, std::string("expected a float, found ") + describe(value));
    }
    if (finite == Finite::Required && !std::isfinite(result))
        fail(where, "expected a finite float");
    return result;
}

Vec2 readVec2(const Value& value, const Where& where, Finite finite)
{
    if (value.IsNumber()) {
        if (value.IsInt() ? value.GetInt() != 0 : value.GetDouble() != 0)
            fail(where, "expected a vector: an object with \"x\" and \"y\", or the number 0");
        return Vec2{};
    }
    if (!value.IsObject())
        fail(where, std::string("expected a vector, found ") + describe(value));
    Vec2 v;
    const auto x = value.FindMember("x");
    const auto y = value.FindMember("y");
    if (x == value.MemberEnd() || y == value.MemberEnd())
        fail(where, "expected a vector with both \"x\" and \"y\"");
    v.x = readFloat(x->value, where.member("x"), finite);
    v.y = readFloat(y->value, where.member("y"), finite);
    return v;
}

std::vector<Vec2> readPointList(const Value& value, const Where& where)
{
    std::vector<Vec2> points;
    if (value.IsArray()) {
        points.reserve(value.Size());
        size_t i = 0;
        for (const Value& element : value.GetArray()) {
            points.push_back(readVec2(element, where.element(i)));
            ++i;
        }
        return points;
    }
    if (!value.IsObject())
        fail(where, std::string("expected a point list, found ") + describe(value));
    const auto x = value.FindMember("x");
    const auto y = value.FindMember("y");
    if (x == value.MemberEnd() || y == value.MemberEnd())
        fail(where, "expected a point list with both \"x\" and \"y\" arrays");
    const Where wx = where.member("x"), wy = where.member("y");
    const auto xs = arrayOf(x->value, wx);
    const auto ys = arrayOf(y->value, wy);
    if (xs.Size() != ys.Size())
        fail(where, "the \"x\" and \"y\" arrays differ in length (" + std::to_string(xs.Size()) + " and " +
                        std::to_string(ys.Size()) + ")");
    points.resize(xs.Size());
    for (rapidjson::SizeType i = 0; i < xs.Size(); ++i) {
        points[i].x = readFloat(xs[i], wx.element(i));
        points[i].y = readFloat(ys[i], wy.element(i));
    }
    return points;
}

bool readBool(const Value& value, const Where& where)
{
    if (value.IsBool())
        return value.GetBool();
    if (value.IsNumber())
        return value.GetDouble() != 0;
    fail(where, std::string("expected true or false, found ") + describe(value));
}

long long readInt(const Value& value, const Where& where, long long lowest, long long highest)
{
    long long result = 0;
    if (value.IsInt64()) {
        result = value.GetInt64();
    } else if (value.IsNumber()) {
        const double d = value.GetDouble();
        if (!(d == std::floor(d)) || d < double(lowest) || d > double(highest))
            fail(where, "expected an integer from " + std::to_string(lowest) + " to " + std::to_string(highest));
        result = static_cast<long long>(d);
    } else {
        fail(where, std::string("expected an integer, found ") + describe(value));
    }
    if (result < lowest || result > highest)
        fail(where, "expected an integer from " + std::to_string(lowest) + " to " + std::to_string(highest) +
                        ", found " + std::to_string(result));
    return result;
}

std::string readString(const Value& value, const Where& where)
{
    if (!value.IsString())
        fail(where, std::string("expected a string, found ") + describe(value));
    return std::string(value.GetString(), value.GetStringLength());
}

Color readColor(const Value& value, const Where& where)
{
    const auto channels = arrayOf(value, where);
    if (channels.Size() < 3 || channels.Size() > 4)
        fail(where, "expected a colour: an array of three or four numbers 0..255");
    std::uint8_t c[4] = {255, 255, 255, 255};
    for (rapidjson::SizeType i = 0; i < channels.Size(); ++i) {
        if (!channels[i].IsNumber())
            fail(where.element(i), std::string("expected a number 0..255, found ") + describe(channels[i]));
        const double d = channels[i].GetDouble();
        c[i] = std::uint8_t(std::isnan(d) ? 0 : d < 0 ? 0 : d > 255 ? 255 : d);
    }
    return Color{c[0], c[1], c[2], c[3]};
}

std::vector<float> readFloatArray(const Value& value, const Where& where)
{
    const auto array = arrayOf(value, where);
    std::vector<float> out;
    out.reserve(array.Size());
    for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
        out.push_back(readFloat(array[i], where.element(i)));
    return out;
}

std::vector<int> readIntArray(const Value& value, const Where& where)
{
    const auto array = arrayOf(value, where);
    std::vector<int> out;
    out.reserve(array.Size());
    for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
        out.push_back(int(readInt(array[i], where.element(i), std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max())));
    return out;
}

void readCustomProperties(const Value& value, const Where& where, CustomProperties& out)
{
    const auto array = arrayOf(value, where);
    for (rapidjson::SizeType i = 0; i < array.Size(); ++i) {
        const Value& entry = array[i];
        const Where w = where.element(i);
        requireObject(entry, w);
        const auto name = entry.FindMember("name");
        if (name == entry.MemberEnd())
            fail(w, "a custom property needs a \"name\"");
        std::string propertyName = readString(name->value, w.member("name"));
        bool found = false;
        for (const auto& m : entry.GetObject()) {
            const char* key = m.name.GetString();
            const Where wv = w.member(key);
            if (std::strcmp(key, "int") == 0)
                out.add(propertyName, int(readInt(m.value, wv, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max())));
            else if (std::strcmp(key, "float") == 0)
                out.add(propertyName, readFloat(m.value, wv, Finite::Any));
            else if (std::strcmp(key, "string") == 0)
                out.add(propertyName, readString(m.value, wv));
            else if (std::strcmp(key, "vec2") == 0)
                out.add(propertyName, readVec2(m.value, wv, Finite::Any));
            else if (std::strcmp(key, "bool") == 0)
                out.add(propertyName, readBool(m.value, wv));
            else if (std::strcmp(key, "color") == 0)
                out.add(propertyName, readColor(m.value, wv));
            else
                continue;
            if (found)
                fail(w, "a custom property holds exactly one of \"int\", \"float\", \"string\", \"vec2\", \"bool\", "
                        "\"color\"");
            found = true;
        }
        if (!found)
            fail(w, "a custom property needs one of \"int\", \"float\", \"string\", \"vec2\", \"bool\", \"color\"");
    }
}

const Value::ConstArray arrayOf(const Value& value, const Where& where)
{
    if (!value.IsArray())
        fail(where, std::string("expected an array, found ") + describe(value));
    return value.GetArray();
}

void requireObject(const Value& value, const Where& where)
{
    if (!value.IsObject())
        fail(where, std::string("expected an object, found ") + describe(value));
}
} // namespace plax::detail
