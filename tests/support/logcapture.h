#pragma once

#include "base/log.h"

#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <ostream>

class QThread;

/// Prints Qt strings readably in test failures.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

/// One captured log message.
struct CapturedLine
{
    int level;
    QString text;
    QThread* thread;   ///< the thread that logged it
};

/// Collects every log message accepted while it lives, from any thread. The
/// threshold is lowered to DEBUG meanwhile. Where a level is asked for, 0
/// means every level.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Every captured line, in order.
    QList<CapturedLine> lines() const;
    /// Texts of the lines at a level.
    QStringList texts(int level) const;
    /// True when some line at the level is exactly the text.
    bool has(int level, const QString& text) const;
    /// True when some line at the level contains the text.
    bool contains(int level, const QString& text) const { return count(level, text) > 0; }
    /// Number of lines at the level containing the text.
    int count(int level, const QString& text) const;
    /// True when some line at the level starts with the prefix.
    bool hasLineStartingWith(int level, const QString& prefix) const;
    /// Every line with its level, for failure messages.
    QString dump() const;
    /// Forgets everything captured so far.
    void clear();

private:
    mutable QMutex m_mutex;
    QList<CapturedLine> m_lines;
    int m_oldThreshold;
};
