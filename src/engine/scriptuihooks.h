#pragma once

#include <QString>

#include <functional>

/// What the script machinery asks of the interface. The core has no widgets:
/// the main window installs these at start-up; every one may be left empty
/// (batch mode, tests), in which case the step is skipped. Hooks marked
/// "any thread" may be called from the script worker thread and must hand
/// their work to the interface thread themselves.
struct ScriptUiHooks
{
    /// Shows the busy indicator with a text (interface thread).
    std::function<void(const QString& text)> showBusy;
    /// Hides the busy indicator (interface thread).
    std::function<void()> hideBusy;
    /// Empties the script output panel before a compile or run (interface thread).
    std::function<void()> clearOutput;
    /// Suppresses (true) or allows (false) scene repainting around the event
    /// processing done while a script runs (interface thread).
    std::function<void(bool suppressed)> setRepaintSuppressed;
    /// Marks the row of a compile error in the script editor (any thread).
    std::function<void(int row)> markErrorRow;
    /// Absolute path of the script library's current script file, or empty
    /// when the live script of the document is to be compiled (any thread).
    std::function<QString()> currentLibraryScriptFile;
};

/// Access to the installed interface hooks.
namespace ScriptUi
{
/// Installs the hooks (replacing earlier ones). Call before any script runs.
void setHooks(ScriptUiHooks hooks);
/// The installed hooks.
const ScriptUiHooks& hooks();
} // namespace ScriptUi
