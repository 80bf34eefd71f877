#pragma once

#include <rapidjson/document.h>

#include <QByteArray>
#include <QString>

/// Serialises a value to UTF-8 text: compact on one line, or pretty printed
/// with three-space indentation, arrays of plain values on one line and a
/// final newline. Non-finite reals cannot be written and make the result
/// empty. The walk is recursive: meant for documents this program builds.
/// The layout is JsonTextWriter's.
QByteArray jsonToText(const rapidjson::Value& value, bool pretty);

/// Parses untrusted text (iteratively, so deep nesting cannot exhaust the
/// stack) into the document. A leading UTF-8 byte-order mark is skipped.
/// Returns false with the parser's message in error ("Invalid value. (at
/// offset 12)") when the text is not JSON.
bool parseJson(const QByteArray& text, rapidjson::Document* document, QString* error);

/// Like parseJson, but parses in place: the buffer is modified and must
/// outlive the document (its strings point into it). Faster for large files.
bool parseJsonInPlace(QByteArray& buffer, rapidjson::Document* document, QString* error);
