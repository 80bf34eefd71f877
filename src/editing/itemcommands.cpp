#include "editing/itemcommands.h"

#include "editing/scripttext.h"

namespace
{
QString selectText(ItemKind kind, ItemId id, const char* method)
{
    return QStringLiteral("get%1(%2).%3();").arg(itemKindDisplayName(kind)).arg(id).arg(QLatin1String(method));
}

QString nameText(ItemKind kind, ItemId id, const QString& name)
{
    return QStringLiteral("get%1(%2).setName(\"%3\");").arg(itemKindDisplayName(kind)).arg(id).arg(name);
}

QString addText(ItemKind kind, ItemId id, const QString& json)
{
    return QStringLiteral("add%1(%2, '%3');").arg(itemKindDisplayName(kind)).arg(id).arg(escapeForScriptString(json));
}

QString deleteText(ItemKind kind, ItemId id)
{
    return QStringLiteral("get%1(%2).delete();").arg(itemKindDisplayName(kind)).arg(id);
}

QString addFixtureText(ItemId bodyId, ItemId fixtureId, const QString& json)
{
    return QStringLiteral("getBody(%1).addFixture(%2, '%3');").arg(bodyId).arg(fixtureId).arg(escapeForScriptString(json));
}
} // namespace

SelectCommand::SelectCommand(EditHost* document, ItemKind kind, ItemId id)
    : ScriptCommand(document, selectText(kind, id, "select"), selectText(kind, id, "deselect"), false)
{
}

DeselectCommand::DeselectCommand(EditHost* document, ItemKind kind, ItemId id)
    : ScriptCommand(document, selectText(kind, id, "deselect"), selectText(kind, id, "select"), false)
{
}

SetNameCommand::SetNameCommand(EditHost* document, ItemKind kind, ItemId id, const QString& oldName,
                               const QString& newName)
    : ScriptCommand(document, nameText(kind, id, newName), nameText(kind, id, oldName))
{
}

AddBodyCommand::AddBodyCommand(EditHost* document, ItemId id, const QString& json)
    : ScriptCommand(document, addText(ItemKind::Body, id, json), deleteText(ItemKind::Body, id))
{
}

DeleteBodyCommand::DeleteBodyCommand(EditHost* document, ItemId id, const QString& json)
    : ScriptCommand(document, deleteText(ItemKind::Body, id), addText(ItemKind::Body, id, json))
{
}

AddFixtureCommand::AddFixtureCommand(EditHost* document, ItemId bodyId, ItemId fixtureId, const QString& json)
    : ScriptCommand(document, addFixtureText(bodyId, fixtureId, json), deleteText(ItemKind::Fixture, fixtureId))
{
}

DeleteFixtureCommand::DeleteFixtureCommand(EditHost* document, ItemId bodyId, ItemId fixtureId, const QString& json)
    : ScriptCommand(document, deleteText(ItemKind::Fixture, fixtureId), addFixtureText(bodyId, fixtureId, json))
{
}

AddItemCommand::AddItemCommand(EditHost* document, ItemKind kind, ItemId id, const QString& json)
    : ScriptCommand(document, addText(kind, id, json), deleteText(kind, id))
{
}

DeleteItemCommand::DeleteItemCommand(EditHost* document, ItemKind kind, ItemId id, const QString& json)
    : ScriptCommand(document, deleteText(kind, id), addText(kind, id, json))
{
}

ReverseFixureWindingCommand::ReverseFixureWindingCommand(EditHost* document, ItemId fixtureId)
    : ScriptCommand(document, QStringLiteral("getFixture(%1).reverseWinding();").arg(fixtureId),
                    QStringLiteral("getFixture(%1).reverseWinding();").arg(fixtureId))
{
}
