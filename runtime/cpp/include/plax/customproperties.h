#pragma once

#include "plax/values.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace plax
{
/// The six value types of custom properties, in the order of CustomValue's alternatives.
enum class CustomPropertyType
{
    Int,
    Float,
    String,
    Vec2,
    Bool,
    Color,
};

/// The value of one custom property.
using CustomValue = std::variant<int, float, std::string, Vec2, bool, Color>;

/// One named custom property of an item or of the world.
struct CustomProperty
{
    std::string name;
    CustomValue value;

    /// The type of the value held.
    CustomPropertyType type() const { return static_cast<CustomPropertyType>(value.index()); }
};

/// The custom properties of one item, in file order. The typed getters give
/// the first property of that name and type, or the default when there is
/// none (a property of the same name but another type does not count).
class CustomProperties
{
public:
    /// Appends a property (names need not be unique).
    void add(std::string name, CustomValue value);

    /// All properties in file order.
    const std::vector<CustomProperty>& all() const { return m_properties; }
    /// True when there are none.
    bool empty() const { return m_properties.empty(); }
    /// The first property of that name whatever its type, or null.
    const CustomProperty* find(std::string_view name) const;
    /// True when a property of that name and type exists.
    bool has(std::string_view name, CustomPropertyType type) const;

    /// Typed getters: the value, or the default.
    int getInt(std::string_view name, int defaultValue = 0) const;
    /// See getInt.
    float getFloat(std::string_view name, float defaultValue = 0) const;
    /// See getInt.
    std::string getString(std::string_view name, const std::string& defaultValue = std::string()) const;
    /// See getInt.
    Vec2 getVec2(std::string_view name, Vec2 defaultValue = Vec2()) const;
    /// See getInt.
    bool getBool(std::string_view name, bool defaultValue = false) const;
    /// See getInt.
    Color getColor(std::string_view name, Color defaultValue = Color()) const;

private:
    template <typename T>
    const T* get(std::string_view name) const;

    std::vector<CustomProperty> m_properties;
};
} // namespace plax
