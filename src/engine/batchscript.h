#pragma once

#include <QString>

class ScriptDocument;

/// Runs one script file of the batch tool (`-s`) against a document.
///
/// The caller has checked that `absolutePath` names an existing regular file.
/// The file is read as UTF-8, one newline is put in front of it and its
/// #include lines are expanded with the file's path as includer; the result
/// (without that leading newline) becomes the document's live script, which
/// is compiled and, if that succeeded, run.
///
/// `*compiled` (if not null) tells whether the script was read and compiled;
/// when it is false the caller reports "Failed to compile script '%1'." and
/// ends the batch with exit code 1 (the compiler errors are in the log
/// already). The return value is true only when the script also ran to its
/// end; a script that compiled but raised an exception or was aborted
/// returns false with `*compiled` true, and the batch goes on with the next
/// step. Runs synchronously on the calling thread.
bool compileAndRunBatchScript(ScriptDocument& document, const QString& absolutePath, bool* compiled);
