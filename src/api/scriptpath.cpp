#include "api/scriptpath.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "editing/vertexcommands.h"
#include "model/metaworld.h"
#include "sampling/samplerframe.h"

namespace PathApi
{
namespace
{
bool validIndex(const MetaPath& path, int index, bool allowEnd, const ScriptPath& h)
{
    const int count = int(path.controlPoints.size());
    if (index >= 0 && (index < count || (allowEnd && index == count)))
        return true;
    plaxLog(LOG_WARNING, "Invalid control point index: %u:%d:%d", h.sampler, h.index, index);
    return false;
}

Vec2 pointAt(const MetaPath& path, int index) { return path.controlPoints[size_t(index)]; }
} // namespace

ScriptPath pathHandle(const MetaSampler* sampler, int index)
{
    ScriptPath h;
    if (!sampler || index < 0 || size_t(index) >= sampler->paths.size())
        return h;
    h.valid = true;
    h.type = int(sampler->paths[size_t(index)].type);
    h.sampler = sampler->id();
    h.index = index;
    return h;
}

MetaPath* use(const ScriptPath& h, MetaSampler** samplerOut)
{
    MetaWorld* world = ScriptApi::world();
    MetaSampler* sampler = h.valid && world ? world->findSampler(h.sampler) : nullptr;
    if (!sampler || h.index < 0 || size_t(h.index) >= sampler->paths.size()) {
        plaxLog(LOG_ERROR, "Script attempted to use invalid path");
        return nullptr;
    }
    if (samplerOut)
        *samplerOut = sampler;
    return &sampler->paths[size_t(h.index)];
}

bool opEquals(const ScriptPath* self, const ScriptPath& other)
{
    return self->valid == other.valid && self->sampler == other.sampler && self->index == other.index;
}

void setType(ScriptPath* self, int type)
{
    MetaPath* path = use(*self);
    if (!path)
        return;
    if (type < int(ShapeType::Circle) || type > int(ShapeType::Loop)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set invalid path type: %d", type);
        return;
    }
    const ShapeType wanted = ShapeType(type);
    if (path->type == wanted)
        return;
    const ShapeType old = path->type;
    path->type = wanted;
    self->type = type;
    ScriptApi::record<SetPathTypeCommand>(self->sampler, self->index, old, wanted);
}

int getType(ScriptPath* self)
{
    MetaPath* path = use(*self);
    return path ? int(path->type) : 0;
}

void setRadius(ScriptPath* self, float radius)
{
    MetaPath* path = use(*self);
    if (!path || !ScriptApi::isUsable(radius, "path", "setRadius"))
        return;
    if (radius < 0) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set negative radius for path");
        return;
    }
    if (path->radius == radius)
        return;
    const float old = path->radius;
    path->radius = radius;
    ScriptApi::record<SetPathRadiusCommand>(self->sampler, self->index, old, radius);
}

float getRadius(ScriptPath* self)
{
    MetaPath* path = use(*self);
    return path ? path->radius : 0.0f;
}

namespace
{
void setIntProperty(ScriptPath* self, const char* setter, int MetaPath::*field, int value, int low, int high)
{
    MetaPath* path = use(*self);
    if (!path)
        return;
    if (value < low || value > high) {
        plaxLog(LOG_WARNING, "Ignoring invalid value for path::%s: %d", setter, value);
        return;
    }
    if (path->*field == value)
        return;
    const int old = path->*field;
    path->*field = value;
    ScriptApi::record<SetPathPropertyIntCommand>(self->sampler, self->index, QLatin1String(setter), old, value);
}
} // namespace

void setMaxPoints(ScriptPath* self, int count) { setIntProperty(self, "setMaxPoints", &MetaPath::maxPoints, count, 0, 1 << 24); }
int getMaxPoints(ScriptPath* self)
{
    MetaPath* path = use(*self);
    return path ? path->maxPoints : 0;
}

void setMinAngle(ScriptPath* self, int degrees) { setIntProperty(self, "setMinAngle", &MetaPath::minAngle, degrees, 0, 180); }
int getMinAngle(ScriptPath* self)
{
    MetaPath* path = use(*self);
    return path ? path->minAngle : 0;
}

void addControlPoint(ScriptPath* self, int index, float x, float y)
{
    MetaPath* path = use(*self);
    if (!path || !validIndex(*path, index, true, *self) || !ScriptApi::isUsable(Vec2{x, y}, "path", "addControlPoint"))
        return;
    path->controlPoints.insert(path->controlPoints.begin() + index, Vec2{x, y});
    ScriptApi::record<AddControlPointCommand>(self->sampler, self->index, index, Vec2{x, y});
}
void addControlPointV(ScriptPath* self, int index, ScriptVec2 p) { addControlPoint(self, index, p.x, p.y); }

void setControlPoint(ScriptPath* self, int index, float x, float y)
{
    MetaPath* path = use(*self);
    if (!path || !validIndex(*path, index, false, *self) || !ScriptApi::isUsable(Vec2{x, y}, "path", "setControlPoint"))
        return;
    const Vec2 old = pointAt(*path, index);
    if (old == Vec2{x, y})
        return;
    path->controlPoints[size_t(index)] = {x, y};
    ScriptApi::record<SetControlPointCommand>(self->sampler, self->index, index, old, Vec2{x, y});
}
void setControlPointV(ScriptPath* self, int index, ScriptVec2 p) { setControlPoint(self, index, p.x, p.y); }

void deleteControlPoint(ScriptPath* self, int index)
{
    MetaPath* path = use(*self);
    if (!path || !validIndex(*path, index, false, *self))
        return;
    const Vec2 old = pointAt(*path, index);
    path->controlPoints.erase(path->controlPoints.begin() + index);
    ScriptApi::record<DeleteControlPointCommand>(self->sampler, self->index, index, old);
}

int getNumControlPoints(ScriptPath* self)
{
    MetaPath* path = use(*self);
    return path ? int(path->controlPoints.size()) : 0;
}

ScriptVec2 getControlPoint(ScriptPath* self, int index)
{
    MetaPath* path = use(*self);
    if (!path || !validIndex(*path, index, false, *self))
        return {};
    return ScriptApi::toScript(pointAt(*path, index));
}

ScriptVec2 getWorldControlPoint(ScriptPath* self, int index)
{
    MetaSampler* sampler = nullptr;
    MetaPath* path = use(*self, &sampler);
    if (!path || !validIndex(*path, index, false, *self))
        return {};
    return ScriptApi::toScript(SamplerFrame::of(*sampler).toWorld(pointAt(*path, index)));
}

ScriptPath getPath(int samplerId, int index)
{
    MetaWorld* world = ScriptApi::world();
    return pathHandle(world && samplerId > 0 ? world->findSampler(ItemId(samplerId)) : nullptr, index);
}
} // namespace PathApi
