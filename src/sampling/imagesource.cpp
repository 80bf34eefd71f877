#include "sampling/imagesource.h"

#include "sampling/pngscaledreader.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

QString resolveSceneFile(const QString& file, const QString& sceneFilePath)
{
    if (file.isEmpty())
        return QString();
    if (QFileInfo(file).isAbsolute() || sceneFilePath.isEmpty())
        return QFileInfo(file).absoluteFilePath();
    return QFileInfo(QFileInfo(sceneFilePath).absoluteDir(), file).absoluteFilePath();
}

QSize readImageSize(const QString& path, QString* error)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid() && error)
        *error = reader.errorString();
    return size;
}

QImage readImageScaled(const QString& path, QSize size, QString* error)
{
    // PNG files shrink while decoding on our own reader: several times
    // faster than decoding through Qt, and never holding the whole picture.
    bool handled = false;
    QImage shrunk = readPngShrunk(path, size, &handled, error);
    if (handled)
        return shrunk;
    QImageReader reader(path);
    const QSize full = reader.size();
    if (!full.isValid()) {
        if (error)
            *error = reader.errorString();
        return QImage();
    }
    if (size.isValid() && size != full)
        reader.setScaledSize(size);
    QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = reader.errorString();
        return QImage();
    }
    if (size.isValid() && image.size() != size)
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return image.convertToFormat(QImage::Format_ARGB32);
}
