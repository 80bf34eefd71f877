#pragma once

#include <rapidjson/document.h>

#include <QString>

#include <functional>

/// Reads a JSON file with rapidjson's parser straight from the file, a piece
/// at a time (no copy of the text is kept), building a DOM of the document
/// except for the elements of one array: the array under `arrayKey` in the
/// object under `outerKey` at the top (the first of each). Those elements are
/// handed to `element` one by one, in order, and forgotten; the DOM holds an
/// empty array in their place. Past a few dozen elements, where the process
/// may use more than one core, they are handed over on a helper thread while
/// the parser reads on (a bounded number ahead), so `element` must not touch
/// what the caller uses before this returns; every call has returned when
/// this returns. The text is parsed as parseJson parses it (a leading
/// byte-order mark skipped, iteratively, the same messages and offsets).
/// False, with the parser's message in `error`, when the file is not JSON;
/// elements handed over before the error was found stay handed over.
bool streamJsonFile(const QString& path, const char* outerKey, const char* arrayKey,
                    const std::function<void(const rapidjson::Value&)>& element, rapidjson::Document* rest,
                    QString* error);
