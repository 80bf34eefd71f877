#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// The absolute path of a file named by a scene item (an image's, a
/// sampler's): a relative name is taken from the folder of the scene file
/// (`sceneFilePath`); an absolute one stands as it is. Empty for an empty name.
QString resolveSceneFile(const QString& file, const QString& sceneFilePath);

/// The pixel size of an image file without decoding it; an invalid size
/// (and `error` set) when the file cannot be read as an image.
QSize readImageSize(const QString& path, QString* error = nullptr);

/// Reads an image file scaled to `size` while decoding, so that a huge file
/// never has to fit in memory at full size. The result is ARGB32
/// (premultiplied alpha is not used). A null image (and `error` set) when
/// the file is missing, truncated or not an image.
QImage readImageScaled(const QString& path, QSize size, QString* error = nullptr);
