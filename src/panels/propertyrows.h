#pragma once

#include "base/types.h"
#include "panels/propertydefs.h"

#include <QCoreApplication>

// Helpers for writing property rows: a row reads a field of one item kind
// and writes it through a script API setter on that kind's handle.
namespace PropertyRows
{
/// The panel's translation of a label.
inline QString tr(const char* text)
{
    return QCoreApplication::translate("PropertiesPanel", text);
}

/// A row over items of type `Item`.
template <class Item>
PropertyDef row(const char* label, PropertyDef::Type type, std::function<QVariant(const Item&)> get,
                std::function<void(const Item&, const QVariant&)> set = {}, QStringList choices = {})
{
    PropertyDef def;
    def.label = tr(label);
    def.type = type;
    def.choices = std::move(choices);
    def.get = [get](const MetaItem& item) { return get(static_cast<const Item&>(item)); };
    if (set)
        def.set = [set](const MetaItem& item, const QVariant& value) { set(static_cast<const Item&>(item), value); };
    return def;
}

/// The same row, shown only for items the predicate accepts.
template <class Item>
PropertyDef only(PropertyDef def, std::function<bool(const Item&)> applies)
{
    def.applies = [applies](const MetaItem& item) { return applies(static_cast<const Item&>(item)); };
    return def;
}

/// A colour as text "r, g, b, a" (0 to 255 each).
inline QString colorText(const Color& c)
{
    return QStringLiteral("%1, %2, %3, %4").arg(c.r).arg(c.g).arg(c.b).arg(c.a);
}

/// A colour read from "r, g, b, a" (alpha optional); false when it is not one.
inline bool parseColor(const QString& text, int rgba[4])
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() < 3 || parts.size() > 4)
        return false;
    rgba[3] = 255;
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        rgba[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || rgba[i] < 0 || rgba[i] > 255)
            return false;
    }
    return true;
}
} // namespace PropertyRows
