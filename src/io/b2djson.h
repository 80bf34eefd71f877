#pragma once

#include "io/exportfilter.h"
#include "io/jsonvalues.h"

class MetaWorld;
class WorldBuild;

/// Writes raw info: a built Box2D world with its scene's names, custom
/// properties, images and object instances, as games load it. Bodies and
/// joints refer to each other by their position in the arrays.
class b2dJson
{
public:
    /// A writer in a value style, asking the filter before every member.
    b2dJson(const JsonStyle& style, const ExportPropertyFilter& filter) : m_style(style), m_filter(filter) {}

    /// The whole raw-info document. `scene` gives the world-level members
    /// (settings, bitplanes, custom properties) and the object instances.
    rapidjson::Document write(const WorldBuild& build, const MetaWorld& scene) const;

private:
    JsonStyle m_style;
    const ExportPropertyFilter& m_filter;
};

/// The value style of a scene's export options: the Gson flavour writes every
/// value in one type (reals for floats, objects for vectors).
JsonStyle exportStyle(const MetaWorld& scene);
