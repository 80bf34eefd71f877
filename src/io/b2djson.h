#pragma once

#include "io/exportfilter.h"
#include "io/jsonsink.h"
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

    /// Streams the whole raw-info document into the sink, member by member,
    /// without building it in memory. `scene` gives the world-level members
    /// (settings, bitplanes, custom properties) and the object instances.
    void write(const WorldBuild& build, const MetaWorld& scene, JsonSink& sink) const;
    /// The same document as a DOM (an empty object if a value could not be
    /// represented).
    rapidjson::Document write(const WorldBuild& build, const MetaWorld& scene) const;

private:
    JsonStyle m_style;
    const ExportPropertyFilter& m_filter;
};

/// The value style of a scene's export options: the Gson flavour writes every
/// value in one type (reals for floats, objects for vectors).
JsonStyle exportStyle(const MetaWorld& scene);
