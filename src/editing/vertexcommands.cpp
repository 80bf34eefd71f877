#include "editing/vertexcommands.h"

#include "editing/scripttext.h"

namespace
{
QString vertexCall(ItemId fixtureId, int index, const QString& call)
{
    return QStringLiteral("getVertex(%1,%2).%3").arg(scriptUint(fixtureId), scriptInt(index), call);
}

QString addVertexText(ItemId fixtureId, int index, Vec2 p)
{
    return QStringLiteral("getFixture(%1).addVertex(%2, %3, %4);")
        .arg(scriptUint(fixtureId), scriptInt(index), scriptFloat(p.x), scriptFloat(p.y));
}

QString shapeCall(ItemId fixtureId, int index, const QString& call)
{
    return QStringLiteral("getShape(%1,%2).%3").arg(scriptUint(fixtureId), scriptInt(index), call);
}

QString pathCall(ItemId ownerId, int index, const QString& call)
{
    return QStringLiteral("getPath(%1,%2).%3").arg(scriptUint(ownerId), scriptInt(index), call);
}

QString pointCall(const char* method, int pointIndex, Vec2 p)
{
    return QStringLiteral("%1(%2, %3, %4);")
        .arg(QLatin1String(method), scriptInt(pointIndex), scriptFloat(p.x), scriptFloat(p.y));
}

QString deletePointCall(int pointIndex)
{
    return QStringLiteral("deleteControlPoint(%1);").arg(pointIndex);
}

QString setPos(Vec2 p)
{
    return QStringLiteral("setPos(%1, %2);").arg(scriptFloat(p.x), scriptFloat(p.y));
}
} // namespace

SelectVertexCommand::SelectVertexCommand(EditHost* document, ItemId fixtureId, int index)
    : ScriptCommand(document, vertexCall(fixtureId, index, QStringLiteral("select();")),
                    vertexCall(fixtureId, index, QStringLiteral("deselect();")), false)
{
}

DeselectVertexCommand::DeselectVertexCommand(EditHost* document, ItemId fixtureId, int index)
    : ScriptCommand(document, vertexCall(fixtureId, index, QStringLiteral("deselect();")),
                    vertexCall(fixtureId, index, QStringLiteral("select();")), false)
{
}

SetVertexPositionCommand::SetVertexPositionCommand(EditHost* document, ItemId fixtureId, int index, Vec2 oldPosition,
                                                   Vec2 newPosition)
    : ScriptCommand(document, vertexCall(fixtureId, index, setPos(newPosition)),
                    vertexCall(fixtureId, index, setPos(oldPosition)))
{
}

AddVertexCommand::AddVertexCommand(EditHost* document, ItemId fixtureId, int index, Vec2 position)
    : ScriptCommand(document, addVertexText(fixtureId, index, position),
                    vertexCall(fixtureId, index, QStringLiteral("delete();")))
{
}

DeleteVertexCommand::DeleteVertexCommand(EditHost* document, ItemId fixtureId, int index, Vec2 position)
    : ScriptCommand(document, vertexCall(fixtureId, index, QStringLiteral("delete();")),
                    addVertexText(fixtureId, index, position))
{
}

SetShapeTypeCommand::SetShapeTypeCommand(EditHost* document, ItemId fixtureId, int shapeIndex, ShapeType oldType,
                                         ShapeType newType)
    : ScriptCommand(document, shapeCall(fixtureId, shapeIndex, QStringLiteral("setType(%1);").arg(int(newType))),
                    shapeCall(fixtureId, shapeIndex, QStringLiteral("setType(%1);").arg(int(oldType))))
{
}

SetShapeRadiusCommand::SetShapeRadiusCommand(EditHost* document, ItemId fixtureId, int shapeIndex, float oldRadius,
                                             float newRadius)
    : ScriptCommand(document,
                    shapeCall(fixtureId, shapeIndex, QStringLiteral("setRadius(%1);").arg(scriptFloat(newRadius))),
                    shapeCall(fixtureId, shapeIndex, QStringLiteral("setRadius(%1);").arg(scriptFloat(oldRadius))))
{
}

SetPathTypeCommand::SetPathTypeCommand(EditHost* document, ItemId ownerId, int pathIndex, ShapeType oldType,
                                       ShapeType newType)
    : ScriptCommand(document, pathCall(ownerId, pathIndex, QStringLiteral("setType(%1);").arg(int(newType))),
                    pathCall(ownerId, pathIndex, QStringLiteral("setType(%1);").arg(int(oldType))))
{
}

SetPathRadiusCommand::SetPathRadiusCommand(EditHost* document, ItemId ownerId, int pathIndex, float oldRadius,
                                           float newRadius)
    : ScriptCommand(document,
                    pathCall(ownerId, pathIndex, QStringLiteral("setRadius(%1);").arg(scriptFloat(newRadius))),
                    pathCall(ownerId, pathIndex, QStringLiteral("setRadius(%1);").arg(scriptFloat(oldRadius))))
{
}

SetPathPropertyIntCommand::SetPathPropertyIntCommand(EditHost* document, ItemId ownerId, int pathIndex,
                                                     const QString& setter, int oldValue, int newValue)
    : ScriptCommand(document, pathCall(ownerId, pathIndex, QStringLiteral("%1(%2);").arg(setter).arg(newValue)),
                    pathCall(ownerId, pathIndex, QStringLiteral("%1(%2);").arg(setter).arg(oldValue)))
{
}

SetControlPointCommand::SetControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex, int pointIndex,
                                               Vec2 oldPosition, Vec2 newPosition)
    : ScriptCommand(document, pathCall(ownerId, pathIndex, pointCall("setControlPoint", pointIndex, newPosition)),
                    pathCall(ownerId, pathIndex, pointCall("setControlPoint", pointIndex, oldPosition)))
{
}

AddControlPointCommand::AddControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex, int pointIndex,
                                               Vec2 position)
    : ScriptCommand(document, pathCall(ownerId, pathIndex, pointCall("addControlPoint", pointIndex, position)),
                    pathCall(ownerId, pathIndex, deletePointCall(pointIndex)))
{
}

DeleteControlPointCommand::DeleteControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex,
                                                     int pointIndex, Vec2 position)
    : ScriptCommand(document, pathCall(ownerId, pathIndex, deletePointCall(pointIndex)),
                    pathCall(ownerId, pathIndex, pointCall("addControlPoint", pointIndex, position)))
{
}
