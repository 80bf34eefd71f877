#pragma once

#include "editing/scriptcommand.h"

// Commands that set one property of an item or of the world. The item is
// named by its look-up function ("getBody", "getFixture", ...) and id; redo
// calls the setter with the new value, undo with the old one.

/// "%3(%1).%4(%2);" with a signed integer.
class SetItemPropertyIntCommand : public ScriptCommand
{
public:
    /// `getter` such as "getFixture", `setter` such as "setFilterGroupIndex".
    SetItemPropertyIntCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                              qint64 oldValue, qint64 newValue);
};

/// "%3(%1).%4(%2);" with an unsigned integer.
class SetItemPropertyUintCommand : public ScriptCommand
{
public:
    /// As SetItemPropertyIntCommand, with unsigned values.
    SetItemPropertyUintCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                               quint64 oldValue, quint64 newValue);
};

/// "%3(%1).%4(%2);" with a float.
class SetItemPropertyFloatCommand : public ScriptCommand
{
public:
    /// As SetItemPropertyIntCommand, with float values.
    SetItemPropertyFloatCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                                float oldValue, float newValue);
};

/// "%3(%1).%4(%2,%5);" with a vector.
class SetItemPropertyVecCommand : public ScriptCommand
{
public:
    /// As SetItemPropertyIntCommand, with vectors.
    SetItemPropertyVecCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                              Vec2 oldValue, Vec2 newValue);
};

/// "%1(%2).%3('%4');" with a text.
class SetItemPropertyStringCommand : public ScriptCommand
{
public:
    /// As SetItemPropertyIntCommand, with texts (escaped for the script).
    SetItemPropertyStringCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                                 const QString& oldValue, const QString& newValue);
};

/// "%1(%2).%3(%4);" with a colour written as "r,g,b,a".
class SetItemPropertyColorCommand : public ScriptCommand
{
public:
    /// As SetItemPropertyIntCommand, with colours.
    SetItemPropertyColorCommand(EditHost* document, const QString& getter, const QString& setter, ItemId id,
                                Color oldValue, Color newValue);
};

/// "setCollisionBitplaneName(%1, '%2');"
class SetCollisionBitPlaneNameCommand : public ScriptCommand
{
public:
    /// Renames collision bit `bit`.
    SetCollisionBitPlaneNameCommand(EditHost* document, int bit, const QString& oldName, const QString& newName);
};

/// "setCursor(%1, %2);" Does not modify the scene.
class SetCursorPositionCommand : public ScriptCommand
{
public:
    /// Moves the cursor.
    SetCursorPositionCommand(EditHost* document, Vec2 oldPosition, Vec2 newPosition);
};

/// "setGravity(%1, %2);"
class SetWorldGravityCommand : public ScriptCommand
{
public:
    /// Changes the world's gravity.
    SetWorldGravityCommand(EditHost* document, Vec2 oldGravity, Vec2 newGravity);
};

/// "%1(%2);" with a world setter and an integer.
class SetWorldPropertyIntCommand : public ScriptCommand
{
public:
    /// `setter` such as "setSimulationVelocityIterations".
    SetWorldPropertyIntCommand(EditHost* document, const QString& setter, qint64 oldValue, qint64 newValue);
};

/// "%1(%2);" with a world setter and a float.
class SetWorldPropertyFloatCommand : public ScriptCommand
{
public:
    /// `setter` such as "setSimulationStepsPerSecond".
    SetWorldPropertyFloatCommand(EditHost* document, const QString& setter, float oldValue, float newValue);
};
