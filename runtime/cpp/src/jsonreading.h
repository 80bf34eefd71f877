#pragma once

// Decoding of the raw-info value encodings from a RapidJSON DOM, with errors
// that name the member by its JSON pointer.

#include "plax/customproperties.h"
#include "plax/values.h"

#include <rapidjson/document.h>

#include <string>
#include <vector>

namespace plax::detail
{
using rapidjson::Value;

/// Where a value sits in the document: a chain of member names and array
/// positions kept on the stack, turned into a JSON pointer only for a message.
struct Where
{
    const Where* parent = nullptr;
    const char* key = nullptr;   ///< member name, or null for an array position
    size_t index = 0;

    /// The member `name` of this place.
    Where member(const char* name) const { return Where{this, name, 0}; }
    /// The element `i` of this place.
    Where element(size_t i) const { return Where{this, nullptr, i}; }
    /// The JSON pointer ("/body/3/fixture/0/friction"); "/" for the root.
    std::string pointer() const;
};

/// The error a read stops with; caught where the read started.
struct ReadError
{
    std::string message;
};

/// Stops the read: "<pointer>: <what>".
[[noreturn]] void fail(const Where& where, const std::string& what);

/// A short description of a value's type for messages ("an array", "a string").
const char* describe(const Value& value);

/// Whether a float member must be finite.
enum class Finite
{
    Required,
    Any,
};

/// A float: a number, or a string of one to eight hex digits of the bit pattern.
float readFloat(const Value& value, const Where& where, Finite finite = Finite::Required);
/// A vector {"x","y"}, or the number 0 for the zero vector.
Vec2 readVec2(const Value& value, const Where& where, Finite finite = Finite::Required);
/// A point list: {"x": [...], "y": [...]} of equal length, or an array of vectors.
std::vector<Vec2> readPointList(const Value& value, const Where& where);
/// true or false (a number counts as true when not zero).
bool readBool(const Value& value, const Where& where);
/// An integral number within [lowest, highest].
long long readInt(const Value& value, const Where& where, long long lowest, long long highest);
/// A string.
std::string readString(const Value& value, const Where& where);
/// An array of three or four numbers, each clamped to 0..255.
Color readColor(const Value& value, const Where& where);
/// An array of floats.
std::vector<float> readFloatArray(const Value& value, const Where& where);
/// An array of integers.
std::vector<int> readIntArray(const Value& value, const Where& where);
/// The array of custom property records.
void readCustomProperties(const Value& value, const Where& where, CustomProperties& out);

/// The value itself when it is an array, else stops.
const Value::ConstArray arrayOf(const Value& value, const Where& where);
/// Stops unless the value is an object.
void requireObject(const Value& value, const Where& where);
} // namespace plax::detail
