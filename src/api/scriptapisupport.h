#pragma once

#include "api/scriptcolor.h"
#include "api/scripthandles.h"
#include "editing/scriptcommand.h"
#include "engine/scriptdocument.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <QString>

class MetaBody;
class MetaFixture;
class MetaImage;
class MetaItem;
class MetaJoint;
class MetaObject;
class MetaSampler;
class MetaWorld;

namespace AngelScript
{
}

// Shared pieces of the script API functions: the current document, handles
// for items, look-ups that report invalid handles, arrays for results, and
// the checked property setters that record edit commands.
namespace ScriptApi
{
/// The document scripts act on now, or null.
ScriptDocument* document();
/// Its scene, or null.
MetaWorld* world();

/// Records an already made change on the current document (see recordCommand).
template <class Command, class... Args>
void record(Args&&... args)
{
    if (ScriptDocument* doc = document())
        recordCommand<Command>(*doc, std::forward<Args>(args)...);
}

/// Handles for items (invalid for null).
ScriptBody bodyHandle(const MetaBody* body);
ScriptFixture fixtureHandle(const MetaFixture* fixture);
ScriptJoint jointHandle(const MetaJoint* joint);
ScriptImage imageHandle(const MetaImage* image);
ScriptSampler samplerHandle(const MetaSampler* sampler);
ScriptObject objectHandle(const MetaObject* object);
ScriptVertex vertexHandle(const MetaFixture* fixture, int index);
ScriptShape shapeHandle(const MetaFixture* fixture, int index);

/// The item a handle names in the current scene, or null (nothing logged).
MetaBody* find(const ScriptBody& handle);
MetaFixture* find(const ScriptFixture& handle);
MetaJoint* find(const ScriptJoint& handle);
MetaImage* find(const ScriptImage& handle);
MetaSampler* find(const ScriptSampler& handle);
MetaObject* find(const ScriptObject& handle);

/// As find, but a failed look-up logs "Script attempted to use invalid
/// <kind>" (or `message` when given) at ERROR level.
MetaBody* use(const ScriptBody& handle, const char* message = nullptr);
MetaFixture* use(const ScriptFixture& handle, const char* message = nullptr);
MetaJoint* use(const ScriptJoint& handle, const char* message = nullptr);
MetaImage* use(const ScriptImage& handle, const char* message = nullptr);
MetaSampler* use(const ScriptSampler& handle, const char* message = nullptr);
MetaObject* use(const ScriptObject& handle, const char* message = nullptr);

/// The engine of the running script (or of the current document).
AngelScript::asIScriptEngine* engine();
/// A new script array of the given declaration ("array<body>") and size, or
/// null when there is no engine.
AngelScript::CScriptArray* newArray(const char* declaration, unsigned size = 0);
/// Appends a value to a script array. The array's own InsertLast grows its
/// buffer by one element each time, so building a long array that way takes
/// quadratic time; this doubles the room whenever it is full.
void appendToArray(AngelScript::CScriptArray& array, void* value);
/// Builds an array of handles from items.
template <class Handle, class Items, class MakeHandle>
AngelScript::CScriptArray* handleArray(const char* declaration, const Items& items, MakeHandle make)
{
    AngelScript::CScriptArray* array = newArray(declaration);
    if (!array)
        return nullptr;
    for (const auto& item : items) {
        Handle handle = make(item);
        appendToArray(*array, &handle);
    }
    return array;
}

/// False (with a WARNING "Ignoring invalid value for %1::%2: %3") for NaN
/// and infinities.
bool isUsable(float value, const char* kindWord, const char* method);
/// isUsable for both components.
bool isUsable(Vec2 value, const char* kindWord, const char* method);

/// Checked setters of item fields: a non-finite value is refused, an equal
/// value changes nothing; otherwise the field is set and the matching
/// property command recorded with the item's look-up function and `setter`.
void setFloat(MetaItem& item, const char* setter, float& field, float value);
/// As setFloat, for a vector written as two floats.
void setVec(MetaItem& item, const char* setter, Vec2& field, Vec2 value);
/// As setFloat, for an integer.
void setInt(MetaItem& item, const char* setter, int& field, int value);
/// As setFloat, for a flag written as 0 or 1.
void setBool(MetaItem& item, const char* setter, bool& field, bool value);

/// As setFloat, for a text (recorded with SetItemPropertyStringCommand).
void setString(MetaItem& item, const char* setter, QString& field, const QString& value);
/// As setFloat, for a colour (recorded with SetItemPropertyColorCommand).
void setColor(MetaItem& item, const char* setter, Color& field, Color value);
/// As setFloat, for a reference to a body (recorded with the body's id, 0
/// for none, through SetItemPropertyUintCommand).
void setBodyRef(MetaItem& item, const char* setter, MetaBody*& field, MetaBody* value);

/// A script colour (0..1 floats, clamped; NaN as 0) as 0..255 channels.
Color toColor(const ScriptColor& color);
/// 0..255 channels as a script colour.
ScriptColor toScript(const Color& color);
/// Vectors between the script and the model.
inline Vec2 toVec(ScriptVec2 v) { return {v.x, v.y}; }
inline ScriptVec2 toScript(Vec2 v) { return {v.x, v.y}; }

/// Renames an item through the rename command (names that a scene file
/// cannot carry are refused).
void setName(MetaItem& item, const QString& name);

/// Selects or deselects an item, recording the command when the state changes.
void setSelected(MetaItem& item, bool selected);
/// True when the item is selected in the current document.
bool isSelected(const MetaItem& item);
} // namespace ScriptApi
