#pragma once

#include "io/exportfilter.h"
#include "io/jsonvalues.h"

/// Appends members to one raw-info record, asking the export filter first:
/// each key is checked under the record's path prefix ("/world/body/" + key).
class RawInfoMembers
{
public:
    /// A writer for records under the prefix (a string literal).
    RawInfoMembers(const JsonEncoder& encoder, const ExportPropertyFilter& filter, const char* prefix)
        : m_encoder(encoder), m_filter(filter), m_prefix(prefix)
    {
    }

    /// True when the member may be written.
    bool allows(const char* key) const;

    /// Adds a member when allowed (keys must be string literals).
    void addFloat(rapidjson::Value& object, const char* key, float value) const;
    void addVec2(rapidjson::Value& object, const char* key, Vec2 value) const;
    void addBool(rapidjson::Value& object, const char* key, bool value) const;
    void addInt(rapidjson::Value& object, const char* key, int value) const;
    void addString(rapidjson::Value& object, const char* key, const QString& value) const;
    void addPointList(rapidjson::Value& object, const char* key, const std::vector<Vec2>& points) const;
    void add(rapidjson::Value& object, const char* key, rapidjson::Value&& value) const;

    /// The encoder values are built with.
    const JsonEncoder& encoder() const { return m_encoder; }
    /// The filter asked.
    const ExportPropertyFilter& filter() const { return m_filter; }

private:
    const JsonEncoder& m_encoder;
    const ExportPropertyFilter& m_filter;
    const char* m_prefix;
};
