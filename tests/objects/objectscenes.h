#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// Builders for small scene files that place each other, written as JSON text.
namespace ObjectScenes
{
/// A dynamic body at (x, y) with the given angle holding one circle of the radius at its origin.
QByteArray circleBody(int id, const QString& name, float x, float y, float radius, float angle = 0);
/// A dynamic body at (x, y) holding one polygon with the given vertices (x0, y0, x1, y1, ...).
QByteArray polygonBody(int id, const QString& name, float x, float y, std::initializer_list<float> xy);
/// An object instance record.
QByteArray instance(int id, const QString& name, const QString& file, float x = 0, float y = 0, float angle = 0,
                    float scale = 1, bool flip = false);
/// A scene file text with the given body and instance records (comma-joined lists).
QByteArray scene(const QByteArray& bodies, const QByteArray& instances = QByteArray());
} // namespace ObjectScenes

/// A scratch folder for scene files.
class SceneFolder
{
public:
    /// Writes a file (folders created as needed) and returns its absolute path.
    QString write(const QString& name, const QByteArray& content) const;
    /// Absolute path of a file of the folder.
    QString path(const QString& name) const { return m_dir.filePath(name); }

private:
    QTemporaryDir m_dir;
};
