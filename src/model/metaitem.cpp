#include "model/metaitem.h"

#include <atomic>

namespace
{
// Revisions come from one counter, so that an item made where another was
// freed still has a revision of its own.
std::uint64_t nextRevision()
{
    static std::atomic<std::uint64_t> counter{0};
    return counter.fetch_add(1, std::memory_order_relaxed) + 1;
}
} // namespace

MetaItem::MetaItem(ItemKind kind) : m_kind(kind), m_revision(nextRevision()) {}

void MetaItem::markChanged()
{
    m_revision = nextRevision();
}
