#include "io/rawinfomembers.h"

#include <algorithm>
#include <cstring>

bool RawInfoMembers::asks(const char* key) const
{
    char path[160];
    const size_t prefixLength = std::strlen(m_prefix);
    const size_t keyLength = std::min(std::strlen(key), sizeof path - 1 - prefixLength);
    std::memcpy(path, m_prefix, prefixLength);
    std::memcpy(path + prefixLength, key, keyLength);
    path[prefixLength + keyLength] = '\0';
    return m_filter.allows(path, m_item);
}

bool RawInfoMembers::member(const char* key) const
{
    if (!allows(key))
        return false;
    m_emitter.key(key);
    return true;
}

void RawInfoMembers::addFloat(const char* key, float value) const
{
    if (member(key))
        m_emitter.floatValue(value);
}

void RawInfoMembers::addVec2(const char* key, Vec2 value) const
{
    if (member(key))
        m_emitter.vec2Value(value);
}

void RawInfoMembers::addBool(const char* key, bool value) const
{
    if (member(key))
        m_emitter.boolValue(value);
}

void RawInfoMembers::addInt(const char* key, int value) const
{
    if (member(key))
        m_emitter.intValue(value);
}

void RawInfoMembers::addString(const char* key, const QString& value) const
{
    if (member(key))
        m_emitter.stringValue(value);
}

void RawInfoMembers::addPointList(const char* key, const Vec2* points, size_t count) const
{
    if (member(key))
        m_emitter.pointListValue(points, count);
}
