#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Reads a PNG file shrunk to `size` while decoding: rows are decoded one at
/// a time and averaged into the output's pixels (every source pixel counts
/// towards exactly one output pixel), so the whole picture is never held and
/// nothing is converted at full size. Handles 8- and 16-bit grey, palette,
/// RGB and RGBA files with or without transparency chunks.
///
/// Sets `*handled` to false, and returns a null image, for what it does not
/// take on (not a PNG, interlaced, or `size` larger than the file in either
/// direction): the caller reads those another way. A PNG it takes on but
/// cannot decode gives a null image, `*handled` true and the reason in
/// `error`. The result is `QImage::Format_ARGB32`.
QImage readPngShrunk(const QString& path, QSize size, bool* handled, QString* error);
