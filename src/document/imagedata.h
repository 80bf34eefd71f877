#pragma once

#include <QString>

class MetaImage;

/// Path of an image's file: relative paths are taken from the scene file's folder.
QString resolveImagePath(const MetaImage& image, const QString& sceneFilePath);

/// Reads the size of the image's file into its pixel width and height. A file
/// that cannot be read leaves both at 0 and logs a warning; returns success.
bool refreshImageData(MetaImage& image, const QString& sceneFilePath);
