#pragma once

#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>

class EditorDocument;

/// One captured log message.
struct CapturedLine
{
    int level;
    QString text;
    QThread* thread;
};

/// Captures every log message while it lives (from any thread).
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// All captured lines.
    QList<CapturedLine> lines() const;
    /// Texts of the lines at a level.
    QStringList texts(int level) const;
    /// True when a line at the level starts with the prefix.
    bool hasLineStartingWith(int level, const QString& prefix) const;
    /// Forgets everything captured so far.
    void clear();

private:
    mutable QMutex m_mutex;
    QList<CapturedLine> m_lines;
};

/// Writes a UTF-8 text file, creating its folder; fails the test on error.
void writeTextFile(const QString& path, const QString& text);
/// Reads a UTF-8 text file (empty when missing).
QString readTextFile(const QString& path);

/// Runs a one-shot text on the document and returns what it printed.
QStringList runAndCollectPrints(EditorDocument& document, const QString& text, bool* ok = nullptr);

/// Sets the batch-mode flag for a scope.
class BatchModeScope
{
public:
    /// Sets the flag to `on`.
    explicit BatchModeScope(bool on);
    ~BatchModeScope();

private:
    bool m_previous;
};
