#include "editing/custompropertycommands.h"

#include "editing/scripttext.h"

namespace
{
QString quoted(const QString& text)
{
    return QLatin1Char('\'') + escapeForScriptString(text) + QLatin1Char('\'');
}

QString call(const char* function, const QStringList& texts)
{
    QStringList args;
    for (const QString& text : texts)
        args << quoted(text);
    return QStringLiteral("%1(%2);").arg(QLatin1String(function), args.join(QLatin1Char(',')));
}

QString clearText(const QString& itemExpression, const QString& name)
{
    return itemExpression + QStringLiteral(".clearCustomProperty(%1);").arg(quoted(name));
}

QString color1(int channel)
{
    return scriptFloat(float(channel) / 255.0f);
}
} // namespace

QString customValueSetterText(const QString& itemExpression, const QString& name, const CustomValue& value,
                              bool undoOfClear)
{
    const QString n = quoted(name);
    switch (CustomPropertyType(value.index())) {
    case CustomPropertyType::Int:
        return itemExpression + QStringLiteral(".setCustomInt(%1,%2);").arg(n, scriptInt(std::get<int>(value)));
    case CustomPropertyType::Float:
        return itemExpression + QStringLiteral(".setCustomFloat(%1,%2);").arg(n, scriptFloat(std::get<float>(value)));
    case CustomPropertyType::String:
        return itemExpression + QStringLiteral(".setCustomString(%1,%2);").arg(n, quoted(std::get<QString>(value)));
    case CustomPropertyType::Bool:
        return itemExpression + QStringLiteral(".setCustomBool(%1,%2);").arg(n, std::get<bool>(value) ? QStringLiteral("1") : QStringLiteral("0"));
    case CustomPropertyType::Vec2: {
        const Vec2 v = std::get<Vec2>(value);
        return QStringLiteral("{vec2 plaxscript_tmp_v;plaxscript_tmp_v.set(%3,%4); %1.setCustomVec2(%2,plaxscript_tmp_v);}")
            .arg(itemExpression, n, scriptFloat(v.x), scriptFloat(v.y));
    }
    case CustomPropertyType::Color: {
        const Color c = std::get<Color>(value);
        if (undoOfClear)
            return itemExpression + QStringLiteral(".setCustomColor(%1,mc1(%2,%3,%4,%5));")
                                        .arg(n, color1(c.r), color1(c.g), color1(c.b), color1(c.a));
        return QStringLiteral("{color plaxscript_tmp_v;plaxscript_tmp_v.set255(%3,%4,%5,%6); %1.setCustomColor(%2,plaxscript_tmp_v);}")
            .arg(itemExpression, n, scriptInt(c.r), scriptInt(c.g), scriptInt(c.b), scriptInt(c.a));
    }
    }
    return QString();
}

AddCustomPropertyCommand::AddCustomPropertyCommand(EditHost* document, const QString& itemClass, const QString& name,
                                                   const QString& displayName, const QString& type)
    : ScriptCommand(document, call("addCustomProperty", {itemClass, name, displayName, type}),
                    call("removeCustomProperty", {itemClass, name}))
{
}

namespace
{
QString insertEntryText(const QString& itemClass, const QString& name, const QString& entry, int index)
{
    return QStringLiteral("insertCustomPropertyComboboxEntry(%1,%2,%3,%4);")
        .arg(quoted(itemClass), quoted(name), quoted(entry), scriptInt(index));
}

QString removeEntryText(const QString& itemClass, const QString& name, int index)
{
    return QStringLiteral("removeCustomPropertyComboboxEntry(%1,%2,%3);")
        .arg(quoted(itemClass), quoted(name), scriptInt(index));
}
} // namespace

RemoveCustomPropertyCommand::RemoveCustomPropertyCommand(EditHost* document, const QString& itemClass,
                                                         const QString& name, const QString& displayName,
                                                         const QString& type)
    : ScriptCommand(document, call("removeCustomProperty", {itemClass, name}),
                    call("addCustomProperty", {itemClass, name, displayName, type}))
{
}

InsertComboboxEntryCommand::InsertComboboxEntryCommand(EditHost* document, const QString& itemClass,
                                                       const QString& name, const QString& entry, int index)
    : ScriptCommand(document, insertEntryText(itemClass, name, entry, index), removeEntryText(itemClass, name, index))
{
}

RemoveComboboxEntryCommand::RemoveComboboxEntryCommand(EditHost* document, const QString& itemClass,
                                                       const QString& name, const QString& entry, int index)
    : ScriptCommand(document, removeEntryText(itemClass, name, index), insertEntryText(itemClass, name, entry, index))
{
}

SetCustomPropertyNamesCommand::SetCustomPropertyNamesCommand(EditHost* document, const QString& itemClass,
                                                             const QString& oldName, const QString& oldDisplayName,
                                                             const QString& newName, const QString& newDisplayName)
    : ScriptCommand(document, call("setCustomPropertyNames", {itemClass, oldName, newName, newDisplayName}),
                    call("setCustomPropertyNames", {itemClass, newName, oldName, oldDisplayName}))
{
}

SetCustomPropertyValueCommand::SetCustomPropertyValueCommand(EditHost* document, const MetaItem* item,
                                                             const QString& name, bool hadValue,
                                                             const CustomValue& oldValue, const CustomValue& newValue)
    : ScriptCommand(document, customValueSetterText(scriptToObtainMetaItem(item), name, newValue),
                    hadValue ? customValueSetterText(scriptToObtainMetaItem(item), name, oldValue)
                             : clearText(scriptToObtainMetaItem(item), name))
{
}

ClearCustomPropertyValueCommand::ClearCustomPropertyValueCommand(EditHost* document, const MetaItem* item,
                                                                 const QString& name, const CustomValue& value)
    : ScriptCommand(document, clearText(scriptToObtainMetaItem(item), name),
                    customValueSetterText(scriptToObtainMetaItem(item), name, value, true))
{
}
