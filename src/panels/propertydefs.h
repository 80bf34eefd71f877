#pragma once

#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

class MetaItem;

/// One row of the properties panel: how to read a property of an item and
/// how to change it through the script API. Rows without a setter are shown
/// read-only.
struct PropertyDef
{
    /// Kind of editor a row uses.
    enum class Type
    {
        Text,
        Float,
        Int,
        Bool,
        Choice,
    };

    QString label;
    Type type = Type::Float;
    /// Entries of a Choice row, by value 0, 1, ...
    QStringList choices;
    /// The item's value (QString, double, int, bool; int for Choice).
    std::function<QVariant(const MetaItem&)> get;
    /// Changes one item (called inside a script-document scope and an undo macro); may be empty.
    std::function<void(const MetaItem&, const QVariant&)> set;
};

/// Rows for bodies.
std::vector<PropertyDef> bodyProperties();
/// Rows for fixtures.
std::vector<PropertyDef> fixtureProperties();
/// Rows for joints (read-only).
std::vector<PropertyDef> jointProperties();
/// Rows for images (read-only).
std::vector<PropertyDef> imageProperties();
