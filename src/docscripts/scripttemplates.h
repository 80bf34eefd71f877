#pragma once

#include "docscripts/documentscripts.h"

#include <QString>

/// The commented starting points that "Initialize new script" writes for
/// the three document scripts.
namespace ScriptTemplates
{
/// The template of a script: every function it may define, commented out,
/// with an example body, and an empty main so that compiling the file in
/// the script panel reports nothing missing.
QString text(DocumentScripts::Script script);
/// Writes the template into `path`. A file that cannot be written is
/// reported as "Could not open file '%1' for writing." (logged, and shown
/// in a box titled "P.L.A.X" in the editor); returns false then.
bool write(DocumentScripts::Script script, const QString& path);
} // namespace ScriptTemplates
