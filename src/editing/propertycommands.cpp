#include "editing/propertycommands.h"

#include "editing/scripttext.h"

namespace
{
QString itemSetter(const QString& getter, const QString& setter, ItemId id, const QString& value)
{
    return QStringLiteral("%1(%2).%3(%4);").arg(getter, scriptUint(id), setter, value);
}

QString vecText(Vec2 v)
{
    return scriptFloat(v.x) + QLatin1Char(',') + scriptFloat(v.y);
}

QString colorText(Color c)
{
    return QStringLiteral("%1,%2,%3,%4").arg(c.r).arg(c.g).arg(c.b).arg(c.a);
}

QString bitplaneText(int bit, const QString& name)
{
    return QStringLiteral("setCollisionBitplaneName(%1, '%2');").arg(QString::number(bit), escapeForScriptString(name));
}

QString twoFloats(const char* function, Vec2 v)
{
    return QStringLiteral("%1(%2, %3);").arg(QLatin1String(function), scriptFloat(v.x), scriptFloat(v.y));
}

QString worldSetter(const QString& setter, const QString& value)
{
    return QStringLiteral("%1(%2);").arg(setter, value);
}
} // namespace

SetItemPropertyIntCommand::SetItemPropertyIntCommand(EditHost* document, const QString& getter, const QString& setter,
                                                     ItemId id, qint64 oldValue, qint64 newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, scriptInt(newValue)),
                    itemSetter(getter, setter, id, scriptInt(oldValue)))
{
}

SetItemPropertyUintCommand::SetItemPropertyUintCommand(EditHost* document, const QString& getter,
                                                       const QString& setter, ItemId id, quint64 oldValue,
                                                       quint64 newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, scriptUint(newValue)),
                    itemSetter(getter, setter, id, scriptUint(oldValue)))
{
}

SetItemPropertyFloatCommand::SetItemPropertyFloatCommand(EditHost* document, const QString& getter,
                                                         const QString& setter, ItemId id, float oldValue,
                                                         float newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, scriptFloat(newValue)),
                    itemSetter(getter, setter, id, scriptFloat(oldValue)))
{
}

SetItemPropertyVecCommand::SetItemPropertyVecCommand(EditHost* document, const QString& getter, const QString& setter,
                                                     ItemId id, Vec2 oldValue, Vec2 newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, vecText(newValue)),
                    itemSetter(getter, setter, id, vecText(oldValue)))
{
}

SetItemPropertyStringCommand::SetItemPropertyStringCommand(EditHost* document, const QString& getter,
                                                           const QString& setter, ItemId id, const QString& oldValue,
                                                           const QString& newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, QLatin1Char('\'') + escapeForScriptString(newValue) + QLatin1Char('\'')),
                    itemSetter(getter, setter, id, QLatin1Char('\'') + escapeForScriptString(oldValue) + QLatin1Char('\'')))
{
}

SetItemPropertyColorCommand::SetItemPropertyColorCommand(EditHost* document, const QString& getter,
                                                         const QString& setter, ItemId id, Color oldValue,
                                                         Color newValue)
    : ScriptCommand(document, itemSetter(getter, setter, id, colorText(newValue)),
                    itemSetter(getter, setter, id, colorText(oldValue)))
{
}

SetCollisionBitPlaneNameCommand::SetCollisionBitPlaneNameCommand(EditHost* document, int bit, const QString& oldName,
                                                                 const QString& newName)
    : ScriptCommand(document, bitplaneText(bit, newName), bitplaneText(bit, oldName))
{
}

SetCursorPositionCommand::SetCursorPositionCommand(EditHost* document, Vec2 oldPosition, Vec2 newPosition)
    : ScriptCommand(document, twoFloats("setCursor", newPosition), twoFloats("setCursor", oldPosition), false)
{
}

SetWorldGravityCommand::SetWorldGravityCommand(EditHost* document, Vec2 oldGravity, Vec2 newGravity)
    : ScriptCommand(document, twoFloats("setGravity", newGravity), twoFloats("setGravity", oldGravity))
{
}

SetWorldPropertyIntCommand::SetWorldPropertyIntCommand(EditHost* document, const QString& setter, qint64 oldValue,
                                                       qint64 newValue)
    : ScriptCommand(document, worldSetter(setter, scriptInt(newValue)), worldSetter(setter, scriptInt(oldValue)))
{
}

SetWorldPropertyFloatCommand::SetWorldPropertyFloatCommand(EditHost* document, const QString& setter, float oldValue,
                                                           float newValue)
    : ScriptCommand(document, worldSetter(setter, scriptFloat(newValue)), worldSetter(setter, scriptFloat(oldValue)))
{
}
