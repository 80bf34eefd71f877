#pragma once

#include <QStringList>

/// How the program runs, chosen from its command line before any Qt
/// application object exists.
struct LaunchMode
{
    /// The interactive editor, or the command-line batch tool.
    enum class Kind
    {
        Editor,
        Batch,
    };
    Kind kind = Kind::Editor;
    /// For the editor: the scene and raw-info files named on the command line,
    /// as absolute paths in the order given (empty: none).
    QStringList files;
};

/// Chooses the mode for the arguments (argv[0] is the program). The options
/// Qt's windowing takes for itself are passed over. No other argument: the
/// editor. Nothing but existing scene or raw-info files (".plax" or ".json",
/// not starting with "-"): the editor with those files, as a desktop shell
/// starts it. Any other argument list: the batch tool.
LaunchMode chooseLaunchMode(int argc, const char* const argv[]);

/// Whether `argument` names a file the editor opens from the command line: an
/// existing regular file ending in ".plax" or ".json" (any case) whose name
/// does not start with "-".
bool isFileToOpen(const QString& argument);
