#pragma once

// The value encodings shared by every JSON reader and writer of the program:
// floats, vec2, point lists, colours, strings and the checked readers of
// bools, ints and ids. Writers build rapidjson DOM values; member order is the
// order of the add calls.

#include "base/types.h"

#include <rapidjson/document.h>

#include <QString>
#include <QStringList>

#include <vector>

/// Allocator of the DOM values built by the writers.
using JsonAllocator = rapidjson::Document::AllocatorType;

/// How values are written. Readers accept every form regardless.
struct JsonStyle
{
    /// Floats as JSON reals (shortest text that reads back to the same float) instead of hex bit patterns.
    bool humanReadableFloats = false;
    /// Exactly 0.0 and 1.0 written as the integers 0 and 1.
    bool compactCommonFloats = true;
    /// The zero vector written as the integer 0.
    bool compactZeroVecs = true;
};

/// Eight upper-case hex digits of the single-precision bit pattern ("3FC00000" for 1.5).
QByteArray floatToHex(float value);
/// The same eight digits written into out (not terminated).
void writeFloatHex(float value, char out[8]);
/// Float from a bit-pattern string of one to eight hex digits; false (value untouched) when malformed.
bool floatFromHex(const char* text, size_t length, float* value);
/// Shortest decimal text that reads back to the same float ("0.1"); empty for NaN and infinities.
QByteArray floatToShortestText(float value);
/// Double to float without undefined behaviour: out-of-range values become infinities, NaN stays NaN.
float floatFromDouble(double value);

/// How one float is written in a style: the integer 0 or 1, eight hex
/// digits, or a real. Zero of either sign is zero: the integer 0, "00000000"
/// or the real 0.
struct FloatEncoding
{
    /// The three forms.
    enum class Kind
    {
        Integer,
        Hex,
        Real
    };
    /// The form chosen.
    Kind kind = Kind::Integer;
    /// The integer (0 or 1) of the Integer form.
    int integer = 0;
    /// The double whose shortest text reads back to the float (Real form).
    double real = 0;
    /// The digits of the Hex form.
    char hex[8] = {};
};

/// The form of one float in a style (see JsonEncoder::floatValue).
FloatEncoding encodeFloat(float value, const JsonStyle& style);
/// True when a vec2 is written as the integer 0 in the style (either zero counts).
bool isCompactZeroVec2(Vec2 value, const JsonStyle& style);

/// Builds DOM values in one style with one allocator. Keys passed to the add
/// functions must outlive the value (string literals): they are not copied.
class JsonEncoder
{
public:
    /// An encoder writing into values owned by the allocator.
    JsonEncoder(JsonAllocator& allocator, const JsonStyle& style) : m_allocator(allocator), m_style(style) {}

    /// The allocator values are built with.
    JsonAllocator& allocator() const { return m_allocator; }
    /// The style values are written in.
    const JsonStyle& style() const { return m_style; }

    /// A float: 0/1 integers, hex string or real, as the style says (NaN and infinities always hex).
    rapidjson::Value floatValue(float value) const;
    /// A vec2 as {"x","y"}, or the integer 0 for the zero vector.
    rapidjson::Value vec2Value(Vec2 value) const;
    /// A point list as one object with parallel "x" and "y" arrays.
    rapidjson::Value pointListValue(const std::vector<Vec2>& points) const;
    /// A colour as an array of four integers 0..255 (out-of-range channels clamped).
    rapidjson::Value colorValue(const Color& color) const;
    /// A string (UTF-8, copied).
    rapidjson::Value stringValue(const QString& text) const;
    /// An array of strings.
    rapidjson::Value stringListValue(const QStringList& texts) const;

    /// Appends a member holding a value built elsewhere.
    void add(rapidjson::Value& object, const char* key, rapidjson::Value&& value) const;
    /// Appends a float member.
    void addFloat(rapidjson::Value& object, const char* key, float value) const;
    /// Appends a vec2 member.
    void addVec2(rapidjson::Value& object, const char* key, Vec2 value) const;
    /// Appends a point-list member.
    void addPointList(rapidjson::Value& object, const char* key, const std::vector<Vec2>& points) const;
    /// Appends a colour member.
    void addColor(rapidjson::Value& object, const char* key, const Color& color) const;
    /// Appends a string member.
    void addString(rapidjson::Value& object, const char* key, const QString& text) const;
    /// Appends a bool member.
    void addBool(rapidjson::Value& object, const char* key, bool value) const;
    /// Appends an int member.
    void addInt(rapidjson::Value& object, const char* key, int value) const;
    /// Appends an unsigned member (ids).
    void addUint(rapidjson::Value& object, const char* key, unsigned value) const;
    /// Appends an array-of-strings member.
    void addStringList(rapidjson::Value& object, const char* key, const QStringList& texts) const;

private:
    JsonAllocator& m_allocator;
    JsonStyle m_style;
};

/// The member of an object, or null when the value is not an object, the member is missing or it is JSON null.
const rapidjson::Value* jsonMember(const rapidjson::Value& object, const char* key);

/// A float in any accepted form; null pointer or JSON null gives the default, as does a malformed string.
float decodeFloat(const rapidjson::Value* value, float defaultValue);
/// A vec2 from {"x","y"}; any number means (0,0); other types give the default.
Vec2 decodeVec2(const rapidjson::Value* value, Vec2 defaultValue);
/// A point list from parallel "x"/"y" arrays (the shorter length wins) or from an array of vec2.
std::vector<Vec2> decodePointList(const rapidjson::Value* value);
/// A colour from an array of up to four numbers, clamped to 0..255; missing channels keep the default.
Color decodeColor(const rapidjson::Value* value, const Color& defaultValue);
/// A bool (a number counts as true when not zero); other types give the default.
bool decodeBool(const rapidjson::Value* value, bool defaultValue);
/// An int; numbers outside the int range are clamped, other types give the default.
int decodeInt(const rapidjson::Value* value, int defaultValue);
/// An unsigned 32-bit integer (ids); anything else, negative or too large, gives the default.
unsigned decodeUint(const rapidjson::Value* value, unsigned defaultValue);
/// A string; other types give the default.
QString decodeString(const rapidjson::Value* value, const QString& defaultValue = QString());
/// The strings of an array; non-string elements become empty strings (positions are kept).
QStringList decodeStringList(const rapidjson::Value* value);

/// Member readers: decode the member named key of an object (see the decode functions).
float readFloat(const rapidjson::Value& object, const char* key, float defaultValue);
/// See decodeVec2.
Vec2 readVec2(const rapidjson::Value& object, const char* key, Vec2 defaultValue);
/// See decodePointList.
std::vector<Vec2> readPointList(const rapidjson::Value& object, const char* key);
/// See decodeColor.
Color readColor(const rapidjson::Value& object, const char* key, const Color& defaultValue);
/// See decodeBool.
bool readBool(const rapidjson::Value& object, const char* key, bool defaultValue);
/// See decodeInt.
int readInt(const rapidjson::Value& object, const char* key, int defaultValue);
/// See decodeUint.
unsigned readUint(const rapidjson::Value& object, const char* key, unsigned defaultValue);
/// See decodeString.
QString readString(const rapidjson::Value& object, const char* key, const QString& defaultValue = QString());
/// See decodeStringList.
QStringList readStringList(const rapidjson::Value& object, const char* key);

/// Short text describing a value for messages: a string's text, a number, or the type ("object", ...).
QString describeJsonValue(const rapidjson::Value* value);
