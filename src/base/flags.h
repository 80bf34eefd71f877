#pragma once

/// Process-wide switches shared across layers. They are set by the start-up
/// code and by the export machinery; reading them is cheap.
namespace AppFlags
{
/// True when the program runs as the command-line batch tool.
bool isBatchMode();
/// Marks the process as batch mode.
void setBatchMode(bool on);

/// The batch tool's verbose flag (progress lines of loads are written only when on).
bool isVerbose();
/// Sets the verbose flag.
void setVerbose(bool on);

/// The quiet flag: debug lines of the object cache are not written while it is set.
bool isQuiet();
/// Sets the quiet flag.
void setQuiet(bool on);

/// Suppresses the "Invalid settings" message boxes of shape refusals.
bool suppressRefusalDialogs();
/// Sets the suppression flag and returns its previous value.
bool setSuppressRefusalDialogs(bool on);

/// Records that a refusal happened while dialogs were suppressed (or no window existed).
bool invalidSettingsFlag();
/// Sets or clears the invalid-settings record.
void setInvalidSettingsFlag(bool on);

/// Set while an object file is being loaded into the object cache.
bool isLoadingObject();
/// Sets the loading-an-object flag and returns its previous value.
bool setLoadingObject(bool on);
} // namespace AppFlags
