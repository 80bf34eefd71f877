#pragma once

#include "player/playerclock.h"

/// A clock the test sets by hand, where every reading may cost time: with a
/// cost of 2 ms, each step of a catch-up seems to take 2 ms.
class TestClock : public PlayerClock
{
public:
    /// Milliseconds now; then the clock advances by the cost of a reading.
    double nowMs() override
    {
        const double t = time;
        time += costPerReading;
        return t;
    }

    double time = 0;             ///< what the next reading gives
    double costPerReading = 0;   ///< how far each reading advances the clock
};
