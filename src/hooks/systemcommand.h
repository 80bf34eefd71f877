#pragma once

#include <QChar>
#include <QString>
#include <QStringList>

/// The four values a system command can name with placeholders: the folder
/// and name of the scene file and of the exported file.
struct PlaceholderValues
{
    QString plaxDir;     ///< "%{PLAXDIR}": folder of the scene file
    QString exportDir;   ///< "%{EXPORTDIR}": folder of the exported file
    QString plaxFile;    ///< "%{PLAXFILE}": the scene file's name
    QString exportFile;  ///< "%{EXPORTFILE}": the exported file's name

    /// The values for a scene file and an export file (absolute or relative paths).
    static PlaceholderValues of(const QString& sceneFile, const QString& exportFile);
    /// The same with every "/" replaced by `separator`.
    PlaceholderValues withSeparator(QChar separator) const;
};

/// A system command ready to start: a program and its arguments, and the
/// folder to start it in.
struct ResolvedSystemCommand
{
    QString program;
    QStringList arguments;
    QString workingDirectory;
    /// The command as the user reads it, with the placeholders filled in.
    QString display;
    /// Why the command cannot be started safely, empty when it can.
    QString error;
};

/// The placeholders "%{PLAXDIR}", "%{EXPORTDIR}", "%{PLAXFILE}" and
/// "%{EXPORTFILE}" (blanks allowed inside the braces, as in "%{ PLAXDIR }")
/// and how commands that use them are run.
namespace SystemCommand
{
/// The placeholders, in the order they are replaced.
QStringList placeholderNames();
/// The label of a placeholder in the export settings ("Folder containing
/// .plax file", ...).
QString placeholderLabel(const QString& name);

/// The text with every placeholder replaced by its value, for showing
/// ("Resolved command: %1") and for paths. With `nativeSeparators`, "/" in
/// the values becomes the platform's separator first. The text is scanned
/// once, so a value that itself looks like a placeholder stays as it is.
QString resolve(const QString& text, const PlaceholderValues& values, bool nativeSeparators);

/// The command line `command` as the shell script that runs it, with each
/// placeholder turned into a reference to a positional parameter ($1
/// PLAXDIR, $2 EXPORTDIR, $3 PLAXFILE, $4 EXPORTFILE) quoted for where it
/// stands: "${1}" outside quotes, ${1} inside double quotes and '"${1}"'
/// inside single quotes. The values are handed to the shell as separate
/// arguments and only ever expanded as parameters, never read as shell text,
/// so a file name with blanks, quotes, ';', '$' or backquotes cannot break
/// the command or run anything else. A placeholder after a backslash is left
/// as written (the backslash quotes its '%').
QString shellScript(const QString& command);

/// Everything needed to start `command` in `directory` (placeholders
/// allowed; a relative directory starts from the exported file's folder, an
/// empty one is that folder): "/bin/sh -c <script> plax-hook <values...>".
ResolvedSystemCommand prepare(const QString& command, const QString& directory, const PlaceholderValues& values,
                              bool nativeSeparators);
} // namespace SystemCommand
