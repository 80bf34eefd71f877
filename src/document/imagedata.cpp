#include "document/imagedata.h"

#include "base/log.h"
#include "model/metaimage.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

QString resolveImagePath(const MetaImage& image, const QString& sceneFilePath)
{
    if (image.file.isEmpty() || QFileInfo(image.file).isAbsolute())
        return image.file;
    return QFileInfo(sceneFilePath).absoluteDir().filePath(image.file);
}

bool refreshImageData(MetaImage& image, const QString& sceneFilePath)
{
    image.pixelWidth = 0;
    image.pixelHeight = 0;
    const QString path = resolveImagePath(image, sceneFilePath);
    if (path.isEmpty())
        return false;
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid()) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not read image file '%1': %2").arg(path, reader.errorString()));
        return false;
    }
    image.pixelWidth = size.width();
    image.pixelHeight = size.height();
    return true;
}
