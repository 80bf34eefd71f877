#pragma once

#include <QString>

#include <functional>

/// What a document's script runs ask of the document after a run. The
/// document installs these; any left empty is skipped.
struct DocumentScriptHooks
{
    /// Rebuilds the fixtures of the items a run of the live script changed.
    std::function<void()> rebuildChangedFixtures;
    /// Performs an update the document deferred while a background run was busy.
    std::function<void()> performDeferredUpdate;
};
