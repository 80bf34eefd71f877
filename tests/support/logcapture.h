#pragma once

#include "base/log.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/// Collects every log message accepted while it lives (at any level).
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();

    /// Messages in order, with their levels.
    const std::vector<std::pair<int, QString>>& messages() const { return m_messages; }
    /// Texts of the messages at a level (all levels when 0).
    QStringList texts(int level = 0) const;
    /// True when some message at the level (any when 0) contains the text.
    bool contains(const QString& text, int level = 0) const;
    /// Forgets what was collected.
    void clear() { m_messages.clear(); }

private:
    std::vector<std::pair<int, QString>> m_messages;
    int m_oldThreshold;
};
