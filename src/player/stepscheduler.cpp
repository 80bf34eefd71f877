#include "player/stepscheduler.h"

#include "player/playerclock.h"

#include <algorithm>
#include <cmath>

int stepIntervalForHz(float hz)
{
    if (!(hz >= 1))
        return 1000;
    return int(std::lround(1000.0 / double(hz)));
}

float effectiveHz(float hz)
{
    return hz >= 1 ? hz : 1.0f;
}

void StepScheduler::applyHz(float hz)
{
    applyHz(hz, stepIntervalForHz(hz));
}

void StepScheduler::applyHz(float hz, int intervalMs)
{
    m_hz = hz;
    m_lastAppliedHz = hz;
    m_stepIntervalMs = intervalMs;
    m_skippedSteps = 0;
}

TickOutcome StepScheduler::tick(PlayerClock& clock, const std::function<void()>& step)
{
    TickOutcome outcome;
    const double now = clock.nowMs();
    const double behindAtStart = now - m_lastStepTime;
    double timeStepped = 0;
    // The period is read each round: a step may apply a new rate.
    while (now > m_lastStepTime + stepPeriodMs()) {
        const double period = stepPeriodMs();
        step();
        ++outcome.steps;
        m_lastStepTime += period;
        timeStepped += period;
        if (clock.nowMs() - now > m_stepIntervalMs) {
            outcome.cutOff = true;
            m_skippedSteps = std::max(0.0, (std::round(behindAtStart) - timeStepped) / m_stepIntervalMs);
            // What is owed is dropped, not carried: a world too slow for its
            // rate would otherwise fall further behind at every tick.
            m_lastStepTime = now;
            break;
        }
    }
    outcome.repaint = outcome.steps > 0 || outcome.cutOff;
    return outcome;
}
