#pragma once

#include <QElapsedTimer>

/// The time source of the player's stepping, in milliseconds on a monotonic
/// clock. The player reads it at every tick and after every step, so a clock
/// handed in by a caller decides how long stepping seems to take.
class PlayerClock
{
public:
    virtual ~PlayerClock() = default;
    /// Milliseconds since some fixed start.
    virtual double nowMs() = 0;
};

/// The wall clock: a monotonic elapsed timer started at construction.
class ElapsedPlayerClock : public PlayerClock
{
public:
    /// Starts the clock.
    ElapsedPlayerClock() { m_timer.start(); }
    /// Milliseconds (with fractions) since construction.
    double nowMs() override { return double(m_timer.nsecsElapsed()) / 1e6; }

private:
    QElapsedTimer m_timer;
};
