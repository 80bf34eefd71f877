#pragma once

#include <QString>
#include <QStringList>

/// Expands `#include "name"` lines of a script text in place.
///
/// An include line is a newline, optional white space, `#include`, white
/// space, a double-quoted name, optional white space and a newline; callers
/// therefore put a newline in front of the text so that an include on its
/// first line is found. Each pass takes the first include line, resolves its
/// name (a relative name against the directory of `includerPath`), reads that
/// file as UTF-8 and expands it recursively with its own path as includer,
/// then replaces EVERY include line of the text by "\n" + that text + "\n".
/// Two separate include lines found in one pass thus both receive the first
/// file; a line directly following a replaced one is found in the next pass.
/// A path already in `alreadyIncluded` is replaced by "\n\n" with the warning
/// "Ignoring redundant inclusion of file '%1'"; a missing or unreadable file
/// yields empty text. Resolved paths are appended to `alreadyIncluded`.
void preprocessScriptIncludes(const QString& includerPath, QStringList& alreadyIncluded, QString& text);
