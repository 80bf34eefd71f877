#include "io/rawinfomembers.h"

#include <cstdio>

bool RawInfoMembers::allows(const char* key) const
{
    char path[160];
    std::snprintf(path, sizeof path, "%s%s", m_prefix, key);
    return m_filter.allows(path);
}

void RawInfoMembers::addFloat(rapidjson::Value& object, const char* key, float value) const
{
    if (allows(key))
        m_encoder.addFloat(object, key, value);
}

void RawInfoMembers::addVec2(rapidjson::Value& object, const char* key, Vec2 value) const
{
    if (allows(key))
        m_encoder.addVec2(object, key, value);
}

void RawInfoMembers::addBool(rapidjson::Value& object, const char* key, bool value) const
{
    if (allows(key))
        m_encoder.addBool(object, key, value);
}

void RawInfoMembers::addInt(rapidjson::Value& object, const char* key, int value) const
{
    if (allows(key))
        m_encoder.addInt(object, key, value);
}

void RawInfoMembers::addString(rapidjson::Value& object, const char* key, const QString& value) const
{
    if (allows(key))
        m_encoder.addString(object, key, value);
}

void RawInfoMembers::addPointList(rapidjson::Value& object, const char* key, const std::vector<Vec2>& points) const
{
    if (allows(key))
        m_encoder.addPointList(object, key, points);
}

void RawInfoMembers::add(rapidjson::Value& object, const char* key, rapidjson::Value&& value) const
{
    if (allows(key))
        m_encoder.add(object, key, std::move(value));
}
