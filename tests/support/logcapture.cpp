#include "support/logcapture.h"

#include <QThread>

LogCapture::LogCapture() : m_oldThreshold(Log::threshold())
{
    Log::setThreshold(LOG_DEBUG);
    Log::setListener([this](int level, const QString& text) {
        QMutexLocker lock(&m_mutex);
        m_lines.append({level, text, QThread::currentThread()});
    });
}

LogCapture::~LogCapture()
{
    Log::setListener({});
    Log::setThreshold(m_oldThreshold);
}

QList<CapturedLine> LogCapture::lines() const
{
    QMutexLocker lock(&m_mutex);
    return m_lines;
}

QStringList LogCapture::texts(int level) const
{
    QStringList result;
    for (const CapturedLine& line : lines()) {
        if (level == 0 || line.level == level)
            result << line.text;
    }
    return result;
}

bool LogCapture::has(int level, const QString& text) const
{
    return texts(level).contains(text);
}

int LogCapture::count(int level, const QString& text) const
{
    int n = 0;
    for (const QString& line : texts(level))
        n += line.contains(text) ? 1 : 0;
    return n;
}

bool LogCapture::hasLineStartingWith(int level, const QString& prefix) const
{
    for (const QString& line : texts(level)) {
        if (line.startsWith(prefix))
            return true;
    }
    return false;
}

QString LogCapture::dump() const
{
    QString text;
    for (const CapturedLine& line : lines())
        text += QStringLiteral("[%1] %2\n").arg(line.level).arg(line.text);
    return text;
}

void LogCapture::clear()
{
    QMutexLocker lock(&m_mutex);
    m_lines.clear();
}
