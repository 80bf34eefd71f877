#pragma once

#include "editing/scriptcommand.h"
#include "model/customproperties.h"

class MetaItem;

// Commands on custom property definitions and on the custom property values
// of items and of the world. The item is named by scriptToObtainMetaItem (a
// null item is the world).

/// "addCustomProperty('%1','%2','%3','%4');", undone by "removeCustomProperty('%1','%2');".
class AddCustomPropertyCommand : public ScriptCommand
{
public:
    /// A definition for `itemClass` ("body", ...) with its name, display name and type word.
    AddCustomPropertyCommand(EditHost* document, const QString& itemClass, const QString& name,
                             const QString& displayName, const QString& type);
};

/// "removeCustomProperty('%1','%2');", undone by addCustomProperty (the
/// world brings back the removed definition's combo box entries with it).
class RemoveCustomPropertyCommand : public ScriptCommand
{
public:
    /// Removal of a definition that had this display name and type.
    RemoveCustomPropertyCommand(EditHost* document, const QString& itemClass, const QString& name,
                                const QString& displayName, const QString& type);
};

/// "insertCustomPropertyComboboxEntry('%1','%2','%3',%4);", undone by
/// "removeCustomPropertyComboboxEntry('%1','%2',%4);".
class InsertComboboxEntryCommand : public ScriptCommand
{
public:
    /// `entry` inserted at `index` of the entries of a definition.
    InsertComboboxEntryCommand(EditHost* document, const QString& itemClass, const QString& name,
                               const QString& entry, int index);
};

/// "removeCustomPropertyComboboxEntry('%1','%2',%3);", undone by inserting
/// the entry at its place again.
class RemoveComboboxEntryCommand : public ScriptCommand
{
public:
    /// The entry `entry` removed from `index` of a definition's entries.
    RemoveComboboxEntryCommand(EditHost* document, const QString& itemClass, const QString& name,
                               const QString& entry, int index);
};

/// "setCustomPropertyNames('%1','%2','%3','%4');" (class, current name, new name, new display name).
class SetCustomPropertyNamesCommand : public ScriptCommand
{
public:
    /// Renames a definition from (oldName, oldDisplayName) to (newName, newDisplayName).
    SetCustomPropertyNamesCommand(EditHost* document, const QString& itemClass, const QString& oldName,
                                  const QString& oldDisplayName, const QString& newName,
                                  const QString& newDisplayName);
};

/// Sets a custom property value with the typed setter; undone by the setter
/// with the old value, or by clearCustomProperty when there was none.
class SetCustomPropertyValueCommand : public ScriptCommand
{
public:
    /// A value set on `item` (null: the world).
    SetCustomPropertyValueCommand(EditHost* document, const MetaItem* item, const QString& name, bool hadValue,
                                  const CustomValue& oldValue, const CustomValue& newValue);
};

/// "%1.clearCustomProperty('%2');", undone by the typed setter with the cleared value.
class ClearCustomPropertyValueCommand : public ScriptCommand
{
public:
    /// Clears `name` on `item` (null: the world), which held `value`.
    ClearCustomPropertyValueCommand(EditHost* document, const MetaItem* item, const QString& name,
                                    const CustomValue& value);
};

/// The typed setter statement for a value on an item expression. With
/// `undoOfClear`, a colour is written as a floating-point mc1() call instead
/// of the integer set255 block.
QString customValueSetterText(const QString& itemExpression, const QString& name, const CustomValue& value,
                              bool undoOfClear = false);
