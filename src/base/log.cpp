#include "base/log.h"

#include <QByteArray>
#include <QFileInfo>
#include <QMutex>

#include <cstdarg>
#include <cstdio>
#include <ctime>

namespace
{
struct LogState
{
    QMutex mutex;
    QByteArray fileName;
    int threshold = LOG_DEBUG;
    bool consoleEcho = false;
    bool verbose = false;
    bool quiet = false;
    bool debugOutput = false;
    LogListener listener;
};

LogState& state()
{
    static LogState s;
    return s;
}

constexpr int kBufferSize = 8192;

void appendToFile(const QByteArray& fileName, int level, const char* text)
{
    if (fileName.isEmpty())
        return;
    std::FILE* f = std::fopen(fileName.constData(), "a");
    if (!f)
        return;
    char timeText[16];
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::strftime(timeText, sizeof timeText, "%H:%M:%S", &local);
    std::fprintf(f, "%s [%s]: %s\n", timeText, Log::label(level), text);
    std::fclose(f);
}

void dispatch(int level, const char* text)
{
    LogState& s = state();
    LogListener listener;
    {
        QMutexLocker lock(&s.mutex);
        if (level < s.threshold)
            return;
        appendToFile(s.fileName, level, text);
        if (s.consoleEcho) {
            bool echo = s.verbose || !s.quiet || level >= LOG_WARNING;
            if (level == LOG_DEBUG && !s.debugOutput)
                echo = false;
            if (echo) {
                std::fprintf(stdout, "%s\n", text);
                std::fflush(stdout);
            }
        }
        listener = s.listener;
    }
    if (listener)
        listener(level, QString::fromUtf8(text));
}
} // namespace

namespace Log
{
void start(const QString& fileName)
{
    LogState& s = state();
    {
        QMutexLocker lock(&s.mutex);
        // Absolute, so that a later change of the current directory does not move the log.
        s.fileName = QFileInfo(fileName).absoluteFilePath().toLocal8Bit();
        if (std::FILE* f = std::fopen(s.fileName.constData(), "w"))
            std::fclose(f);
        appendToFile(s.fileName, LOG_SYSTEM, "Started log");
    }
}

void finish()
{
    LogState& s = state();
    QMutexLocker lock(&s.mutex);
    appendToFile(s.fileName, LOG_SYSTEM, "Finished log");
}

QString fileName()
{
    QMutexLocker lock(&state().mutex);
    return QString::fromLocal8Bit(state().fileName);
}

void setThreshold(int level)
{
    QMutexLocker lock(&state().mutex);
    state().threshold = level;
}

int threshold()
{
    QMutexLocker lock(&state().mutex);
    return state().threshold;
}

void setConsoleEcho(bool echo)
{
    QMutexLocker lock(&state().mutex);
    state().consoleEcho = echo;
}

void setBatchFlags(bool verbose, bool quiet)
{
    QMutexLocker lock(&state().mutex);
    state().verbose = verbose;
    state().quiet = quiet;
}

void setDebugOutput(bool on)
{
    QMutexLocker lock(&state().mutex);
    state().debugOutput = on;
}

void setListener(LogListener listener)
{
    QMutexLocker lock(&state().mutex);
    state().listener = std::move(listener);
}

const char* label(int level)
{
    switch (level) {
    case LOG_DEBUG: return "  DEBUG  ";
    case LOG_INFO: return "  INFO   ";
    case LOG_SYSTEM:
    case LOG_SYSTEM2: return "  SYSTEM ";
    case LOG_SCRIPT: return "  SCRIPT ";
    case LOG_WARNING: return "  WARNING";
    case LOG_ERROR: return "* ERROR  ";
    case LOG_FATAL: return "* FATAL  ";
    default: return "";
    }
}
} // namespace Log

void plaxLog(int level, const char* format, ...)
{
    char buffer[kBufferSize];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    dispatch(level, buffer);
}

void plaxLog(int level, const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    if (utf8.size() >= kBufferSize)
        utf8.truncate(kBufferSize - 1);
    dispatch(level, utf8.constData());
}
