#pragma once

#include <QString>

#include <functional>

/// What a document's script runs need from the document's editing side. The
/// undo stack is not the script engine's business: the document installs
/// these, and any left empty is skipped.
struct DocumentScriptHooks
{
    /// True while command recording is on (scene changes become edit commands).
    std::function<bool()> isRecordingCommands;
    /// Opens an undo macro on the document's undo stack.
    std::function<void(const QString& text)> beginUndoMacro;
    /// Closes the macro opened by beginUndoMacro.
    std::function<void()> endUndoMacro;
    /// Rebuilds the fixtures of the items a run of the live script changed.
    std::function<void()> rebuildChangedFixtures;
    /// Performs an update the document deferred while a background run was busy.
    std::function<void()> performDeferredUpdate;
};
