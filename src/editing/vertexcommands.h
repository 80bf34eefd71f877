#pragma once

#include "editing/scriptcommand.h"
#include "model/metashape.h"

// Commands on the vertices and shapes of fixtures, and on the paths and
// control points of samplers.

/// "getVertex(%1,%2).select();" Does not modify the scene.
class SelectVertexCommand : public ScriptCommand
{
public:
    /// Selection of vertex `index` of fixture `fixtureId`.
    SelectVertexCommand(EditHost* document, ItemId fixtureId, int index);
};

/// "getVertex(%1,%2).deselect();" Does not modify the scene.
class DeselectVertexCommand : public ScriptCommand
{
public:
    /// Deselection of vertex `index` of fixture `fixtureId`.
    DeselectVertexCommand(EditHost* document, ItemId fixtureId, int index);
};

/// "getVertex(%1,%2).setPos(%3, %4);"
class SetVertexPositionCommand : public ScriptCommand
{
public:
    /// Moves a vertex (body coordinates).
    SetVertexPositionCommand(EditHost* document, ItemId fixtureId, int index, Vec2 oldPosition, Vec2 newPosition);
};

/// "getFixture(%1).addVertex(%2, %3, %4);", undone by "getVertex(%1,%2).delete();".
class AddVertexCommand : public ScriptCommand
{
public:
    /// Inserts a vertex at `index`.
    AddVertexCommand(EditHost* document, ItemId fixtureId, int index, Vec2 position);
};

/// "getVertex(%1,%2).delete();", undone by "getFixture(%1).addVertex(%2, %3, %4);".
class DeleteVertexCommand : public ScriptCommand
{
public:
    /// Removes the vertex at `index` (which was at `position`).
    DeleteVertexCommand(EditHost* document, ItemId fixtureId, int index, Vec2 position);
};

/// "getShape(%1,%2).setType(%3);"
class SetShapeTypeCommand : public ScriptCommand
{
public:
    /// Changes the type of shape `shapeIndex` of a fixture.
    SetShapeTypeCommand(EditHost* document, ItemId fixtureId, int shapeIndex, ShapeType oldType, ShapeType newType);
};

/// "getShape(%1,%2).setRadius(%3);"
class SetShapeRadiusCommand : public ScriptCommand
{
public:
    /// Changes the radius of shape `shapeIndex` of a fixture.
    SetShapeRadiusCommand(EditHost* document, ItemId fixtureId, int shapeIndex, float oldRadius, float newRadius);
};

/// "getPath(%1,%2).setType(%3);"
class SetPathTypeCommand : public ScriptCommand
{
public:
    /// Changes the type of path `pathIndex` of sampler `ownerId`.
    SetPathTypeCommand(EditHost* document, ItemId ownerId, int pathIndex, ShapeType oldType, ShapeType newType);
};

/// "getPath(%1,%2).setRadius(%3);"
class SetPathRadiusCommand : public ScriptCommand
{
public:
    /// Changes the radius of a path.
    SetPathRadiusCommand(EditHost* document, ItemId ownerId, int pathIndex, float oldRadius, float newRadius);
};

/// "getPath(%1,%2).%4(%3);" with an integer.
class SetPathPropertyIntCommand : public ScriptCommand
{
public:
    /// `setter` such as "setMaxPoints".
    SetPathPropertyIntCommand(EditHost* document, ItemId ownerId, int pathIndex, const QString& setter, int oldValue,
                              int newValue);
};

/// "getPath(%1,%2).setControlPoint(%5, %3, %4);"
class SetControlPointCommand : public ScriptCommand
{
public:
    /// Moves control point `pointIndex` of a path.
    SetControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex, int pointIndex, Vec2 oldPosition,
                           Vec2 newPosition);
};

/// "getPath(%1,%2).addControlPoint(%5, %3, %4);", undone by deleteControlPoint of that point.
class AddControlPointCommand : public ScriptCommand
{
public:
    /// Inserts control point `pointIndex` of a path.
    AddControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex, int pointIndex, Vec2 position);
};

/// "getPath(%1,%2).deleteControlPoint(%3);", undone by addControlPoint.
class DeleteControlPointCommand : public ScriptCommand
{
public:
    /// Removes control point `pointIndex` (which was at `position`).
    DeleteControlPointCommand(EditHost* document, ItemId ownerId, int pathIndex, int pointIndex, Vec2 position);
};
