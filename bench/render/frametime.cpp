#include "renderbench.h"

#include <QElapsedTimer>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace
{
double clockMs(clockid_t clock)
{
    timespec t{};
    clock_gettime(clock, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}
} // namespace

FrameTime timeFrame(QOpenGLWidget& view)
{
    // Reading back 1280 x 800 pixels is part of the figure (about 2 ms).
    const double process = clockMs(CLOCK_PROCESS_CPUTIME_ID), thread = clockMs(CLOCK_THREAD_CPUTIME_ID);
    QElapsedTimer timer;
    timer.start();
    const QImage frame = view.grabFramebuffer();
    if (frame.isNull())
        std::printf("no frame\n");
    FrameTime time;
    time.wallMs = double(timer.nsecsElapsed()) / 1e6;
    time.processMs = clockMs(CLOCK_PROCESS_CPUTIME_ID) - process;
    time.threadMs = clockMs(CLOCK_THREAD_CPUTIME_ID) - thread;
    return time;
}

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

FrameTime medianFrame(std::vector<FrameTime> frames)
{
    std::vector<double> wall, process, thread;
    for (const FrameTime& f : frames) {
        wall.push_back(f.wallMs);
        process.push_back(f.processMs);
        thread.push_back(f.threadMs);
    }
    return {medianOf(wall), medianOf(process), medianOf(thread)};
}

const char* verdict(double value, double goal)
{
    return value < goal ? "met" : "MISSED";
}

void printFrame(const char* label, const FrameTime& time)
{
    std::printf("  %-34s %7.2f ms  goal < %.0f ms: %-6s (processor time %.1f ms, of it %.1f ms in the drawing "
                "thread)\n",
                label, time.wallMs, kFrameGoalMs, verdict(time.wallMs, kFrameGoalMs), time.processMs,
                time.threadMs);
}
