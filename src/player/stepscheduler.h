#pragma once

#include <functional>

class PlayerClock;

/// Step interval in whole milliseconds for a step rate: round(1000 / hz), or
/// 1000 ms when the rate is below one step per second.
int stepIntervalForHz(float hz);

/// The step rate actually simulated: rates below 1 (and NaN) run at 1.
float effectiveHz(float hz);

/// Speed factor of the fast mode: steps come this many times as often.
inline constexpr float kFastSpeedFactor = 4.0f;

/// What one timer tick did.
struct TickOutcome
{
    int steps = 0;            ///< steps taken
    bool cutOff = false;      ///< catching up stopped because the tick used its time
    bool repaint = false;     ///< the view should draw again
};

/// The timing of the player's stepping: the step rate and interval, the
/// catch-up of steps that fell behind the clock, the fast mode and the count
/// of steps that had to be dropped. It steps nothing itself: the step
/// function given to tick() does.
class StepScheduler
{
public:
    /// Paused defaults: 60 Hz, 16 ms timer interval, rate not yet applied.
    StepScheduler() = default;

    /// Takes a step rate (from the scene): sets hz and the applied rate,
    /// recomputes the interval and forgets skipped steps.
    void applyHz(float hz);
    /// Takes a rate with an interval of its own (the rate of a player without a scene).
    void applyHz(float hz, int intervalMs);
    /// True when the rate changed since it was last applied.
    bool hzChanged() const { return m_hz != m_lastAppliedHz; }
    /// Changes the rate without applying it (the next step re-reads the scene).
    void setHz(float hz) { m_hz = hz; }

    /// The current step rate as set (may be below 1).
    float hz() const { return m_hz; }
    /// Seconds one step advances the world: 1 / effectiveHz(hz()).
    float timeStep() const { return 1.0f / effectiveHz(m_hz); }
    /// The step interval (also the timer's interval) in milliseconds.
    int stepIntervalMs() const { return m_stepIntervalMs; }
    /// Milliseconds of clock time one step stands for: the interval, divided by the speed factor when fast.
    double stepPeriodMs() const { return m_fast ? m_stepIntervalMs / double(kFastSpeedFactor) : m_stepIntervalMs; }

    /// Whether the fast mode is on.
    bool isFast() const { return m_fast; }
    /// Switches the fast mode.
    void setFast(bool on) { m_fast = on; }
    /// The speed factor in use (1 or kFastSpeedFactor).
    float speedFactor() const { return m_fast ? kFastSpeedFactor : 1.0f; }

    /// Steps dropped by the last cut-off catch-up (0 when none).
    double skippedSteps() const { return m_skippedSteps; }
    /// Forgets dropped steps.
    void resetSkippedSteps() { m_skippedSteps = 0; }

    /// Clock time of the last step, in milliseconds.
    double lastStepTime() const { return m_lastStepTime; }
    /// Restarts the catch-up from a clock time (play, single step).
    void restartAt(double nowMs) { m_lastStepTime = nowMs; }

    /// One timer tick at clock time `now`: steps while the last step time
    /// lags the clock by more than a step period, advancing it one period per
    /// step. When the clock time spent inside the tick exceeds the step
    /// interval, catching up stops, the steps still owed are reported as
    /// skipped and dropped (the next tick starts from now).
    TickOutcome tick(PlayerClock& clock, const std::function<void()>& step);

private:
    float m_hz = 60;
    float m_lastAppliedHz = -1;
    int m_stepIntervalMs = 16;
    bool m_fast = false;
    double m_lastStepTime = 0;
    double m_skippedSteps = 0;
};
