#pragma once

#include "api/scripthandles.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <string>

// The `world` handle, world settings, collision bitplane names, custom
// property definitions and the editor state functions of plaxscript.
namespace WorldApi
{
ScriptWorld getWorld();
ScriptVec2 getGravity();
void setGravity(float x, float y);
void setGravityV(ScriptVec2 g);
/// Steps per second of the simulation (refused unless above 0).
void setSimulationStepsPerSecond(float hz);
/// Iterations per step (refused when negative).
void setSimulationPositionIterations(int iterations);
void setSimulationVelocityIterations(int iterations);
/// Names collision bit 0..31.
void setCollisionBitplaneName(int bit, const std::string& name);
std::string getCollisionBitplaneName(int bit);

/// Defines a custom property for an item class ("body", ..., "world");
/// false when the class or type word is unknown or the name is taken.
bool addCustomProperty(const std::string& itemClass, const std::string& name, const std::string& displayName,
                       const std::string& type);
/// Removes a definition; false when there is none.
bool removeCustomProperty(const std::string& itemClass, const std::string& name);
/// Renames a definition and sets its display name.
bool setCustomPropertyNames(const std::string& itemClass, const std::string& name, const std::string& newName,
                            const std::string& newDisplayName);
/// Names of the definitions of a class.
AngelScript::CScriptArray* getCustomProperties(const std::string& itemClass);
/// Inserts a choice into a definition's list at an index (appends for -1 or past the end).
bool insertCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name,
                                       const std::string& entry, int index);
bool appendCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name,
                                       const std::string& entry);
/// Removes the entry at `index` of a definition's combo box entries; false
/// (with a warning) when there is no such definition or entry.
bool removeCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name, int index);

ScriptVec2 getCursor();
void setCursor(float x, float y);
void setCursorV(ScriptVec2 p);
ScriptVec2 getMousePos();
void setViewCenter(float x, float y);
void setViewCenterV(ScriptVec2 p);
void setViewHeight(float height);
ScriptVec2 getViewCenter();
float getViewHeight();
float getViewPixelHeight();
std::string getCurrentEditMode();
bool isCtrlKeyDown();
bool isAltKeyDown();
std::string getCurrentActionMenuFolder();
} // namespace WorldApi
