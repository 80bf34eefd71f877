#pragma once

#include <QSettings>

#include <memory>

/// The application settings: an INI file in user scope, organisation
/// "quoxel2d", application "plax".
std::unique_ptr<QSettings> openAppSettings();

/// The per-user folder the editor works in when no working directory is
/// configured and the folder it was started in has no default action menu:
/// "quoxel2d/plax" under the user's data folder (XDG_DATA_HOME, by default
/// ~/.local/share).
QString userWorkingFolder();

/// Settings keys not owned by one subsystem.
namespace SettingsKeys
{
/// Working directory made current at start-up. Empty: batch runs keep the
/// current one; the editor keeps it when it holds the default action menu and
/// otherwise uses userWorkingFolder().
inline constexpr const char* kWorkingDirectory = "workspace/workingdirectory";
/// Whether DEBUG messages are echoed to the console in batch mode and shown
/// by the editor's message log from the start (plax.log holds them anyway).
inline constexpr const char* kDebugOutput = "workspace/debugoutput";
/// Whether the documents open at the last exit are reopened at start-up.
inline constexpr const char* kReopenRecentDocuments = "workspace/reopenrecentdocuments";
/// The recent-files list.
inline constexpr const char* kRecentFiles = "workspace/recentfiles";
} // namespace SettingsKeys
