#pragma once

#include <QColor>
#include <QList>
#include <QMutex>
#include <QString>

#include <functional>

/// One line of script output waiting for the script output panel.
struct ScriptOutputLine
{
    QColor colour;
    QString text;
};

/// The process-wide queue of script output. Scripts may run on a worker
/// thread; what they print is queued here under the output mutex and handed to
/// the panels by the interface thread while it polls the running script.
namespace ScriptOutput
{
/// Receives flushed lines (the script output panel); empty without an interface.
using Sink = std::function<void(const QList<ScriptOutputLine>& lines)>;

/// The output mutex guarding the queue.
QMutex& mutex();
/// Queues a line (takes the output mutex).
void append(const QColor& colour, const QString& text);
/// Removes and returns every queued line (takes the output mutex).
QList<ScriptOutputLine> takeAll();
/// Installs (or clears) the sink that flush() hands lines to.
void setSink(Sink sink);
/// Under the output mutex, hands every queued line to the sink. Without a sink
/// the lines are dropped: they have been logged already.
void flush();

/// Colour of lines written by print().
QColor printColour();
/// Prints a line: logs it at SCRIPT level and queues it for the output panel.
void print(const QString& text);
} // namespace ScriptOutput
