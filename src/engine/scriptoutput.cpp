#include "engine/scriptoutput.h"

#include "base/log.h"

namespace
{
struct OutputState
{
    QMutex mutex;
    QList<ScriptOutputLine> lines;
    ScriptOutput::Sink sink;
};

OutputState& state()
{
    static OutputState s;
    return s;
}
} // namespace

namespace ScriptOutput
{
QMutex& mutex()
{
    return state().mutex;
}

void append(const QColor& colour, const QString& text)
{
    QMutexLocker lock(&state().mutex);
    state().lines.append({colour, text});
}

QList<ScriptOutputLine> takeAll()
{
    QMutexLocker lock(&state().mutex);
    QList<ScriptOutputLine> lines;
    lines.swap(state().lines);
    return lines;
}

void setSink(Sink sink)
{
    QMutexLocker lock(&state().mutex);
    state().sink = std::move(sink);
}

void flush()
{
    QMutexLocker lock(&state().mutex);
    QList<ScriptOutputLine> lines;
    lines.swap(state().lines);
    if (state().sink && !lines.isEmpty())
        state().sink(lines);
}

QColor printColour()
{
    return QColor(0, 0, 0);
}

void print(const QString& text)
{
    plaxLog(LOG_SCRIPT, text);
    append(printColour(), text);
}
} // namespace ScriptOutput
