#include "support/testfiles.h"

#include "io/scenewriter.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

QByteArray TestFiles::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString TestFiles::readText(const QString& path)
{
    return QString::fromUtf8(read(path));
}

QMap<QString, QByteArray> TestFiles::filesUnder(const QString& folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(folder).relativeFilePath(path), read(path));
    }
    return files;
}

QString TestFiles::write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
    EXPECT_TRUE(written) << "could not write " << path.toStdString();
    return path;
}

QString TestFiles::writeText(const QString& path, const QString& text)
{
    return write(path, text.toUtf8());
}

QByteArray TestFiles::savedScene(const MetaWorld& world, const QString& path)
{
    EXPECT_TRUE(saveSceneFile(world, path)) << "could not save " << path.toStdString();
    return read(path);
}
