#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

class MetaWorld;

/// Reading and writing the files a test works with.
namespace TestFiles
{
/// Reads a whole file (empty when it is missing or unreadable).
QByteArray read(const QString& path);
/// Reads a whole UTF-8 text file (empty when it is missing or unreadable).
QString readText(const QString& path);
/// Every file under a folder, hidden ones too, by path relative to the
/// folder, with its bytes.
QMap<QString, QByteArray> filesUnder(const QString& folder);
/// Writes bytes to a file, creating its folder; fails the test on error.
/// Returns the path.
QString write(const QString& path, const QByteArray& bytes);
/// Writes a UTF-8 text file, creating its folder; fails the test on error.
/// Returns the path.
QString writeText(const QString& path, const QString& text);
/// Saves the world as a scene file at `path` and returns the file's bytes;
/// fails the test when the save fails.
QByteArray savedScene(const MetaWorld& world, const QString& path);
} // namespace TestFiles
