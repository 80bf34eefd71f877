#pragma once

#include "base/types.h"

#include <QString>
#include <QStringList>

#include <variant>
#include <vector>

/// The six value types of custom properties, in the order of CustomValue's alternatives.
enum class CustomPropertyType : int
{
    Int,
    Float,
    String,
    Vec2,
    Bool,
    Color,
};

/// Value of one custom property.
using CustomValue = std::variant<int, float, QString, Vec2, bool, Color>;

/// Word of a type as used in files and scripts: "int", "float", "string", "vec2", "bool", "color".
QString customPropertyTypeWord(CustomPropertyType type);
/// Type for a word; false when the word is none of the six.
bool customPropertyTypeFromWord(const QString& word, CustomPropertyType* type);

/// A named custom property value of an item or of the world.
struct CustomProperty
{
    QString name;
    CustomValue value;

    /// Type of the value held.
    CustomPropertyType type() const { return static_cast<CustomPropertyType>(value.index()); }
    friend bool operator==(const CustomProperty&, const CustomProperty&) = default;
};

/// The custom property values of one item, in the order they were set.
class CustomProperties
{
public:
    /// The value named so, or null.
    const CustomProperty* find(const QString& name) const;
    /// Sets (replacing any value of the same name, whatever its type).
    void set(const QString& name, CustomValue value);
    /// Removes the named value; returns whether one existed.
    bool remove(const QString& name);
    /// All values in order.
    const std::vector<CustomProperty>& values() const { return m_values; }
    /// True when there are no values.
    bool empty() const { return m_values.empty(); }
    /// Removes everything.
    void clear() { m_values.clear(); }

    friend bool operator==(const CustomProperties&, const CustomProperties&) = default;

private:
    std::vector<CustomProperty> m_values;
};

/// Definition of a custom property for one item class (shown in the property tables).
struct CustomPropertyDef
{
    QString itemClass;      ///< "body", "fixture", ... or "world"
    QString name;
    QString displayName;
    QString type;           ///< type word, kept as read
    QStringList comboboxEntries;

    friend bool operator==(const CustomPropertyDef&, const CustomPropertyDef&) = default;
};
