#pragma once

#include <angelscript.h>

#include <QtGlobal>

/// Counts the memory that one script execution holds through the engine and
/// stops the script when it holds more than its budget.
///
/// The engine's memory functions are process-wide, so the counting is tied
/// to the executing thread: while a budget lives, every allocation and
/// release that the engine (and its array add-on) makes on that thread is
/// charged to it. Once the budget is exceeded the context is asked to abort
/// at its next statement; until then small blocks are still granted (so the
/// engine can unwind cleanly) and large ones are refused, which the engine
/// reports as "Out of memory". A budget started while another one is active
/// on the thread (a script run nested in another) may use only what the
/// outer one has left and hands its net usage to it when it ends.
class ScriptMemoryBudget
{
public:
    /// Blocks of at least this size are refused once the budget is exceeded.
    static constexpr qint64 kRefusedBlockBytes = 64 * 1024;

    /// Routes the engine's allocations through the counter. Idempotent; call
    /// before scripts execute. Memory allocated before stays valid, as both
    /// sets of functions use the C heap.
    static void install();
    /// True once install() has run.
    static bool isInstalled();

    /// Starts counting for `context`, executing on the calling thread.
    /// `limitBytes` 0 counts without a limit.
    ScriptMemoryBudget(AngelScript::asIScriptContext* context, qint64 limitBytes);
    /// Stops counting and restores the enclosing budget, if any.
    ~ScriptMemoryBudget();
    ScriptMemoryBudget(const ScriptMemoryBudget&) = delete;
    ScriptMemoryBudget& operator=(const ScriptMemoryBudget&) = delete;

    /// Bytes held now by this execution (allocated minus released).
    qint64 usedBytes() const { return m_used; }
    /// The most bytes held at once.
    qint64 peakBytes() const { return m_peak; }
    /// The budget (0 = none).
    qint64 limitBytes() const { return m_limit; }
    /// True once an allocation would have gone over the budget.
    bool exceeded() const { return m_exceeded; }

private:
    static void* allocate(size_t size);
    static void release(void* block);
    bool admit(size_t size);
    void charge(qint64 bytes);

    AngelScript::asIScriptContext* m_context;
    qint64 m_limit;
    qint64 m_used = 0;
    qint64 m_peak = 0;
    bool m_exceeded = false;
    ScriptMemoryBudget* m_outer;
};
