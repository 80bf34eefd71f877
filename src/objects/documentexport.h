#pragma once

#include <QString>

class EditorDocument;

/// What an export writes.
enum class ExportKind
{
    RawInfo,     ///< the raw-info JSON (b2dJson format)
    SourceCode,  ///< C++ source: Box2D's dump of the same world
};

/// One export of a document to a file, as the editor and the batch tool make
/// it: the "Before export" hook scripts run, then the world is built (after
/// them, so what they change is exported) and written, raw info through the
/// scene's excluded properties and its export filter script, then the
/// "After export" hook scripts run and the scene's after-export system
/// command starts. Returns false only when the file could not be written:
/// a failing hook or command is reported and never fails the export.
bool exportDocument(EditorDocument& document, ExportKind kind, const QString& path);
