#pragma once

#include <QString>

#include <functional>

/// Levels of the process-wide log. Each is a bit value; a message whose level
/// is below the threshold is discarded.
enum LogLevel : int
{
    LOG_DEBUG = 1,
    LOG_INFO = 2,
    LOG_SYSTEM = 4,
    LOG_SYSTEM2 = 8,
    LOG_SCRIPT = 16,
    LOG_WARNING = 32,
    LOG_ERROR = 64,
    LOG_FATAL = 128,
};

/// Receives every accepted message (the main window's log panel).
using LogListener = std::function<void(int level, const QString& text)>;

/// The process-wide log. Every line is appended to the log file by opening,
/// writing and closing it, so the file is complete even if the process dies.
namespace Log
{
/// Creates the log file anew (truncating it) in the current directory and writes "Started log".
void start(const QString& fileName = QStringLiteral("plax.log"));
/// Writes "Finished log" to the file.
void finish();
/// Path of the log file, or empty before start().
QString fileName();

/// Messages with a level below the threshold are discarded entirely.
void setThreshold(int level);
/// Current threshold.
int threshold();

/// Batch mode echoes accepted messages to standard output.
void setConsoleEcho(bool echo);
/// The batch flags that steer the console echo.
void setBatchFlags(bool verbose, bool quiet);
/// Whether DEBUG messages are echoed to the console (the debug-output preference).
void setDebugOutput(bool on);

/// Registers (or, with an empty function, clears) the listener.
void setListener(LogListener listener);

/// Fixed nine-character label of a level ("  DEBUG  ", "* ERROR  ", ...), empty for unknown values.
const char* label(int level);
} // namespace Log

/// Logs a printf-style message (formatted into a fixed buffer).
void plaxLog(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
/// Logs an already formatted message.
void plaxLog(int level, const QString& text);
