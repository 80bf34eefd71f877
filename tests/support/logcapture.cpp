#include "support/logcapture.h"

LogCapture::LogCapture() : m_oldThreshold(Log::threshold())
{
    Log::setThreshold(LOG_DEBUG);
    Log::setListener([this](int level, const QString& text) { m_messages.emplace_back(level, text); });
}

LogCapture::~LogCapture()
{
    Log::setListener({});
    Log::setThreshold(m_oldThreshold);
}

QStringList LogCapture::texts(int level) const
{
    QStringList result;
    for (const auto& [l, text] : m_messages) {
        if (level == 0 || l == level)
            result << text;
    }
    return result;
}

bool LogCapture::contains(const QString& text, int level) const
{
    for (const auto& [l, t] : m_messages) {
        if ((level == 0 || l == level) && t.contains(text))
            return true;
    }
    return false;
}
