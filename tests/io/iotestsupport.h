#pragma once

#include "base/log.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

class MetaWorld;

/// Collects every log line while it lives (threshold lowered to DEBUG).
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();

    /// Lines logged at a level, in order.
    QStringList lines(int level) const;
    /// True when some line at the level equals the text.
    bool has(int level, const QString& text) const;
    /// True when some line at the level contains the text.
    bool contains(int level, const QString& text) const;
    /// Number of lines at the level containing the text.
    int count(int level, const QString& text) const;
    /// Every line with its level, for failure messages.
    QString dump() const;

private:
    struct Line
    {
        int level;
        QString text;
    };
    std::shared_ptr<QList<Line>> m_lines;
    int m_oldThreshold;
};

/// Sets the batch and verbose flags for a scope and restores them after.
class FlagScope
{
public:
    FlagScope(bool batch, bool verbose);
    ~FlagScope();

private:
    bool m_batch;
    bool m_verbose;
};

/// A scene holding every member and record type with non-default values.
std::unique_ptr<MetaWorld> makeFullScene();

/// Expects two worlds to hold the same decoded values (floats compared bit for bit).
void expectSameWorld(const MetaWorld& expected, const MetaWorld& actual);

/// Writes bytes to a file; false on failure.
bool writeFile(const QString& path, const QByteArray& bytes);
/// Reads a whole file (empty on failure).
QByteArray readFile(const QString& path);
/// Wraps the members text into {"metaworld": {...}} scene text.
QByteArray sceneText(const QByteArray& metaworldMembers);
