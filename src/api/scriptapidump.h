#pragma once

#include <angelscript.h>

#include <QStringList>

/// Lists everything registered on an engine as declarations: object types
/// with their behaviours, properties and methods, global functions,
/// function definitions, enumerations and global properties. One entry per
/// line, sorted, so that two engines (or two versions of the program) can be
/// compared line by line. Used by the help browser and to keep the scripting
/// API from changing unnoticed.
QStringList describeScriptApi(AngelScript::asIScriptEngine* engine);
