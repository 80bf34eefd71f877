// The per-execution memory count behind the script memory limit.
#include "engine/scriptmemorybudget.h"

#include <angelscript.h>

#include <gtest/gtest.h>

#include <thread>

using AngelScript::asAllocMem;
using AngelScript::asFreeMem;

namespace
{
class ScriptMemoryBudgetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ScriptMemoryBudget::install();
        ASSERT_TRUE(ScriptMemoryBudget::isInstalled());
    }
};
} // namespace

TEST_F(ScriptMemoryBudgetTest, CountsWhatTheEngineHoldsOnThisThread)
{
    ScriptMemoryBudget budget(nullptr, 0);
    void* first = asAllocMem(1000);
    void* second = asAllocMem(3000);
    ASSERT_TRUE(first && second);
    EXPECT_GE(budget.usedBytes(), 4000);
    EXPECT_LT(budget.usedBytes(), 4200) << "the heap's own rounding only";
    asFreeMem(first);
    EXPECT_GE(budget.usedBytes(), 3000);
    EXPECT_LT(budget.usedBytes(), 3200);
    asFreeMem(second);
    EXPECT_EQ(budget.usedBytes(), 0);
    EXPECT_GE(budget.peakBytes(), 4000);
    EXPECT_FALSE(budget.exceeded()) << "no limit";

    // Another thread's allocations are not this execution's.
    std::thread other([] { asFreeMem(asAllocMem(1 << 20)); });
    other.join();
    EXPECT_LT(budget.peakBytes(), 4200);
}

TEST_F(ScriptMemoryBudgetTest, RefusesLargeBlocksOnceOverTheBudget)
{
    void* outside = nullptr;
    {
        ScriptMemoryBudget budget(nullptr, 100000);
        void* within = asAllocMem(90000);
        ASSERT_NE(within, nullptr);
        EXPECT_FALSE(budget.exceeded());

        void* tooLarge = asAllocMem(ScriptMemoryBudget::kRefusedBlockBytes);
        EXPECT_EQ(tooLarge, nullptr);
        EXPECT_TRUE(budget.exceeded());

        // Small blocks are still granted so that the engine can unwind.
        void* small = asAllocMem(20000);
        EXPECT_NE(small, nullptr);
        asFreeMem(small);
        asFreeMem(within);
        EXPECT_TRUE(budget.exceeded()) << "an exceeded budget stays exceeded";
    }
    // Without a budget nothing is counted or refused.
    outside = asAllocMem(4 << 20);
    EXPECT_NE(outside, nullptr);
    asFreeMem(outside);
}

TEST_F(ScriptMemoryBudgetTest, ANestedRunGetsWhatIsLeftAndHandsItsUsageBack)
{
    ScriptMemoryBudget outer(nullptr, 200000);
    void* held = asAllocMem(150000);
    ASSERT_NE(held, nullptr);
    void* kept = nullptr;
    {
        ScriptMemoryBudget inner(nullptr, 0);
        EXPECT_LE(inner.limitBytes(), 50000);
        EXPECT_GT(inner.limitBytes(), 40000);
        kept = asAllocMem(30000);
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(asAllocMem(ScriptMemoryBudget::kRefusedBlockBytes), nullptr);
        EXPECT_TRUE(inner.exceeded());
    }
    EXPECT_FALSE(outer.exceeded());
    EXPECT_GE(outer.usedBytes(), 180000) << "the inner run's block is counted by the outer one";
    asFreeMem(kept);
    asFreeMem(held);
    EXPECT_EQ(outer.usedBytes(), 0);
}
