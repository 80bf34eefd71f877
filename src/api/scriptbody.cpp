#include "api/scriptbody.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scriptmass.h"
#include "base/log.h"
#include "editing/selection.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <cmath>
#include <vector>

using namespace AngelScript;

namespace BodyApi
{
namespace
{
Vec2 toVec(ScriptVec2 v) { return {v.x, v.y}; }
ScriptVec2 toScript(Vec2 v) { return {v.x, v.y}; }

Vec2 rotate(Vec2 v, float angle)
{
    const float c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}

// Applies a setter to a valid body.
template <class F>
void with(ScriptBody* self, F f)
{
    if (MetaBody* body = ScriptApi::use(*self))
        f(*body);
}

// Reads from a valid body, or gives the zero value.
template <class T, class F>
T read(ScriptBody* self, F f)
{
    MetaBody* body = ScriptApi::use(*self);
    return body ? f(*body) : T();
}

CScriptArray* bodyArray(const std::vector<const MetaBody*>& bodies)
{
    return ScriptApi::handleArray<ScriptBody>("array<body>", bodies, ScriptApi::bodyHandle);
}

template <class F>
void forEachBody(const CScriptArray& bodies, F f)
{
    // Handles are collected first: deleting one body must not disturb the walk.
    std::vector<ScriptBody> handles;
    for (asUINT i = 0; i < bodies.GetSize(); ++i)
        handles.push_back(*static_cast<const ScriptBody*>(bodies.At(i)));
    for (ScriptBody& h : handles)
        f(&h);
}
} // namespace

bool opEquals(const ScriptBody* self, const ScriptBody& other)
{
    return self->valid == other.valid && self->id == other.id;
}

void select(ScriptBody* self) { with(self, [](MetaBody& b) { ScriptApi::setSelected(b, true); }); }
void deselect(ScriptBody* self) { with(self, [](MetaBody& b) { ScriptApi::setSelected(b, false); }); }
bool isSelected(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return ScriptApi::isSelected(b); }); }

std::string getName(ScriptBody* self)
{
    return read<std::string>(self, [](MetaBody& b) { return b.name().toStdString(); });
}

void setName(ScriptBody* self, const std::string& name)
{
    with(self, [&](MetaBody& b) { ScriptApi::setName(b, QString::fromStdString(name)); });
}

void setType(ScriptBody* self, int type)
{
    with(self, [&](MetaBody& b) {
        if (type < 0 || type > 2) {
            plaxLog(LOG_WARNING, "Ignoring attempt to set invalid body type: %d", type);
            return;
        }
        int current = int(b.type);
        ScriptApi::setInt(b, "setType", current, type);
        b.type = BodyType(current);
    });
}

void setPosition(ScriptBody* self, float x, float y)
{
    with(self, [&](MetaBody& b) { ScriptApi::setVec(b, "setPosition", b.position, {x, y}); });
}
void setPositionV(ScriptBody* self, ScriptVec2 p) { setPosition(self, p.x, p.y); }
void setAngle(ScriptBody* self, float v) { with(self, [&](MetaBody& b) { ScriptApi::setFloat(b, "setAngle", b.angle, v); }); }
void setGravityScale(ScriptBody* self, float v)
{
    with(self, [&](MetaBody& b) { ScriptApi::setFloat(b, "setGravityScale", b.gravityScale, v); });
}
void setAngularVelocity(ScriptBody* self, float v)
{
    with(self, [&](MetaBody& b) { ScriptApi::setFloat(b, "setAngularVelocity", b.angularVelocity, v); });
}
void setLinearDamping(ScriptBody* self, float v)
{
    with(self, [&](MetaBody& b) { ScriptApi::setFloat(b, "setLinearDamping", b.linearDamping, v); });
}
void setAngularDamping(ScriptBody* self, float v)
{
    with(self, [&](MetaBody& b) { ScriptApi::setFloat(b, "setAngularDamping", b.angularDamping, v); });
}
void setLinearVelocity(ScriptBody* self, float x, float y)
{
    with(self, [&](MetaBody& b) { ScriptApi::setVec(b, "setLinearVelocity", b.linearVelocity, {x, y}); });
}
void setLinearVelocityV(ScriptBody* self, ScriptVec2 v) { setLinearVelocity(self, v.x, v.y); }
void setBullet(ScriptBody* self, int on) { with(self, [&](MetaBody& b) { ScriptApi::setBool(b, "setBullet", b.bullet, on != 0); }); }
void setFixedRotation(ScriptBody* self, int on)
{
    with(self, [&](MetaBody& b) { ScriptApi::setBool(b, "setFixedRotation", b.fixedRotation, on != 0); });
}
void setSleepingAllowed(ScriptBody* self, int on)
{
    with(self, [&](MetaBody& b) { ScriptApi::setBool(b, "setSleepingAllowed", b.sleepingAllowed, on != 0); });
}
void setAwake(ScriptBody* self, int on) { with(self, [&](MetaBody& b) { ScriptApi::setBool(b, "setAwake", b.awake, on != 0); }); }
void setActive(ScriptBody* self, int on) { with(self, [&](MetaBody& b) { ScriptApi::setBool(b, "setActive", b.active, on != 0); }); }

void setMass(ScriptBody* self, float mass)
{
    with(self, [&](MetaBody& b) {
        if (mass < 0) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring negative value for body::setMass: %1").arg(double(mass)));
            return;
        }
        ScriptApi::setFloat(b, "setMass", b.massDataMass, mass);
    });
}

ScriptFixture addFixture(ScriptBody* self, int id, const std::string& json)
{
    MetaBody* body = ScriptApi::use(*self);
    if (!body || id < 0)
        return {};
    return ScriptApi::fixtureHandle(ItemOps::addFixture(*body, ItemId(id), QString::fromStdString(json)));
}

void deleteBody(ScriptBody* self)
{
    with(self, [](MetaBody& b) { ItemOps::deleteBody(b); });
}

ScriptVec2 getWorldPoint(ScriptBody* self, ScriptVec2 local)
{
    MetaBody* b = ScriptApi::use(*self, "getWorldPoint called on invalid body");
    return b ? toScript(b->position + rotate(toVec(local), b->angle)) : ScriptVec2();
}

ScriptVec2 getLocalPoint(ScriptBody* self, ScriptVec2 world)
{
    MetaBody* b = ScriptApi::use(*self, "getLocalPoint called on invalid body");
    return b ? toScript(rotate(toVec(world) - b->position, -b->angle)) : ScriptVec2();
}

ScriptVec2 getWorldVector(ScriptBody* self, ScriptVec2 local)
{
    MetaBody* b = ScriptApi::use(*self, "getWorldVector called on invalid body");
    return b ? toScript(rotate(toVec(local), b->angle)) : ScriptVec2();
}

ScriptVec2 getLocalVector(ScriptBody* self, ScriptVec2 world)
{
    MetaBody* b = ScriptApi::use(*self, "getLocalVector called on invalid body");
    return b ? toScript(rotate(toVec(world), -b->angle)) : ScriptVec2();
}

namespace
{
Vec2 localCenter(MetaBody& b)
{
    return b.massDataMass > 0 ? b.massDataCenter : fixturesMassData(b).center;
}
} // namespace

ScriptVec2 getWorldCenter(ScriptBody* self)
{
    MetaBody* b = ScriptApi::use(*self, "getWorldCenter called on invalid body");
    return b ? toScript(b->position + rotate(localCenter(*b), b->angle)) : ScriptVec2();
}

ScriptVec2 getLocalCenter(ScriptBody* self)
{
    MetaBody* b = ScriptApi::use(*self, "getLocalCenter called on invalid body");
    return b ? toScript(localCenter(*b)) : ScriptVec2();
}

CScriptArray* getFixtures(ScriptBody* self)
{
    std::vector<const MetaFixture*> fixtures;
    if (MetaBody* b = ScriptApi::use(*self))
        for (const auto& f : b->fixtures())
            fixtures.push_back(f.get());
    return ScriptApi::handleArray<ScriptFixture>("array<fixture>", fixtures, ScriptApi::fixtureHandle);
}

CScriptArray* getImages(ScriptBody* self)
{
    std::vector<const MetaImage*> images;
    if (MetaBody* b = ScriptApi::use(*self))
        for (const auto& image : b->world()->images())
            if (image->body == b)
                images.push_back(image.get());
    return ScriptApi::handleArray<ScriptImage>("array<image>", images, ScriptApi::imageHandle);
}

CScriptArray* getSamplers(ScriptBody* self)
{
    std::vector<const MetaSampler*> samplers;
    if (MetaBody* b = ScriptApi::use(*self))
        for (const auto& sampler : b->world()->samplers())
            if (sampler->body == b)
                samplers.push_back(sampler.get());
    return ScriptApi::handleArray<ScriptSampler>("array<sampler>", samplers, ScriptApi::samplerHandle);
}

namespace
{
CScriptArray* jointsOf(ScriptBody* self, const ScriptBody* other)
{
    std::vector<const MetaJoint*> joints;
    MetaBody* b = ScriptApi::use(*self);
    MetaBody* o = other ? ScriptApi::find(*other) : nullptr;
    if (b && (!other || o))
        for (const auto& j : b->world()->joints()) {
            const bool touches = j->bodyA == b || j->bodyB == b;
            if (touches && (!o || j->bodyA == o || j->bodyB == o))
                joints.push_back(j.get());
        }
    return ScriptApi::handleArray<ScriptJoint>("array<joint>", joints, ScriptApi::jointHandle);
}
} // namespace

CScriptArray* getJoints(ScriptBody* self) { return jointsOf(self, nullptr); }
CScriptArray* getJointsWith(ScriptBody* self, const ScriptBody& other) { return jointsOf(self, &other); }

int getType(ScriptBody* self) { return read<int>(self, [](MetaBody& b) { return int(b.type); }); }
bool isBullet(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return b.bullet; }); }
bool isFixedRotation(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return b.fixedRotation; }); }
bool isSleepingAllowed(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return b.sleepingAllowed; }); }
bool isAwake(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return b.awake; }); }
bool isActive(ScriptBody* self) { return read<bool>(self, [](MetaBody& b) { return b.active; }); }
ScriptVec2 getLinearVelocity(ScriptBody* self) { return read<ScriptVec2>(self, [](MetaBody& b) { return toScript(b.linearVelocity); }); }
float getAngularVelocity(ScriptBody* self) { return read<float>(self, [](MetaBody& b) { return b.angularVelocity; }); }
float getLinearDamping(ScriptBody* self) { return read<float>(self, [](MetaBody& b) { return b.linearDamping; }); }
float getAngularDamping(ScriptBody* self) { return read<float>(self, [](MetaBody& b) { return b.angularDamping; }); }
float getGravityScale(ScriptBody* self) { return read<float>(self, [](MetaBody& b) { return b.gravityScale; }); }
float getAngle(ScriptBody* self) { return read<float>(self, [](MetaBody& b) { return b.angle; }); }

float getMass(ScriptBody* self)
{
    return read<float>(self, [](MetaBody& b) { return b.massDataMass > 0 ? b.massDataMass : fixturesMassData(b).mass; });
}

ScriptBody getBody(int id)
{
    MetaWorld* world = ScriptApi::world();
    return ScriptApi::bodyHandle(world && id > 0 ? world->findBody(ItemId(id)) : nullptr);
}

ScriptBody getBodyByName(const std::string& name)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return {};
    return ScriptApi::bodyHandle(
        static_cast<const MetaBody*>(world->registry(ItemKind::Body).findByName(QString::fromStdString(name))));
}

CScriptArray* getBodies(const std::string& name)
{
    std::vector<const MetaBody*> bodies;
    const QString wanted = QString::fromStdString(name);
    if (MetaWorld* world = ScriptApi::world())
        for (const auto& b : world->bodies())
            if (b->name() == wanted)
                bodies.push_back(b.get());
    return bodyArray(bodies);
}

CScriptArray* getSelectedBodies()
{
    std::vector<const MetaBody*> bodies;
    if (ScriptDocument* doc = ScriptApi::document())
        for (ItemId id : doc->selection().items(ItemKind::Body))
            if (const MetaBody* b = doc->world().findBody(id))
                bodies.push_back(b);
    return bodyArray(bodies);
}

CScriptArray* getAllBodies()
{
    std::vector<const MetaBody*> bodies;
    if (MetaWorld* world = ScriptApi::world())
        for (const auto& b : world->bodies())
            bodies.push_back(b.get());
    return bodyArray(bodies);
}

ScriptBody addBody(int id, const std::string& json)
{
    if (id < 0)
        return {};
    return ScriptApi::bodyHandle(ItemOps::addBody(ItemId(id), QString::fromStdString(json)));
}

void selectAll(const CScriptArray& bodies) { forEachBody(bodies, select); }
void deselectAll(const CScriptArray& bodies) { forEachBody(bodies, deselect); }
void deleteAll(const CScriptArray& bodies) { forEachBody(bodies, deleteBody); }
} // namespace BodyApi
