#pragma once

#include <angelscript.h>

/// Registers the whole plaxscript API on a new engine, in its fixed order and
/// with its log lines ("Initializing script types", "Registering script
/// types: vec2", ...). Returns false when any registration failed (each
/// failure has been logged).
bool registerScriptApi(AngelScript::asIScriptEngine* engine);
