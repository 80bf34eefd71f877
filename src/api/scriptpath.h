#pragma once

#include "api/scripthandles.h"

class MetaSampler;
struct MetaPath;

// The `path` handle: a path of a sampler, named by the sampler's id and the
// path's index. Control points are in the sampler's frame (see
// sampling/samplerframe.h). Every change records a path command of its own.
namespace PathApi
{
/// The handle of a sampler's path (invalid for a missing one).
ScriptPath pathHandle(const MetaSampler* sampler, int index);
/// The path a handle names and its sampler, or null (logging "Script
/// attempted to use invalid path").
MetaPath* use(const ScriptPath& handle, MetaSampler** sampler = nullptr);

bool opEquals(const ScriptPath* self, const ScriptPath& other);
/// Shape type 0 circle, 1 polygon, 2 line, 3 loop; others are refused.
void setType(ScriptPath* self, int type);
int getType(ScriptPath* self);
/// Not negative.
void setRadius(ScriptPath* self, float radius);
float getRadius(ScriptPath* self);
/// Largest number of points the outline simplification keeps; 0 for no limit.
void setMaxPoints(ScriptPath* self, int count);
int getMaxPoints(ScriptPath* self);
/// Degrees, 0 to 180: the simplification drops points turning less.
void setMinAngle(ScriptPath* self, int degrees);
int getMinAngle(ScriptPath* self);
/// Inserts a point before `index` (the point count appends).
void addControlPoint(ScriptPath* self, int index, float x, float y);
void addControlPointV(ScriptPath* self, int index, ScriptVec2 p);
void setControlPoint(ScriptPath* self, int index, float x, float y);
void setControlPointV(ScriptPath* self, int index, ScriptVec2 p);
void deleteControlPoint(ScriptPath* self, int index);
int getNumControlPoints(ScriptPath* self);
ScriptVec2 getControlPoint(ScriptPath* self, int index);
/// The point in world coordinates.
ScriptVec2 getWorldControlPoint(ScriptPath* self, int index);

/// "path getPath(int,int)": path `index` of sampler `samplerId`.
ScriptPath getPath(int samplerId, int index);
} // namespace PathApi
