#pragma once

#include "model/itemkind.h"

#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

class EditorDocument;
class MetaItem;
class MetaWorld;

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
    /// Whether the row belongs to an item (joint rows depend on the joint
    /// type); empty means every item. A row shows when it belongs to every
    /// selected item.
    std::function<bool(const MetaItem&)> applies;
    /// Changes every selected item of the kind at once, as one undo step of
    /// its own; used instead of `set` when given (custom properties).
    std::function<void(EditorDocument&, ItemKind, const QVariant&)> setAll;
};

/// Rows for bodies.
std::vector<PropertyDef> bodyProperties();
/// Rows for fixtures.
std::vector<PropertyDef> fixtureProperties();
/// Rows for joints: the common ones and those of each joint type.
std::vector<PropertyDef> jointProperties();
/// Rows for images.
std::vector<PropertyDef> imageProperties();
/// Rows for samplers.
std::vector<PropertyDef> samplerProperties();
/// Rows for object instances.
std::vector<PropertyDef> objectProperties();
/// Rows for the custom properties a scene defines for a kind of item.
std::vector<PropertyDef> customPropertyRows(const MetaWorld& world, ItemKind kind);
