// Rows of the custom properties a scene defines for a kind of item.
#include "panels/propertyrows.h"

#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "model/metaworld.h"

namespace
{
using namespace PropertyRows;
using Type = PropertyDef::Type;

QVariant shown(const CustomValue& value)
{
    switch (value.index()) {
    case 0: return std::get<int>(value);
    case 1: return double(std::get<float>(value));
    case 2: return std::get<QString>(value);
    case 3: {
        const Vec2 v = std::get<Vec2>(value);
        return QStringLiteral("%1, %2").arg(double(v.x)).arg(double(v.y));
    }
    case 4: return std::get<bool>(value);
    default: return colorText(std::get<Color>(value));
    }
}

// The value typed into a row, as the property's type; false when it is not one.
bool parsed(CustomPropertyType type, const QVariant& input, CustomValue* value)
{
    bool ok = true;
    switch (type) {
    case CustomPropertyType::Int: *value = input.toInt(&ok); break;
    case CustomPropertyType::Float: {
        const float f = input.toFloat(&ok);
        ok = ok && std::isfinite(f);
        *value = f;
        break;
    }
    case CustomPropertyType::String: *value = input.toString(); break;
    case CustomPropertyType::Bool: *value = input.toBool(); break;
    case CustomPropertyType::Vec2: {
        const QStringList parts = input.toString().split(QLatin1Char(','));
        bool okY = false;
        const Vec2 v{parts.value(0).trimmed().toFloat(&ok), parts.value(1).trimmed().toFloat(&okY)};
        ok = ok && okY && parts.size() == 2 && std::isfinite(v.x) && std::isfinite(v.y);
        *value = v;
        break;
    }
    case CustomPropertyType::Color: {
        int c[4];
        ok = parseColor(input.toString(), c);
        *value = Color{c[0], c[1], c[2], c[3]};
        break;
    }
    }
    return ok;
}
} // namespace

std::vector<PropertyDef> customPropertyRows(const MetaWorld& world, ItemKind kind)
{
    std::vector<PropertyDef> rows;
    for (const CustomPropertyDef& def : world.customPropertyDefs) {
        if (def.itemClass != itemKindWord(kind))
            continue;
        CustomPropertyType type = CustomPropertyType::Int;
        if (!customPropertyTypeFromWord(def.type, &type))
            type = CustomPropertyType::Int;
        PropertyDef row;
        row.label = def.displayName.isEmpty() ? def.name : def.displayName;
        row.key = QStringLiteral("customProperties/") + def.name;
        const bool choice = type == CustomPropertyType::String && !def.comboboxEntries.isEmpty();
        switch (type) {
        case CustomPropertyType::Int: row.type = Type::Int; break;
        case CustomPropertyType::Float: row.type = Type::Float; break;
        case CustomPropertyType::Bool: row.type = Type::Bool; break;
        default: row.type = choice ? Type::Choice : Type::Text; break;
        }
        if (choice)
            row.choices = def.comboboxEntries;
        const QString name = def.name;
        const QStringList entries = def.comboboxEntries;
        row.get = [name, choice, entries](const MetaItem& item) -> QVariant {
            const CustomProperty* p = item.customProperties.find(name);
            if (!p)
                return QVariant();
            if (choice && p->value.index() == 2)
                return int(entries.indexOf(std::get<QString>(p->value)));
            return shown(p->value);
        };
        row.setAll = [name, type, choice, entries](EditorDocument& document, ItemKind k, const QVariant& input) {
            CustomValue value;
            const QVariant text = choice ? QVariant(entries.value(input.toInt())) : input;
            if (parsed(type, text, &value))
                SelectionEdits::setCustomProperty(document, k, name, value);
        };
        rows.push_back(std::move(row));
    }
    return rows;
}
