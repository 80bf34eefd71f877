#include "api/scriptfixture.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scriptmass.h"
#include "base/log.h"
#include "editing/itemcommands.h"
#include "editing/selection.h"
#include "editing/vertexcommands.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace AngelScript;

namespace
{
template <class F>
void with(ScriptFixture* self, F f)
{
    if (MetaFixture* fixture = ScriptApi::use(*self))
        f(*fixture);
}

template <class T, class F>
T read(ScriptFixture* self, F f)
{
    MetaFixture* fixture = ScriptApi::use(*self);
    return fixture ? f(*fixture) : T();
}

void setNonNegative(MetaFixture& f, const char* setter, float& field, float value)
{
    if (value < 0) {
        plaxLog(LOG_WARNING, QStringLiteral("Ignoring negative value for fixture::%1: %2")
                                 .arg(QLatin1String(setter), QString::number(double(value))));
        return;
    }
    ScriptApi::setFloat(f, setter, field, value);
}

// The fewest vertices the fixture's shapes allow.
size_t minimumVertices(const MetaFixture& f)
{
    size_t minimum = 1;
    for (const MetaShape& shape : f.shapes()) {
        if (shape.type() == ShapeType::Polygon || shape.type() == ShapeType::Loop)
            minimum = std::max<size_t>(minimum, 3);
        else if (shape.type() == ShapeType::Line)
            minimum = std::max<size_t>(minimum, 2);
    }
    return minimum;
}

bool validIndex(const MetaFixture& f, int index, bool allowEnd = false)
{
    const size_t count = f.vertices().size();
    if (index >= 0 && (size_t(index) < count || (allowEnd && size_t(index) == count)))
        return true;
    plaxLog(LOG_WARNING, "Invalid vertex index: %u:%d", f.id(), index);
    return false;
}

Selection* selection()
{
    ScriptDocument* doc = ScriptApi::document();
    return doc ? &doc->selection() : nullptr;
}

Vec2 rotate(Vec2 v, float angle)
{
    const float c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}

CScriptArray* fixtureArray(const std::vector<const MetaFixture*>& fixtures)
{
    return ScriptApi::handleArray<ScriptFixture>("array<fixture>", fixtures, ScriptApi::fixtureHandle);
}

template <class Handle, class F>
void forEach(const CScriptArray& array, F f)
{
    std::vector<Handle> handles;
    for (asUINT i = 0; i < array.GetSize(); ++i)
        handles.push_back(*static_cast<const Handle*>(array.At(i)));
    for (Handle& h : handles)
        f(&h);
}
} // namespace

// Vertex edits shared by the fixture and vertex handles.
namespace VertexEdits
{
void move(MetaFixture& f, int index, Vec2 p)
{
    if (!validIndex(f, index) || !ScriptApi::isUsable(p, "vertex", "setPos"))
        return;
    std::vector<Vec2> vertices = f.vertices();
    const Vec2 old = vertices[size_t(index)];
    if (old == p)
        return;
    vertices[size_t(index)] = p;
    f.setVertices(std::move(vertices));
    ScriptApi::record<SetVertexPositionCommand>(f.id(), index, old, p);
}

bool insert(MetaFixture& f, int index, Vec2 p)
{
    if (!validIndex(f, index, true) || !ScriptApi::isUsable(p, "fixture", "addVertex"))
        return false;
    std::vector<Vec2> vertices = f.vertices();
    vertices.insert(vertices.begin() + index, p);
    f.setVertices(std::move(vertices));
    if (Selection* s = selection())
        s->vertexIndexShifted(f.id(), index, 1);
    ScriptApi::record<AddVertexCommand>(f.id(), index, p);
    return true;
}

void remove(MetaFixture& f, int index)
{
    if (!validIndex(f, index))
        return;
    if (f.vertices().size() <= minimumVertices(f)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to delete vertex %d of fixture %u: its shapes need at least %d vertices",
                index, f.id(), int(minimumVertices(f)));
        return;
    }
    if (Selection* s = selection(); s && s->containsVertex(f.id(), index)) {
        s->removeVertex(f.id(), index);
        ScriptApi::record<DeselectVertexCommand>(f.id(), index);
    }
    std::vector<Vec2> vertices = f.vertices();
    const Vec2 old = vertices[size_t(index)];
    vertices.erase(vertices.begin() + index);
    f.setVertices(std::move(vertices));
    if (Selection* s = selection())
        s->vertexIndexShifted(f.id(), index, -1);
    ScriptApi::record<DeleteVertexCommand>(f.id(), index, old);
}

void replaceAll(MetaFixture& f, const std::vector<Vec2>& points)
{
    for (const Vec2& p : points)
        if (!ScriptApi::isUsable(p, "fixture", "setVertices"))
            return;
    if (points.size() < minimumVertices(f)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set %d vertices on fixture %u: its shapes need at least %d",
                int(points.size()), f.id(), int(minimumVertices(f)));
        return;
    }
    ScriptDocument* doc = ScriptApi::document();
    if (!doc)
        return;
    UndoMacroScope macro(doc->undoStack(), QStringLiteral("set vertices"));
    const size_t common = std::min(points.size(), f.vertices().size());
    for (size_t i = 0; i < common; ++i)
        move(f, int(i), points[i]);
    for (size_t i = common; i < points.size(); ++i)
        insert(f, int(i), points[i]);
    // Deleting from the end keeps the remaining indices stable; the minimum
    // check cannot stop it, as the final count was checked above.
    while (f.vertices().size() > points.size()) {
        const int last = int(f.vertices().size()) - 1;
        if (Selection* s = selection(); s && s->containsVertex(f.id(), last)) {
            s->removeVertex(f.id(), last);
            ScriptApi::record<DeselectVertexCommand>(f.id(), last);
        }
        std::vector<Vec2> vertices = f.vertices();
        const Vec2 old = vertices.back();
        vertices.pop_back();
        f.setVertices(std::move(vertices));
        ScriptApi::record<DeleteVertexCommand>(f.id(), last, old);
    }
}

MetaFixture* fixtureOf(const ScriptVertex& v)
{
    MetaWorld* world = ScriptApi::world();
    MetaFixture* f = v.valid && world ? world->findFixture(v.fixture) : nullptr;
    if (!f) {
        plaxLog(LOG_ERROR, "Script attempted to use invalid fixture");
        return nullptr;
    }
    if (v.index >= f->vertices().size()) {
        plaxLog(LOG_WARNING, "Invalid vertex index: %u:%u", v.fixture, v.index);
        return nullptr;
    }
    return f;
}
} // namespace VertexEdits

namespace FixtureApi
{
bool opEquals(const ScriptFixture* self, const ScriptFixture& other) { return self->valid == other.valid && self->id == other.id; }
void select(ScriptFixture* self) { with(self, [](MetaFixture& f) { ScriptApi::setSelected(f, true); }); }
void deselect(ScriptFixture* self) { with(self, [](MetaFixture& f) { ScriptApi::setSelected(f, false); }); }
bool isSelected(ScriptFixture* self) { return read<bool>(self, [](MetaFixture& f) { return ScriptApi::isSelected(f); }); }
std::string getName(ScriptFixture* self) { return read<std::string>(self, [](MetaFixture& f) { return f.name().toStdString(); }); }
void setName(ScriptFixture* self, const std::string& name)
{
    with(self, [&](MetaFixture& f) { ScriptApi::setName(f, QString::fromStdString(name)); });
}
void setFriction(ScriptFixture* self, float v) { with(self, [&](MetaFixture& f) { setNonNegative(f, "setFriction", f.friction, v); }); }
void setRestitution(ScriptFixture* self, float v)
{
    with(self, [&](MetaFixture& f) { setNonNegative(f, "setRestitution", f.restitution, v); });
}
void setDensity(ScriptFixture* self, float v) { with(self, [&](MetaFixture& f) { setNonNegative(f, "setDensity", f.density, v); }); }
void setSensor(ScriptFixture* self, int on) { with(self, [&](MetaFixture& f) { ScriptApi::setBool(f, "setSensor", f.sensor, on != 0); }); }
void setFilterCategoryBits(ScriptFixture* self, int bits)
{
    with(self, [&](MetaFixture& f) { ScriptApi::setInt(f, "setFilterCategoryBits", f.filterCategoryBits, bits); });
}
void setFilterMaskBits(ScriptFixture* self, int bits)
{
    with(self, [&](MetaFixture& f) { ScriptApi::setInt(f, "setFilterMaskBits", f.filterMaskBits, bits); });
}
void setFilterGroupIndex(ScriptFixture* self, int group)
{
    with(self, [&](MetaFixture& f) { ScriptApi::setInt(f, "setFilterGroupIndex", f.filterGroupIndex, group); });
}

namespace
{
float unitDensityMass(MetaFixture& f)
{
    const float density = f.density;
    f.density = 1;
    const float mass = fixtureMass(f);
    f.density = density;
    return mass;
}
} // namespace

void setMass(ScriptFixture* self, float mass)
{
    with(self, [&](MetaFixture& f) {
        if (!ScriptApi::isUsable(mass, "fixture", "setMass"))
            return;
        const float unit = unitDensityMass(f);
        if (!(unit > 0)) {
            plaxLog(LOG_WARNING, "Ignoring setMass on fixture %u: its shapes have no area", f.id());
            return;
        }
        setNonNegative(f, "setDensity", f.density, mass / unit);
    });
}

ScriptVertex getVertex(ScriptFixture* self, int index)
{
    MetaFixture* f = ScriptApi::use(*self, "getVertex called on invalid fixture");
    if (!f || !validIndex(*f, index))
        return {};
    return ScriptApi::vertexHandle(f, index);
}

ScriptBody getBody(ScriptFixture* self)
{
    MetaFixture* f = ScriptApi::use(*self, "getBody called on invalid fixture");
    return ScriptApi::bodyHandle(f ? f->body() : nullptr);
}

void setVertex(ScriptFixture* self, int index, float x, float y)
{
    with(self, [&](MetaFixture& f) { VertexEdits::move(f, index, {x, y}); });
}
void setVertexV(ScriptFixture* self, int index, ScriptVec2 p) { setVertex(self, index, p.x, p.y); }

ScriptVertex addVertex(ScriptFixture* self, int index, float x, float y)
{
    MetaFixture* f = ScriptApi::use(*self);
    if (!f || !VertexEdits::insert(*f, index, {x, y}))
        return {};
    return ScriptApi::vertexHandle(f, index);
}
ScriptVertex addVertexV(ScriptFixture* self, int index, ScriptVec2 p) { return addVertex(self, index, p.x, p.y); }

void deleteVertex(ScriptFixture* self, int index)
{
    with(self, [&](MetaFixture& f) { VertexEdits::remove(f, index); });
}

int getNumVertices(ScriptFixture* self) { return read<int>(self, [](MetaFixture& f) { return int(f.vertices().size()); }); }

CScriptArray* getVertices(ScriptFixture* self)
{
    CScriptArray* array = ScriptApi::newArray("array<vertex>");
    if (MetaFixture* f = ScriptApi::use(*self))
        for (size_t i = 0; array && i < f->vertices().size(); ++i) {
            ScriptVertex v = ScriptApi::vertexHandle(f, int(i));
            ScriptApi::appendToArray(*array, &v);
        }
    return array;
}

void setVerticesFromPoints(ScriptFixture* self, const CScriptArray& points)
{
    with(self, [&](MetaFixture& f) {
        std::vector<Vec2> list;
        for (asUINT i = 0; i < points.GetSize(); ++i) {
            const auto* p = static_cast<const ScriptVec2*>(points.At(i));
            list.push_back({p->x, p->y});
        }
        VertexEdits::replaceAll(f, list);
    });
}

void setVerticesFromVertices(ScriptFixture* self, const CScriptArray& vertices)
{
    with(self, [&](MetaFixture& f) {
        std::vector<Vec2> list;
        for (asUINT i = 0; i < vertices.GetSize(); ++i) {
            const auto* v = static_cast<const ScriptVertex*>(vertices.At(i));
            list.push_back({v->x, v->y});
        }
        VertexEdits::replaceAll(f, list);
    });
}

void deleteFixture(ScriptFixture* self) { with(self, [](MetaFixture& f) { ItemOps::deleteFixture(f); }); }

void reverseWinding(ScriptFixture* self)
{
    with(self, [](MetaFixture& f) {
        std::vector<Vec2> vertices = f.vertices();
        std::reverse(vertices.begin(), vertices.end());
        const int count = int(vertices.size());
        f.setVertices(std::move(vertices));
        if (Selection* s = selection()) {
            std::vector<int> selected;
            for (const Selection::VertexRef& v : s->vertices())
                if (v.fixture == f.id())
                    selected.push_back(v.index);
            for (int index : selected)
                s->removeVertex(f.id(), index);
            for (int index : selected)
                s->addVertex(f.id(), count - 1 - index);
        }
        ScriptApi::record<ReverseFixureWindingCommand>(f.id());
    });
}

float getFriction(ScriptFixture* self) { return read<float>(self, [](MetaFixture& f) { return f.friction; }); }
float getRestitution(ScriptFixture* self) { return read<float>(self, [](MetaFixture& f) { return f.restitution; }); }
float getDensity(ScriptFixture* self) { return read<float>(self, [](MetaFixture& f) { return f.density; }); }
bool isSensor(ScriptFixture* self) { return read<bool>(self, [](MetaFixture& f) { return f.sensor; }); }
int getFilterCategoryBits(ScriptFixture* self) { return read<int>(self, [](MetaFixture& f) { return f.filterCategoryBits; }); }
int getFilterMaskBits(ScriptFixture* self) { return read<int>(self, [](MetaFixture& f) { return f.filterMaskBits; }); }
int getFilterGroupIndex(ScriptFixture* self) { return read<int>(self, [](MetaFixture& f) { return f.filterGroupIndex; }); }
float getMass(ScriptFixture* self) { return read<float>(self, [](MetaFixture& f) { return fixtureMass(f); }); }

CScriptArray* getShapes(ScriptFixture* self)
{
    CScriptArray* array = ScriptApi::newArray("array<shape>");
    if (MetaFixture* f = ScriptApi::use(*self))
        for (size_t i = 0; array && i < f->shapes().size(); ++i) {
            ScriptShape s = ScriptApi::shapeHandle(f, int(i));
            ScriptApi::appendToArray(*array, &s);
        }
    return array;
}

ScriptShape getShape(ScriptFixture* self, int index)
{
    MetaFixture* f = ScriptApi::use(*self);
    return f ? ScriptApi::shapeHandle(f, index) : ScriptShape();
}

ScriptFixture getFixture(int id)
{
    MetaWorld* world = ScriptApi::world();
    return ScriptApi::fixtureHandle(world && id > 0 ? world->findFixture(ItemId(id)) : nullptr);
}

ScriptFixture getFixtureByName(const std::string& name)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return {};
    return ScriptApi::fixtureHandle(
        static_cast<const MetaFixture*>(world->registry(ItemKind::Fixture).findByName(QString::fromStdString(name))));
}

namespace
{
template <class Keep>
std::vector<const MetaFixture*> allFixtures(Keep keep)
{
    std::vector<const MetaFixture*> fixtures;
    if (MetaWorld* world = ScriptApi::world())
        for (const auto& b : world->bodies())
            for (const auto& f : b->fixtures())
                if (keep(*f))
                    fixtures.push_back(f.get());
    return fixtures;
}
} // namespace

CScriptArray* getFixtures(const std::string& name)
{
    const QString wanted = QString::fromStdString(name);
    return fixtureArray(allFixtures([&](const MetaFixture& f) { return f.name() == wanted; }));
}

CScriptArray* getSelectedFixtures()
{
    std::vector<const MetaFixture*> fixtures;
    if (ScriptDocument* doc = ScriptApi::document())
        for (ItemId id : doc->selection().items(ItemKind::Fixture))
            if (const MetaFixture* f = doc->world().findFixture(id))
                fixtures.push_back(f);
    return fixtureArray(fixtures);
}

CScriptArray* getAllFixtures()
{
    return fixtureArray(allFixtures([](const MetaFixture&) { return true; }));
}

void selectAll(const CScriptArray& fixtures) { forEach<ScriptFixture>(fixtures, select); }
void deselectAll(const CScriptArray& fixtures) { forEach<ScriptFixture>(fixtures, deselect); }
void deleteAll(const CScriptArray& fixtures) { forEach<ScriptFixture>(fixtures, deleteFixture); }
} // namespace FixtureApi

namespace ShapeApi
{
namespace
{
MetaFixture* fixtureOf(const ScriptShape& s)
{
    MetaWorld* world = ScriptApi::world();
    MetaFixture* f = s.valid && world ? world->findFixture(s.fixture) : nullptr;
    if (!f || s.index < 0 || size_t(s.index) >= f->shapes().size()) {
        plaxLog(LOG_ERROR, "Script attempted to use invalid shape");
        return nullptr;
    }
    return f;
}
} // namespace

bool opEquals(const ScriptShape* self, const ScriptShape& other)
{
    return self->valid == other.valid && self->fixture == other.fixture && self->index == other.index;
}

void setType(ScriptShape* self, int type)
{
    MetaFixture* f = fixtureOf(*self);
    if (!f)
        return;
    if (type < int(ShapeType::Circle) || type > int(ShapeType::Loop)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set invalid shape type: %d", type);
        return;
    }
    const ShapeType wanted = ShapeType(type);
    MetaShape& shape = f->shape(size_t(self->index));
    const ShapeType old = shape.type();
    if (old == wanted || !shape.setType(wanted))
        return;
    self->type = type;
    ScriptApi::record<SetShapeTypeCommand>(f->id(), self->index, old, wanted);
}

void setRadius(ScriptShape* self, float radius)
{
    MetaFixture* f = fixtureOf(*self);
    if (!f || !ScriptApi::isUsable(radius, "shape", "setRadius"))
        return;
    if (radius < 0) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set negative radius for shape");
        return;
    }
    MetaShape& shape = f->shape(size_t(self->index));
    const float old = shape.radius();
    if (old == radius || !shape.setRadius(radius))
        return;
    ScriptApi::record<SetShapeRadiusCommand>(f->id(), self->index, old, radius);
}

float getRadius(ScriptShape* self)
{
    MetaFixture* f = fixtureOf(*self);
    return f ? f->shapes()[size_t(self->index)].radius() : 0;
}

ScriptShape getShape(int fixtureId, int index)
{
    MetaWorld* world = ScriptApi::world();
    return ScriptApi::shapeHandle(world && fixtureId > 0 ? world->findFixture(ItemId(fixtureId)) : nullptr, index);
}
} // namespace ShapeApi

namespace VertexApi
{
bool opEquals(const ScriptVertex* self, const ScriptVertex& other)
{
    return self->valid == other.valid && self->fixture == other.fixture && self->index == other.index;
}

void select(ScriptVertex* self)
{
    Selection* s = selection();
    if (VertexEdits::fixtureOf(*self) && s && s->addVertex(self->fixture, int(self->index)))
        ScriptApi::record<SelectVertexCommand>(self->fixture, int(self->index));
}

void deselect(ScriptVertex* self)
{
    Selection* s = selection();
    if (VertexEdits::fixtureOf(*self) && s && s->removeVertex(self->fixture, int(self->index)))
        ScriptApi::record<DeselectVertexCommand>(self->fixture, int(self->index));
}

bool isSelected(ScriptVertex* self)
{
    Selection* s = selection();
    return VertexEdits::fixtureOf(*self) && s && s->containsVertex(self->fixture, int(self->index));
}

void setPos(ScriptVertex* self, float x, float y)
{
    if (MetaFixture* f = VertexEdits::fixtureOf(*self))
        VertexEdits::move(*f, int(self->index), {x, y});
}
void setPosV(ScriptVertex* self, ScriptVec2 p) { setPos(self, p.x, p.y); }

void setWorldPos(ScriptVertex* self, float x, float y)
{
    MetaFixture* f = VertexEdits::fixtureOf(*self);
    if (!f)
        return;
    Vec2 local{x, y};
    if (const MetaBody* b = f->body())
        local = rotate(Vec2{x, y} - b->position, -b->angle);
    VertexEdits::move(*f, int(self->index), local);
}
void setWorldPosV(ScriptVertex* self, ScriptVec2 p) { setWorldPos(self, p.x, p.y); }

ScriptFixture getFixture(ScriptVertex* self)
{
    return ScriptApi::fixtureHandle(VertexEdits::fixtureOf(*self));
}

void deleteVertex(ScriptVertex* self)
{
    if (MetaFixture* f = VertexEdits::fixtureOf(*self))
        VertexEdits::remove(*f, int(self->index));
}

ScriptVertex next(ScriptVertex* self)
{
    MetaFixture* f = VertexEdits::fixtureOf(*self);
    return f ? ScriptApi::vertexHandle(f, int((self->index + 1) % f->vertices().size())) : ScriptVertex();
}

ScriptVertex prev(ScriptVertex* self)
{
    MetaFixture* f = VertexEdits::fixtureOf(*self);
    const size_t n = f ? f->vertices().size() : 0;
    return f ? ScriptApi::vertexHandle(f, int((self->index + n - 1) % n)) : ScriptVertex();
}

ScriptVertex getVertex(int fixtureId, int index)
{
    MetaWorld* world = ScriptApi::world();
    return ScriptApi::vertexHandle(world && fixtureId > 0 ? world->findFixture(ItemId(fixtureId)) : nullptr, index);
}

ScriptVertex getVertexByName(const std::string& fixtureName, int index)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return {};
    const auto* f = static_cast<const MetaFixture*>(
        world->registry(ItemKind::Fixture).findByName(QString::fromStdString(fixtureName)));
    return ScriptApi::vertexHandle(f, index);
}

namespace
{
CScriptArray* vertexArray(const std::vector<std::pair<const MetaFixture*, int>>& vertices)
{
    CScriptArray* array = ScriptApi::newArray("array<vertex>");
    for (size_t i = 0; array && i < vertices.size(); ++i) {
        ScriptVertex v = ScriptApi::vertexHandle(vertices[i].first, vertices[i].second);
        ScriptApi::appendToArray(*array, &v);
    }
    return array;
}

template <class Keep>
std::vector<std::pair<const MetaFixture*, int>> verticesOf(Keep keep)
{
    std::vector<std::pair<const MetaFixture*, int>> vertices;
    if (MetaWorld* world = ScriptApi::world())
        for (const auto& b : world->bodies())
            for (const auto& f : b->fixtures())
                if (keep(*f))
                    for (size_t i = 0; i < f->vertices().size(); ++i)
                        vertices.emplace_back(f.get(), int(i));
    return vertices;
}
} // namespace

CScriptArray* getVertices(const std::string& fixtureName)
{
    const QString wanted = QString::fromStdString(fixtureName);
    return vertexArray(verticesOf([&](const MetaFixture& f) { return f.name() == wanted; }));
}

CScriptArray* getSelectedVertices()
{
    std::vector<std::pair<const MetaFixture*, int>> vertices;
    if (ScriptDocument* doc = ScriptApi::document())
        for (const Selection::VertexRef& v : doc->selection().vertices())
            if (const MetaFixture* f = doc->world().findFixture(v.fixture))
                vertices.emplace_back(f, v.index);
    return vertexArray(vertices);
}

CScriptArray* getAllVertices()
{
    return vertexArray(verticesOf([](const MetaFixture&) { return true; }));
}

void selectAll(const CScriptArray& vertices) { forEach<ScriptVertex>(vertices, select); }
void deselectAll(const CScriptArray& vertices) { forEach<ScriptVertex>(vertices, deselect); }

void deleteAll(const CScriptArray& vertices)
{
    // Deleting shifts later indices of the same fixture, so highest indices go first.
    std::vector<ScriptVertex> handles;
    for (asUINT i = 0; i < vertices.GetSize(); ++i)
        handles.push_back(*static_cast<const ScriptVertex*>(vertices.At(i)));
    std::sort(handles.begin(), handles.end(), [](const ScriptVertex& a, const ScriptVertex& b) {
        return a.fixture != b.fixture ? a.fixture < b.fixture : a.index > b.index;
    });
    for (ScriptVertex& h : handles)
        deleteVertex(&h);
}
} // namespace VertexApi
