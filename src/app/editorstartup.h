#pragma once

#include "app/workingfolder.h"

#include <QStringList>

class MainWindow;

/// What the editor's start-up learnt before its main window existed.
struct EditorStart
{
    /// Where it works (already the current directory).
    WorkingFolder folder;
    /// The installed default configuration, or empty.
    QString installedConfig;
    /// Scene files named on the command line (absolute paths).
    QStringList files;
    /// The command-line arguments after the program name, as given.
    QStringList arguments;
};

/// The editor's start-up once its main window is shown: the start-up lines,
/// the working-folder report, the check for the default action menu, the
/// script API check, "Ready", the documents (the command line's files, or
/// those of the last session), the tips. When the default action menu is
/// missing or the working folder could not be entered, the options dialog is
/// queued to open on the working directory at the end of start-up, once the
/// event loop runs; returns whether it was.
bool startEditor(MainWindow& window, const EditorStart& start);

/// Opens the options dialog on the working directory. When the user sets
/// another one, it is entered at once (seeded from `installedConfig` when it
/// has no config folder) and the action menus and script library are read
/// from it again.
void showWorkingDirectoryOptions(MainWindow& window, const QString& installedConfig);
