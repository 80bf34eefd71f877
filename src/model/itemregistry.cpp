#include "model/itemregistry.h"

#include "base/log.h"
#include "model/metaitem.h"

#include <utility>

namespace
{
constexpr ItemId kLastUsableId = 4294967294u;
constexpr quint64 kNameLimit = 4294967295u;

QString namePrefix(ItemKind kind)
{
    return itemKindWord(kind);
}

// The number n when name is exactly the prefix followed by n in plain decimal.
bool patternNumber(const QString& name, const QString& prefix, quint64* n)
{
    if (!name.startsWith(prefix) || name.size() == prefix.size())
        return false;
    QStringView digits = QStringView(name).mid(prefix.size());
    if (digits.size() > 1 && digits[0] == u'0')
        return false;
    for (QChar c : digits) {
        if (c < u'0' || c > u'9')
            return false;
    }
    bool ok = false;
    *n = digits.toULongLong(&ok);
    return ok;
}
} // namespace

MetaItem* ItemRegistry::find(ItemId id) const
{
    auto it = m_byId.find(id);
    return it == m_byId.end() ? nullptr : it->second;
}

const QMultiHash<QString, MetaItem*>& ItemRegistry::names() const
{
    if (!m_indexed.load(std::memory_order_acquire)) {
        // Readers on two threads may ask at once: one of them indexes.
        const std::lock_guard<std::mutex> lock(m_indexing);
        if (!m_indexed.load(std::memory_order_relaxed)) {
            m_byName.reserve(qsizetype(m_unindexed.size()));
            // In the order of registration, as if each had been indexed then.
            for (MetaItem* item : m_unindexed)
                m_byName.insert(item->name(), item);
            m_unindexed.clear();
            m_unindexed.shrink_to_fit();
            m_indexed.store(true, std::memory_order_release);
        }
    }
    return m_byName;
}

QMultiHash<QString, MetaItem*>& ItemRegistry::names()
{
    std::as_const(*this).names();
    return m_byName;
}

bool ItemRegistry::insert(MetaItem* item)
{
    if (item->id() == 0 || contains(item->id()))
        return false;
    m_byId.emplace(item->id(), item);
    if (item->id() > m_lastId)
        m_lastId = item->id();
    if (m_indexed.load(std::memory_order_relaxed))
        m_byName.insert(item->name(), item);
    else
        m_unindexed.push_back(item);
    return true;
}

void ItemRegistry::erase(MetaItem* item)
{
    auto it = m_byId.find(item->id());
    if (it == m_byId.end() || it->second != item)
        return;
    m_byId.erase(it);
    names().remove(item->name(), item);
    nameRemoved(item->name());
}

MetaItem* ItemRegistry::findByName(const QString& name) const
{
    // QMultiHash::value gives the most recently inserted; walk to the oldest.
    const QMultiHash<QString, MetaItem*>& byName = names();
    MetaItem* found = nullptr;
    for (auto it = byName.constFind(name); it != byName.cend() && it.key() == name; ++it)
        found = it.value();
    return found;
}

void ItemRegistry::rename(MetaItem* item, const QString& oldName, const QString& newName)
{
    QMultiHash<QString, MetaItem*>& byName = names();
    byName.remove(oldName, item);
    nameRemoved(oldName);
    byName.insert(newName, item);
}

void ItemRegistry::nameRemoved(const QString& name)
{
    quint64 n = 0;
    if (!names().contains(name) && patternNumber(name, namePrefix(m_kind), &n) && n < m_firstPossiblyFreeName)
        m_firstPossiblyFreeName = n;
}

ItemId ItemRegistry::allocate(bool continueFromLast)
{
    const QString kindWord = itemKindWord(m_kind);
    if (m_lastId >= kLastUsableId) {
        plaxLog(LOG_ERROR, QStringLiteral("No unique %1 IDs available").arg(kindWord));
        return 0;
    }
    quint64 candidate = continueFromLast ? quint64(m_lastId) + 1 : 1;
    for (; candidate <= kLastUsableId; ++candidate) {
        if (!contains(ItemId(candidate))) {
            m_lastId = std::max(m_lastId, ItemId(candidate));
            return ItemId(candidate);
        }
    }
    plaxLog(LOG_ERROR, QStringLiteral("No unique %1 IDs available").arg(kindWord));
    return 0;
}

QString ItemRegistry::uniqueName()
{
    const QString prefix = namePrefix(m_kind);
    for (quint64 n = m_firstPossiblyFreeName; n < kNameLimit; ++n) {
        QString candidate = prefix + QString::number(n);
        if (!names().contains(candidate)) {
            m_firstPossiblyFreeName = n;
            return candidate;
        }
    }
    plaxLog(LOG_ERROR, QStringLiteral("No unique %1 names available").arg(prefix));
    return QStringLiteral("ERROR: no unique %1 names available").arg(prefix);
}
