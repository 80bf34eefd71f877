#pragma once

#include "model/customproperties.h"

class MetaItem;
class ScriptRegistrar;
struct ScriptBody;
struct ScriptFixture;
struct ScriptImage;
struct ScriptJoint;
struct ScriptObject;
struct ScriptSampler;
struct ScriptWorld;

/// Where a handle's custom property values live: an item, or the world
/// (item null). `values` is null when the handle is invalid.
struct CustomPropertyTarget
{
    MetaItem* item = nullptr;
    CustomProperties* values = nullptr;
};

/// The target of each handle type (an invalid handle is reported).
CustomPropertyTarget customTarget(const ScriptWorld& handle);
CustomPropertyTarget customTarget(const ScriptBody& handle);
CustomPropertyTarget customTarget(const ScriptFixture& handle);
CustomPropertyTarget customTarget(const ScriptJoint& handle);
CustomPropertyTarget customTarget(const ScriptImage& handle);
CustomPropertyTarget customTarget(const ScriptSampler& handle);
CustomPropertyTarget customTarget(const ScriptObject& handle);

/// Sets a value on a target, recording the set command (with the old value,
/// or none when the target had no value of that name).
void setCustomValue(const CustomPropertyTarget& target, const QString& name, const CustomValue& value);
/// Clears a value on a target, recording the clear command; nothing when unset.
void clearCustomValue(const CustomPropertyTarget& target, const QString& name);

/// Registers the custom property method set on a handle type: "string[]&
/// getCustomProperties()", hasCustomProperty, getCustomPropertyType, the
/// typed getters with defaults, the typed setters and clearCustomProperty.
template <class Handle>
void registerCustomPropertyMethods(ScriptRegistrar& reg, const char* typeName);
