#pragma once

#include <angelscript.h>

/// The engine's message callback: reports compiler messages to the log.
/// Warnings and information are logged at WARNING, errors at ERROR; messages
/// beginning with "Compiling void plaxscript" are dropped. The row is
/// adjusted by the current line offset (ScriptState::lineOffset) and the
/// message logged as "Line %d, col %d: %s", or alone when it has no position.
/// Error rows are passed to the interface's markErrorRow hook.
void scriptMessageCallback(const AngelScript::asSMessageInfo* message, void* param);
