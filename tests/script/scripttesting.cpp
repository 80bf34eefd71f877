#include "scripttesting.h"

#include "base/flags.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "script/documentscripting.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

LogCapture::LogCapture()
{
    Log::setListener([this](int level, const QString& text) {
        QMutexLocker lock(&m_mutex);
        m_lines.append({level, text, QThread::currentThread()});
    });
}

LogCapture::~LogCapture()
{
    Log::setListener({});
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
        if (line.level == level)
            result << line.text;
    }
    return result;
}

bool LogCapture::hasLineStartingWith(int level, const QString& prefix) const
{
    for (const QString& text : texts(level)) {
        if (text.startsWith(prefix))
            return true;
    }
    return false;
}

void LogCapture::clear()
{
    QMutexLocker lock(&m_mutex);
    m_lines.clear();
}

void writeTextFile(const QString& path, const QString& text)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(text.toUtf8());
}

QString readTextFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

QStringList runAndCollectPrints(EditorDocument& document, const QString& text, bool* ok)
{
    LogCapture capture;
    bool result = document.scripting().runOneShot(text, QString());
    if (ok)
        *ok = result;
    return capture.texts(LOG_SCRIPT);
}

BatchModeScope::BatchModeScope(bool on) : m_previous(AppFlags::isBatchMode())
{
    AppFlags::setBatchMode(on);
}

BatchModeScope::~BatchModeScope()
{
    AppFlags::setBatchMode(m_previous);
}
