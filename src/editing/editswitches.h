#pragma once

/// Process-wide switches of the edit command framework. They are plain
/// flags: only the thread running a script or an undo step changes them, and
/// the document's script mutex keeps every other writer out meanwhile.
namespace EditSwitches
{
/// When false, commands do nothing on undo() and redo() (it is false only
/// while a command is being pushed, so the change is not applied twice).
extern bool s_runCommandScripts;
/// When false, scene-changing functions push no commands (they still make
/// the change). False while an undo or redo script runs.
extern bool s_recordUndoCommands;
/// Nesting depth of undo macros; only the outermost one reaches the stack.
extern int s_macroDepth;
/// Suppresses the "created:" log line of new commands (command-line mode).
extern bool s_quiet;
} // namespace EditSwitches

/// Sets a bool switch for a scope and restores its previous value after it.
class SwitchScope
{
public:
    /// Sets `flag` to `value` until the scope ends.
    SwitchScope(bool& flag, bool value) : m_flag(flag), m_previous(flag) { m_flag = value; }
    ~SwitchScope() { m_flag = m_previous; }
    SwitchScope(const SwitchScope&) = delete;
    SwitchScope& operator=(const SwitchScope&) = delete;

private:
    bool& m_flag;
    bool m_previous;
};
