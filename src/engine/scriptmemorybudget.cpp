#include "engine/scriptmemorybudget.h"

#include <atomic>
#include <cstdlib>
#include <mutex>

#if defined(__APPLE__)
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

using namespace AngelScript;

namespace
{
thread_local ScriptMemoryBudget* t_activeBudget = nullptr;
std::atomic<bool> s_installed{false};

// The size the C heap really reserved for a block: the same figure at
// allocation and at release, so that the count returns to where it was.
size_t blockSize(void* block)
{
#if defined(_WIN32)
    return _msize(block);
#elif defined(__APPLE__)
    return malloc_size(block);
#else
    return malloc_usable_size(block);
#endif
}
} // namespace

void ScriptMemoryBudget::install()
{
    static std::once_flag once;
    std::call_once(once, [] {
        asSetGlobalMemoryFunctions(&ScriptMemoryBudget::allocate, &ScriptMemoryBudget::release);
        s_installed = true;
    });
}

bool ScriptMemoryBudget::isInstalled()
{
    return s_installed;
}

ScriptMemoryBudget::ScriptMemoryBudget(asIScriptContext* context, qint64 limitBytes)
    : m_context(context), m_limit(limitBytes > 0 ? limitBytes : 0), m_outer(t_activeBudget)
{
    // A nested run may use only what the enclosing run has left.
    if (m_outer && m_outer->m_limit > 0) {
        const qint64 left = qMax<qint64>(1, m_outer->m_limit - m_outer->m_used);
        m_limit = m_limit > 0 ? qMin(m_limit, left) : left;
    }
    t_activeBudget = this;
}

ScriptMemoryBudget::~ScriptMemoryBudget()
{
    t_activeBudget = m_outer;
    if (m_outer)
        m_outer->charge(m_used);
}

bool ScriptMemoryBudget::admit(size_t size)
{
    if (m_limit == 0)
        return true;
    if (!m_exceeded && m_used + qint64(size) <= m_limit)
        return true;
    if (!m_exceeded) {
        m_exceeded = true;
        if (m_context)
            m_context->Abort();
    }
    return qint64(size) < kRefusedBlockBytes;
}

void ScriptMemoryBudget::charge(qint64 bytes)
{
    m_used += bytes;
    if (m_used > m_peak)
        m_peak = m_used;
}

void* ScriptMemoryBudget::allocate(size_t size)
{
    ScriptMemoryBudget* budget = t_activeBudget;
    if (!budget)
        return std::malloc(size);
    if (!budget->admit(size))
        return nullptr;
    void* block = std::malloc(size);
    if (block)
        budget->charge(qint64(blockSize(block)));
    return block;
}

void ScriptMemoryBudget::release(void* block)
{
    if (!block)
        return;
    if (ScriptMemoryBudget* budget = t_activeBudget)
        budget->charge(-qint64(blockSize(block)));
    std::free(block);
}
