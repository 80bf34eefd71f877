#pragma once

#include "io/exportfilter.h"
#include "io/jsonemitter.h"

/// Writes the members of one raw-info record, asking the export filter
/// first: each key is checked under the record's path prefix
/// ("/world/body/" + key), for the scene item the record comes from (null
/// for the world). A filter that excludes nothing is not asked.
class RawInfoMembers
{
public:
    /// A writer for records under the prefix (a string literal) of `item`.
    RawInfoMembers(const JsonEmitter& emitter, const ExportPropertyFilter& filter, const char* prefix,
                   const MetaItem* item = nullptr)
        : m_emitter(emitter), m_filter(filter), m_prefix(prefix), m_item(item), m_everything(filter.excludesNothing())
    {
    }

    /// True when the member may be written.
    bool allows(const char* key) const { return m_everything || asks(key); }
    /// Writes the key when the member may be written, and says whether it may:
    /// the caller then writes the value.
    bool member(const char* key) const;

    /// Writes a member when allowed (keys are terminated strings).
    void addFloat(const char* key, float value) const;
    void addVec2(const char* key, Vec2 value) const;
    void addBool(const char* key, bool value) const;
    void addInt(const char* key, int value) const;
    void addString(const char* key, const QString& value) const;
    void addPointList(const char* key, const Vec2* points, size_t count) const;

    /// The emitter values are written with.
    const JsonEmitter& emitter() const { return m_emitter; }

private:
    bool asks(const char* key) const;

    const JsonEmitter& m_emitter;
    const ExportPropertyFilter& m_filter;
    const char* m_prefix;
    const MetaItem* m_item;
    bool m_everything;
};
