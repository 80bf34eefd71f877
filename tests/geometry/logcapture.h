#pragma once

#include "base/log.h"

#include <QString>
#include <QStringList>

#include <ostream>
#include <utility>
#include <vector>

/// Prints Qt strings readably in test failures.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

/// Collects every log line while alive (tests only).
class LogCapture
{
public:
    LogCapture()
    {
        m_previousThreshold = Log::threshold();
        Log::setThreshold(LOG_DEBUG);
        Log::setListener([this](int level, const QString& text) { m_lines.emplace_back(level, text); });
    }
    ~LogCapture()
    {
        Log::setListener({});
        Log::setThreshold(m_previousThreshold);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Every captured line with its level.
    const std::vector<std::pair<int, QString>>& lines() const { return m_lines; }
    /// Texts of the lines at one level.
    QStringList at(int level) const
    {
        QStringList out;
        for (const auto& [l, text] : m_lines) {
            if (l == level)
                out << text;
        }
        return out;
    }
    /// Number of lines containing a text, at any level.
    int count(const QString& part) const
    {
        int n = 0;
        for (const auto& line : m_lines)
            n += line.second.contains(part) ? 1 : 0;
        return n;
    }
    /// Forgets what was captured.
    void clear() { m_lines.clear(); }

private:
    std::vector<std::pair<int, QString>> m_lines;
    int m_previousThreshold = LOG_DEBUG;
};
