#pragma once

#include <QString>

/// The working folder: the current directory the program runs in, where the
/// "config" folder (action menus, script library, script hooks) is looked for.
struct WorkingFolder
{
    /// Which folder was chosen.
    enum class Source
    {
        Configured,  ///< the "Environment - working directory" preference
        StartFolder, ///< the folder the program was started in
        UserFolder,  ///< userWorkingFolder(), the per-user default of the editor
    };
    Source source = Source::StartFolder;
    /// The preference as read (empty when none is configured).
    QString configured;
    /// Whether the current directory was changed to the chosen folder; false
    /// for the start folder and when changing failed.
    bool changed = false;
    /// The folder that could not be made current (configured or per-user), or empty.
    QString failed;
    /// Files of the default configuration copied into the folder at this start.
    int seededFiles = 0;
    /// Where they were copied from.
    QString seededFrom;
    /// Why seeding failed, or empty.
    QString seedError;
};

/// The default action menu the editor needs, relative to the working folder.
inline constexpr const char* kDefaultActionMenuLayout = "config/actionMenu/default/layout.json";

/// The installed default configuration: the "config" folder under the
/// program's data folder (`relativeToProgram` is that data folder relative to
/// the program's own folder, "../share/plax" for an installed program). Empty
/// when there is none.
QString installedConfigFolder(const QString& programFolder, const QString& relativeToProgram);

/// Copies the default configuration `from` (a "config" folder) into
/// `folder`/config when `folder` has no "config" yet; a folder that has one
/// is never touched, so the user's files are never overwritten. The copy is
/// made beside it under another name and renamed into place, so an
/// interrupted copy leaves no half "config". Returns the number of files
/// copied (0 when `folder` already had a config), or -1 with `*error` set.
int seedConfiguration(const QString& from, const QString& folder, QString* error);

/// Batch runs: the configured working directory made current when one is set;
/// otherwise the start folder.
WorkingFolder applyConfiguredWorkingFolder();

/// The editor: the configured working directory when one is set; otherwise
/// the start folder when it holds the default action menu, else the per-user
/// folder (created when missing). A configured or per-user folder that has
/// no "config" folder yet is seeded from `installedConfig` (when not empty).
WorkingFolder prepareEditorWorkingFolder(const QString& installedConfig);

/// Makes `path` the working folder as the preferences dialog asks at start-up:
/// the current directory, seeded from `installedConfig` like a configured one.
WorkingFolder changeWorkingFolder(const QString& path, const QString& installedConfig);

/// Logs where the program works: the start-up lines about the working directory
/// and the copied default configuration.
void reportWorkingFolder(const WorkingFolder& folder);
