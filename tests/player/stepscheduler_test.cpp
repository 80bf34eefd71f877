// Step rate, interval and the catch-up of the player's timer ticks, driven
// by a clock set by hand.

#include "player/testclock.h"

#include "player/stepscheduler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
TEST(StepInterval, IsTheRoundedPeriodAndOneSecondBelowOneStepPerSecond)
{
    EXPECT_EQ(stepIntervalForHz(60), 17) << "round(16.67)";
    EXPECT_EQ(stepIntervalForHz(30), 33);
    EXPECT_EQ(stepIntervalForHz(64), 16) << "round(15.625)";
    EXPECT_EQ(stepIntervalForHz(1), 1000);
    EXPECT_EQ(stepIntervalForHz(0.5f), 1000);
    EXPECT_EQ(stepIntervalForHz(0), 1000);
    EXPECT_EQ(stepIntervalForHz(-5), 1000);
    EXPECT_EQ(stepIntervalForHz(std::numeric_limits<float>::quiet_NaN()), 1000);
}

TEST(StepScheduler, StartsWithTheCreationDefaultsAndARateStillToApply)
{
    StepScheduler s;
    EXPECT_EQ(s.hz(), 60.0f);
    EXPECT_EQ(s.stepIntervalMs(), 16);
    EXPECT_TRUE(s.hzChanged()) << "the first step applies the scene's rate";
    s.applyHz(60);
    EXPECT_FALSE(s.hzChanged());
    s.setHz(30);
    EXPECT_TRUE(s.hzChanged());
}

TEST(StepScheduler, TakesTheStepsTheClockIsAheadBy)
{
    StepScheduler s;
    s.applyHz(60);
    s.restartAt(0);
    TestClock clock;
    int steps = 0;
    const auto step = [&] { ++steps; };

    clock.time = 10;
    TickOutcome t = s.tick(clock, step);
    EXPECT_EQ(t.steps, 0) << "less than a period has passed";
    EXPECT_FALSE(t.repaint);

    clock.time = 50;
    t = s.tick(clock, step);
    EXPECT_EQ(t.steps, 2) << "steps at 17 and 34; 51 is still ahead";
    EXPECT_TRUE(t.repaint);
    EXPECT_FALSE(t.cutOff);
    EXPECT_EQ(s.lastStepTime(), 34);
    EXPECT_EQ(s.skippedSteps(), 0);

    clock.time = 52;
    EXPECT_EQ(s.tick(clock, step).steps, 1);
    EXPECT_EQ(steps, 3);
}

TEST(StepScheduler, ADelayedTickStepsUntilTheIntervalIsSpentAndReportsTheRestAsSkipped)
{
    StepScheduler s;
    s.applyHz(60);
    s.restartAt(0);
    TestClock clock;
    clock.time = 1000;          // the tick comes a whole second late
    clock.costPerReading = 2;   // and every step takes 2 ms
    int steps = 0;
    const TickOutcome t = s.tick(clock, [&] { ++steps; });

    EXPECT_EQ(steps, 9) << "after 9 steps 18 ms are spent, more than the 17 ms interval";
    EXPECT_EQ(t.steps, 9);
    EXPECT_TRUE(t.cutOff);
    EXPECT_TRUE(t.repaint);
    EXPECT_NEAR(s.skippedSteps(), (1000.0 - 9 * 17) / 17, 1e-9);

    // The dropped steps are not owed to the next tick.
    clock.costPerReading = 0;
    clock.time = 1020;
    EXPECT_EQ(s.tick(clock, [&] { ++steps; }).steps, 1);
}

TEST(StepScheduler, AWorldSlowerThanItsRateStillReturnsAfterEachTick)
{
    StepScheduler s;
    s.applyHz(60);
    s.restartAt(0);
    TestClock clock;
    clock.costPerReading = 40;   // one step takes longer than the interval
    for (int tick = 1; tick <= 5; ++tick) {
        clock.time = 100.0 * tick;
        const TickOutcome t = s.tick(clock, [] {});
        EXPECT_EQ(t.steps, 1);
        EXPECT_TRUE(t.cutOff);
        EXPECT_GT(s.skippedSteps(), 2);
    }
}

TEST(StepScheduler, FastModeTakesFourTimesAsManySteps)
{
    StepScheduler s;
    s.applyHz(60);
    s.setFast(true);
    EXPECT_EQ(s.speedFactor(), kFastSpeedFactor);
    EXPECT_EQ(s.stepPeriodMs(), 17.0 / 4);
    s.restartAt(0);
    TestClock clock;
    clock.time = 51;
    EXPECT_EQ(s.tick(clock, [] {}).steps, 11) << "periods of 4.25 ms up to 46.75";
    EXPECT_EQ(s.stepIntervalMs(), 17) << "the timer keeps its interval";
    s.setFast(false);
    EXPECT_EQ(s.speedFactor(), 1.0f);
}

TEST(StepScheduler, ApplyingARateForgetsSkippedSteps)
{
    StepScheduler s;
    s.applyHz(60);
    s.restartAt(0);
    TestClock clock;
    clock.time = 1000;
    clock.costPerReading = 20;
    s.tick(clock, [] {});
    ASSERT_GT(s.skippedSteps(), 1);
    s.applyHz(30);
    EXPECT_EQ(s.skippedSteps(), 0);
    EXPECT_EQ(s.stepIntervalMs(), 33);
}
} // namespace
