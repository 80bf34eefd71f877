#include "api/scripttransform.h"

#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "api/scriptfixture.h"
#include "api/scriptitemops.h"
#include "api/scriptkinds.h"
#include "api/scriptpath.h"
#include "api/scriptregistrar.h"
#include "base/log.h"
#include "editing/editorstate.h"
#include "editing/scripttext.h"
#include "editing/selection.h"
#include "io/jsontext.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "sampling/pathfixture.h"
#include "sampling/samplerframe.h"

#include <rapidjson/document.h>

#include <QCoreApplication>

#include <cmath>
#include <functional>
#include <optional>
#include <string>

using namespace AngelScript;

namespace
{
Vec2 rotated(Vec2 v, float angle)
{
    const float c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}

// The placement of an item's body (identity for none).
struct Frame
{
    Vec2 origin;
    float angle = 0;
    Vec2 toWorld(Vec2 local) const { return origin + rotated(local, angle); }
    Vec2 toLocal(Vec2 world) const { return rotated(world - origin, -angle); }
    Vec2 vectorToLocal(Vec2 v) const { return rotated(v, -angle); }
};

Frame frameOf(const MetaBody* body)
{
    return body ? Frame{body->position, body->angle} : Frame{};
}

Vec2 cursor()
{
    ScriptDocument* doc = ScriptApi::document();
    return doc ? doc->editorState().cursor : Vec2{};
}

bool usable(float a, const char* what) { return ScriptApi::isUsable(a, "transform", what); }

// How each kind is moved, turned and scaled. Positions are in world
// coordinates; the changes go through the recorded setters.
template <class Handle>
struct Transform;

template <>
struct Transform<ScriptBody>
{
    static MetaBody* item(const ScriptBody& h) { return ScriptApi::use(h); }
    static Vec2 center(MetaBody& b) { return b.position; }
    static void translate(MetaBody& b, Vec2 d)
    {
        ScriptBody h = ScriptApi::bodyHandle(&b);
        BodyApi::setPosition(&h, b.position.x + d.x, b.position.y + d.y);
    }
    static void rotate(MetaBody& b, Vec2 pivot, float a)
    {
        ScriptBody h = ScriptApi::bodyHandle(&b);
        const Vec2 p = pivot + rotated(b.position - pivot, a);
        BodyApi::setPosition(&h, p.x, p.y);
        BodyApi::setAngle(&h, b.angle + a);
    }
    static void scale(MetaBody& b, Vec2 pivot, float sx, float sy)
    {
        ScriptBody h = ScriptApi::bodyHandle(&b);
        const Vec2 p{pivot.x + (b.position.x - pivot.x) * sx, pivot.y + (b.position.y - pivot.y) * sy};
        BodyApi::setPosition(&h, p.x, p.y);
        for (const auto& f : b.fixtures())
            scaleVertices(*f, {0, 0}, sx, sy);
    }
    // Scales a fixture's vertices (body coordinates) about a local point, its
    // radii by the mean factor, and keeps the winding when mirrored.
    static void scaleVertices(MetaFixture& f, Vec2 localPivot, float sx, float sy)
    {
        std::vector<Vec2> points = f.vertices();
        for (Vec2& v : points)
            v = {localPivot.x + (v.x - localPivot.x) * sx, localPivot.y + (v.y - localPivot.y) * sy};
        VertexEdits::replaceAll(f, points);
        const float factor = (std::fabs(sx) + std::fabs(sy)) / 2;
        for (size_t i = 0; i < f.shapes().size(); ++i) {
            ScriptShape shape = ScriptApi::shapeHandle(&f, int(i));
            if (f.shapes()[i].radius() != 0)
                ShapeApi::setRadius(&shape, f.shapes()[i].radius() * factor);
        }
        if (sx * sy < 0) {
            ScriptFixture fh = ScriptApi::fixtureHandle(&f);
            FixtureApi::reverseWinding(&fh);
        }
    }
};

template <>
struct Transform<ScriptFixture>
{
    static MetaFixture* item(const ScriptFixture& h) { return ScriptApi::use(h); }
    static Vec2 center(MetaFixture& f)
    {
        Vec2 sum;
        for (const Vec2& v : f.vertices())
            sum = sum + v;
        const Vec2 local = f.vertices().empty() ? Vec2{} : sum * (1.0f / float(f.vertices().size()));
        return frameOf(f.body()).toWorld(local);
    }
    static void moveAll(MetaFixture& f, const std::function<Vec2(Vec2)>& map)
    {
        const Frame frame = frameOf(f.body());
        std::vector<Vec2> points = f.vertices();
        for (Vec2& v : points)
            v = frame.toLocal(map(frame.toWorld(v)));
        VertexEdits::replaceAll(f, points);
    }
    static void translate(MetaFixture& f, Vec2 d) { moveAll(f, [&](Vec2 w) { return w + d; }); }
    static void rotate(MetaFixture& f, Vec2 pivot, float a) { moveAll(f, [&](Vec2 w) { return pivot + rotated(w - pivot, a); }); }
    static void scale(MetaFixture& f, Vec2 pivot, float sx, float sy)
    {
        Transform<ScriptBody>::scaleVertices(f, frameOf(f.body()).toLocal(pivot), sx, sy);
    }
};

template <>
struct Transform<ScriptVertex>
{
    struct Ref
    {
        MetaFixture* fixture;
        int index;
    };
    static std::optional<Ref> item(const ScriptVertex& h)
    {
        MetaWorld* world = ScriptApi::world();
        MetaFixture* f = h.valid && world ? world->findFixture(h.fixture) : nullptr;
        if (!f || h.index >= f->vertices().size()) {
            plaxLog(LOG_ERROR, "Script attempted to use invalid vertex");
            return std::nullopt;
        }
        return Ref{f, int(h.index)};
    }
    static Vec2 center(const Ref& r) { return frameOf(r.fixture->body()).toWorld(r.fixture->vertices()[size_t(r.index)]); }
    static void place(const Ref& r, Vec2 w) { VertexEdits::move(*r.fixture, r.index, frameOf(r.fixture->body()).toLocal(w)); }
    static void translate(const Ref& r, Vec2 d) { place(r, center(r) + d); }
    static void rotate(const Ref& r, Vec2 pivot, float a) { place(r, pivot + rotated(center(r) - pivot, a)); }
    static void scale(const Ref& r, Vec2 pivot, float sx, float sy)
    {
        const Vec2 c = center(r);
        place(r, {pivot.x + (c.x - pivot.x) * sx, pivot.y + (c.y - pivot.y) * sy});
    }
};

// Images and samplers: a centre in body coordinates, an angle, a size.
template <class Item>
struct Placed
{
    static Vec2 center(Item& i) { return frameOf(i.body).toWorld(i.center); }
    static void setCenter(Item& i, Vec2 world) { ScriptApi::setVec(i, "setCenter", i.center, frameOf(i.body).toLocal(world)); }
    static void translate(Item& i, Vec2 d) { setCenter(i, center(i) + d); }
    static void rotate(Item& i, Vec2 pivot, float a)
    {
        setCenter(i, pivot + rotated(center(i) - pivot, a));
        ScriptApi::setFloat(i, "setAngle", i.angle, i.angle + a);
    }
    static void scaleCenter(Item& i, Vec2 pivot, float sx, float sy)
    {
        const Vec2 c = center(i);
        setCenter(i, {pivot.x + (c.x - pivot.x) * sx, pivot.y + (c.y - pivot.y) * sy});
        if (sx * sy < 0)
            ScriptApi::setBool(i, "setFlip", i.flip, !i.flip);
    }
};

template <>
struct Transform<ScriptImage> : Placed<MetaImage>
{
    static MetaImage* item(const ScriptImage& h) { return ScriptApi::use(h); }
    static void scale(MetaImage& i, Vec2 pivot, float sx, float sy)
    {
        scaleCenter(i, pivot, sx, sy);
        ScriptApi::setFloat(i, "setScale", i.scale, i.scale * std::fabs(sy));
        if (sy != 0)
            ScriptApi::setFloat(i, "setAspectScale", i.aspectScale, i.aspectScale * std::fabs(sx / sy));
    }
};

template <>
struct Transform<ScriptSampler> : Placed<MetaSampler>
{
    static MetaSampler* item(const ScriptSampler& h) { return ScriptApi::use(h); }
    static void scale(MetaSampler& s, Vec2 pivot, float sx, float sy)
    {
        scaleCenter(s, pivot, sx, sy);
        ScriptApi::setFloat(s, "setHeight", s.height, s.height * std::fabs(sy));
    }
};

template <>
struct Transform<ScriptObject>
{
    static MetaObject* item(const ScriptObject& h) { return ScriptApi::use(h); }
    static Vec2 center(MetaObject& o) { return o.position; }
    static void translate(MetaObject& o, Vec2 d) { ScriptApi::setVec(o, "setPosition", o.position, o.position + d); }
    static void rotate(MetaObject& o, Vec2 pivot, float a)
    {
        ScriptApi::setVec(o, "setPosition", o.position, pivot + rotated(o.position - pivot, a));
        ScriptApi::setFloat(o, "setAngle", o.angle, o.angle + a);
    }
    static void scale(MetaObject& o, Vec2 pivot, float sx, float sy)
    {
        ScriptApi::setVec(o, "setPosition", o.position,
                          {pivot.x + (o.position.x - pivot.x) * sx, pivot.y + (o.position.y - pivot.y) * sy});
        ScriptApi::setFloat(o, "setScale", o.scale, o.scale * std::sqrt(std::fabs(sx * sy)));
        if (sx * sy < 0)
            ScriptApi::setBool(o, "setFlip", o.flip, !o.flip);
    }
};

template <class Handle>
struct Ops
{
    using T = Transform<Handle>;

    template <class Item>
    static Vec2 pivotFor(int mode, Item& item, Vec2 groupCenter)
    {
        return mode == 2 ? cursor() : mode == 1 ? groupCenter : T::center(item);
    }

    static Vec2 groupCenter(const std::vector<Handle>& handles)
    {
        Vec2 sum;
        int count = 0;
        for (const Handle& h : handles)
            if (auto item = T::item(h)) {
                sum = sum + T::center(*item);
                ++count;
            }
        return count ? sum * (1.0f / float(count)) : Vec2{};
    }

    static void translateAll(const std::vector<Handle>& handles, Vec2 d)
    {
        if (!ScriptApi::isUsable(d, "transform", "translate"))
            return;
        for (const Handle& h : handles)
            if (auto item = T::item(h))
                T::translate(*item, d);
    }
    static void rotateAll(const std::vector<Handle>& handles, int mode, float a)
    {
        if (!usable(a, "rotate"))
            return;
        const Vec2 group = groupCenter(handles);
        for (const Handle& h : handles)
            if (auto item = T::item(h))
                T::rotate(*item, pivotFor(mode, *item, group), a);
    }
    static void scaleAll(const std::vector<Handle>& handles, int mode, float sx, float sy)
    {
        if (!usable(sx, "scale") || !usable(sy, "scale"))
            return;
        if (sx == 0 || sy == 0) {
            plaxLog(LOG_WARNING, "Ignoring scale by 0");
            return;
        }
        const Vec2 group = groupCenter(handles);
        for (const Handle& h : handles)
            if (auto item = T::item(h))
                T::scale(*item, pivotFor(mode, *item, group), sx, sy);
    }

    static std::vector<Handle> list(const CScriptArray& a)
    {
        std::vector<Handle> handles;
        for (asUINT i = 0; i < a.GetSize(); ++i)
            handles.push_back(*static_cast<const Handle*>(a.At(i)));
        return handles;
    }
    static void translateV(const Handle& h, ScriptVec2 d) { translateAll({h}, {d.x, d.y}); }
    static void translateF(const Handle& h, float x, float y) { translateAll({h}, {x, y}); }
    static void translateArrayV(const CScriptArray& a, ScriptVec2 d) { translateAll(list(a), {d.x, d.y}); }
    static void translateArrayF(const CScriptArray& a, float x, float y) { translateAll(list(a), {x, y}); }
    static void rotateOne(const Handle& h, int mode, float angle) { rotateAll({h}, mode, angle); }
    static void rotateArray(const CScriptArray& a, int mode, float angle) { rotateAll(list(a), mode, angle); }
    static void scaleOne(const Handle& h, int mode, float sx, float sy) { scaleAll({h}, mode, sx, sy); }
    static void scaleArray(const CScriptArray& a, int mode, float sx, float sy) { scaleAll(list(a), mode, sx, sy); }
};
} // namespace

namespace
{
struct JointOps
{
    static void moveAnchors(MetaJoint& j, int which, const std::function<Vec2(Vec2)>& map)
    {
        if (which != 1) {
            const Frame a = frameOf(j.bodyA);
            ScriptApi::setVec(j, "setLocalAnchorA", j.anchorA, a.toLocal(map(a.toWorld(j.anchorA))));
        }
        if (which != 0) {
            const Frame b = frameOf(j.bodyB);
            ScriptApi::setVec(j, "setLocalAnchorB", j.anchorB, b.toLocal(map(b.toWorld(j.anchorB))));
        }
    }
    static Vec2 center(MetaJoint& j)
    {
        return (frameOf(j.bodyA).toWorld(j.anchorA) + frameOf(j.bodyB).toWorld(j.anchorB)) * 0.5f;
    }
    static void translateAll(const std::vector<ScriptJoint>& joints, int which, Vec2 d)
    {
        if (!ScriptApi::isUsable(d, "transform", "translate"))
            return;
        for (const ScriptJoint& h : joints)
            if (MetaJoint* j = ScriptApi::use(h))
                moveAnchors(*j, which, [&](Vec2 w) { return w + d; });
    }
    static void rotateAll(const std::vector<ScriptJoint>& joints, int which, int mode, float a)
    {
        if (!usable(a, "rotate"))
            return;
        Vec2 group;
        int count = 0;
        for (const ScriptJoint& h : joints)
            if (MetaJoint* j = ScriptApi::use(h)) {
                group = group + center(*j);
                ++count;
            }
        if (count)
            group = group * (1.0f / float(count));
        for (const ScriptJoint& h : joints)
            if (MetaJoint* j = ScriptApi::use(h)) {
                const Vec2 pivot = mode == 2 ? cursor() : mode == 1 ? group : center(*j);
                moveAnchors(*j, which, [&](Vec2 w) { return pivot + rotated(w - pivot, a); });
            }
    }
    static std::vector<ScriptJoint> list(const CScriptArray& a) { return Ops<ScriptJoint>::list(a); }
    static void translateV(const ScriptJoint& h, int which, ScriptVec2 d) { translateAll({h}, which, {d.x, d.y}); }
    static void translateF(const ScriptJoint& h, int which, float x, float y) { translateAll({h}, which, {x, y}); }
    static void translateArrayV(const CScriptArray& a, int which, ScriptVec2 d) { translateAll(list(a), which, {d.x, d.y}); }
    static void translateArrayF(const CScriptArray& a, int which, float x, float y) { translateAll(list(a), which, {x, y}); }
    static void rotateOne(const ScriptJoint& h, int which, int mode, float a) { rotateAll({h}, which, mode, a); }
    static void rotateArray(const CScriptArray& a, int which, int mode, float angle) { rotateAll(list(a), which, mode, angle); }
};

// A record text with a fresh name (and without the fixtures, for a body).
QString copyText(const MetaItem& item, ItemKind kind, bool dropFixtures)
{
    rapidjson::Document record;
    QString error;
    if (!parseJson(ItemOps::recordText(item).toUtf8(), &record, &error) || !record.IsObject())
        return QString();
    const QByteArray name = item.world()->uniqueName(kind).toUtf8();
    record.RemoveMember("name");
    record.AddMember("name", rapidjson::Value(name.constData(), record.GetAllocator()), record.GetAllocator());
    if (dropFixtures)
        record.RemoveMember("fixture");
    return QString::fromUtf8(jsonToText(record, false));
}

template <class Handle>
struct Duplicate
{
    using K = HandleKind<Handle>;
    static typename K::Item* copy(typename K::Item& item);
    static Handle one(const Handle& h, bool selectCopy)
    {
        auto* item = ScriptApi::use(h);
        if (!item)
            return Handle();
        auto* made = copy(*item);
        if (made && selectCopy) {
            ScriptApi::setSelected(*item, false);
            ScriptApi::setSelected(*made, true);
        }
        return K::handle(made);
    }
    static Handle single(const Handle& h) { return one(h, false); }
    static Handle singleSelecting(const Handle& h, bool select) { return one(h, select); }
    static CScriptArray* many(const CScriptArray& handles, bool select)
    {
        CScriptArray* result = CScriptArray::Create(handles.GetArrayObjectType());
        for (const Handle& h : listOf(handles)) {
            Handle made = one(h, select);
            if (made.valid)
                ScriptApi::appendToArray(*result, &made);
        }
        return result;
    }
    static std::vector<Handle> listOf(const CScriptArray& a)
    {
        std::vector<Handle> list;
        for (asUINT i = 0; i < a.GetSize(); ++i)
            list.push_back(*static_cast<const Handle*>(a.At(i)));
        return list;
    }
    static CScriptArray* manyPlain(const CScriptArray& handles) { return many(handles, false); }
};

template <>
MetaBody* Duplicate<ScriptBody>::copy(MetaBody& body)
{
    MetaBody* made = ItemOps::addBody(0, copyText(body, ItemKind::Body, true));
    if (made)
        for (const auto& f : body.fixtures())
            ItemOps::addFixture(*made, 0, copyText(*f, ItemKind::Fixture, false));
    return made;
}

template <>
MetaFixture* Duplicate<ScriptFixture>::copy(MetaFixture& f)
{
    return f.body() ? ItemOps::addFixture(*f.body(), 0, copyText(f, ItemKind::Fixture, false)) : nullptr;
}

template <>
MetaJoint* Duplicate<ScriptJoint>::copy(MetaJoint& j) { return ItemOps::addJoint(0, copyText(j, ItemKind::Joint, false)); }
template <>
MetaImage* Duplicate<ScriptImage>::copy(MetaImage& i) { return ItemOps::addImage(0, copyText(i, ItemKind::Image, false)); }
template <>
MetaSampler* Duplicate<ScriptSampler>::copy(MetaSampler& s)
{
    return ItemOps::addSampler(0, copyText(s, ItemKind::Sampler, false));
}
template <>
MetaObject* Duplicate<ScriptObject>::copy(MetaObject& o) { return ItemOps::addObject(0, copyText(o, ItemKind::Object, false)); }

void stepBodies(const CScriptArray& bodies, int steps)
{
    ScriptDocument* doc = ScriptApi::document();
    if (!doc)
        return;
    MetaWorld& world = doc->world();
    if (steps <= 0)
        return;
    const float hz = world.settings.stepsPerSecond > 0 ? world.settings.stepsPerSecond : 60;
    WorldBuild build(world);
    build.addScene(world);
    for (int i = 0; i < steps; ++i)
        build.world().Step(1.0f / hz, world.settings.velocityIterations, world.settings.positionIterations);
    UndoMacroScope macro(doc->undoStack(), QCoreApplication::translate("TransformApi", "step bodies"));
    for (asUINT i = 0; i < bodies.GetSize(); ++i) {
        ScriptBody h = *static_cast<const ScriptBody*>(bodies.At(i));
        MetaBody* body = ScriptApi::use(h);
        if (!body)
            continue;
        for (const BuiltBody& built : build.bodies()) {
            if (built.source != body || !built.body)
                continue;
            const b2Vec2 p = built.body->GetPosition();
            const b2Vec2 v = built.body->GetLinearVelocity();
            BodyApi::setPosition(&h, p.x, p.y);
            BodyApi::setAngle(&h, built.body->GetAngle());
            BodyApi::setLinearVelocity(&h, v.x, v.y);
            BodyApi::setAngularVelocity(&h, built.body->GetAngularVelocity());
            break;
        }
    }
}

// A fixture on a body made from a sampler's path (see sampling/pathfixture.h).
ScriptFixture createFixture(const ScriptBody& bodyHandle, const ScriptPath& pathHandle)
{
    MetaWorld* world = ScriptApi::world();
    MetaBody* body = ScriptApi::use(bodyHandle);
    if (!body)
        return {};
    MetaSampler* sampler = nullptr;
    const MetaPath* path = PathApi::use(pathHandle, &sampler);
    if (!path)
        return {};
    const PathShape shape = pathToShape(*path, SamplerFrame::of(*sampler), body);
    if (!shape.error.isEmpty()) {
        plaxLog(LOG_WARNING, QStringLiteral("createFixture: %1").arg(shape.error));
        return {};
    }
    QStringList xs, ys;
    for (const Vec2& v : shape.vertices) {
        xs << scriptFloat(v.x);
        ys << scriptFloat(v.y);
    }
    const QString json = QStringLiteral(R"({"name":"%1","density":1,"shapes":[{"type":"%2","radius":%3,"vertices":{"x":[%4],"y":[%5]}}]})")
                             .arg(world->uniqueName(ItemKind::Fixture), MetaShape::typeWord(shape.type),
                                  scriptFloat(shape.radius), xs.join(','), ys.join(','));
    return ScriptApi::fixtureHandle(ItemOps::addFixture(*body, 0, json));
}

template <class Handle>
void registerTransformsFor(ScriptRegistrar& reg, const char* type)
{
    using O = Ops<Handle>;
    auto decl = [&](const char* pattern) { return QString::fromLatin1(pattern).replace(QLatin1String("%T"), QLatin1String(type)).toStdString(); };
    reg.global(decl("void translate(const %T &in, vec2)").c_str(), asFUNCTION(O::translateV), asCALL_CDECL);
    reg.global(decl("void translate(const %T &in, float, float)").c_str(), asFUNCTION(O::translateF), asCALL_CDECL);
    reg.global(decl("void translate(const %T[] &in, vec2)").c_str(), asFUNCTION(O::translateArrayV), asCALL_CDECL);
    reg.global(decl("void translate(const %T[] &in, float, float)").c_str(), asFUNCTION(O::translateArrayF), asCALL_CDECL);
    reg.global(decl("void rotate(const %T &in, int, float)").c_str(), asFUNCTION(O::rotateOne), asCALL_CDECL);
    reg.global(decl("void rotate(const %T[] &in, int, float)").c_str(), asFUNCTION(O::rotateArray), asCALL_CDECL);
    reg.global(decl("void scale(const %T &in, int, float, float)").c_str(), asFUNCTION(O::scaleOne), asCALL_CDECL);
    reg.global(decl("void scale(const %T[] &in, int, float, float)").c_str(), asFUNCTION(O::scaleArray), asCALL_CDECL);
}

template <class Handle>
void registerDuplicateFor(ScriptRegistrar& reg, const char* type, bool withFlag)
{
    using D = Duplicate<Handle>;
    auto decl = [&](const char* pattern) { return QString::fromLatin1(pattern).replace(QLatin1String("%T"), QLatin1String(type)).toStdString(); };
    reg.global(decl("%T duplicate(const %T &in)").c_str(), asFUNCTION(D::single), asCALL_CDECL);
    reg.global(decl("%T[]@ duplicate(const %T[] &in)").c_str(), asFUNCTION(D::manyPlain), asCALL_CDECL);
    if (withFlag) {
        reg.global(decl("%T duplicate(const %T &in, bool)").c_str(), asFUNCTION(D::singleSelecting), asCALL_CDECL);
        reg.global(decl("%T[]@ duplicate(const %T[] &in, bool)").c_str(), asFUNCTION(D::many), asCALL_CDECL);
    }
}

template <class Handle>
std::vector<Handle> selectedHandles(ItemKind kind)
{
    std::vector<Handle> handles;
    ScriptDocument* doc = ScriptApi::document();
    for (ItemId id : doc->selection().items(kind))
        if (auto* item = static_cast<typename HandleKind<Handle>::Item*>(doc->world().findItem(kind, id)))
            handles.push_back(HandleKind<Handle>::handle(item));
    return handles;
}

template <class Handle>
void transformHandles(const std::vector<Handle>& handles, TransformApi::Operation operation, int pivotMode, float a,
                      float b)
{
    switch (operation) {
    case TransformApi::Operation::Translate: Ops<Handle>::translateAll(handles, {a, b}); break;
    case TransformApi::Operation::Rotate: Ops<Handle>::rotateAll(handles, pivotMode, a); break;
    case TransformApi::Operation::Scale: Ops<Handle>::scaleAll(handles, pivotMode, a, b); break;
    }
}

void transformJoints(const std::vector<ScriptJoint>& joints, TransformApi::Operation operation, int pivotMode, float a,
                     float b)
{
    switch (operation) {
    case TransformApi::Operation::Translate: JointOps::translateAll(joints, 2, {a, b}); break;
    case TransformApi::Operation::Rotate: JointOps::rotateAll(joints, 2, pivotMode, a); break;
    case TransformApi::Operation::Scale: {
        if (!usable(a, "scale") || !usable(b, "scale"))
            return;
        Vec2 group;
        int count = 0;
        for (const ScriptJoint& h : joints)
            if (MetaJoint* j = ScriptApi::use(h)) {
                group = group + JointOps::center(*j);
                ++count;
            }
        if (count)
            group = group * (1.0f / float(count));
        for (const ScriptJoint& h : joints)
            if (MetaJoint* j = ScriptApi::use(h)) {
                const Vec2 pivot = pivotMode == 2 ? cursor() : pivotMode == 1 ? group : JointOps::center(*j);
                JointOps::moveAnchors(*j, 2, [&](Vec2 w) {
                    return Vec2{pivot.x + (w.x - pivot.x) * a, pivot.y + (w.y - pivot.y) * b};
                });
            }
        break;
    }
    }
}

template <class Handle>
bool addCenter(const std::vector<ItemId>& ids, ItemKind kind, Vec2& sum, int& count)
{
    MetaWorld* world = ScriptApi::world();
    for (ItemId id : ids)
        if (auto* item = static_cast<typename HandleKind<Handle>::Item*>(world->findItem(kind, id))) {
            sum = sum + Transform<Handle>::center(*item);
            ++count;
        }
    return count > 0;
}
} // namespace

namespace TransformApi
{
ScriptVec2 selectionCenter(EditMode mode)
{
    ScriptDocument* doc = ScriptApi::document();
    if (!doc)
        return {};
    const Selection& s = doc->selection();
    Vec2 sum;
    int count = 0;
    switch (mode) {
    case EditMode::Bodies: addCenter<ScriptBody>(s.items(ItemKind::Body), ItemKind::Body, sum, count); break;
    case EditMode::Fixtures: addCenter<ScriptFixture>(s.items(ItemKind::Fixture), ItemKind::Fixture, sum, count); break;
    case EditMode::Vertices:
        for (const Selection::VertexRef& v : s.vertices())
            if (MetaFixture* f = doc->world().findFixture(v.fixture); f && size_t(v.index) < f->vertices().size()) {
                sum = sum + Transform<ScriptVertex>::center({f, v.index});
                ++count;
            }
        break;
    case EditMode::Joints:
        for (ItemId id : s.items(ItemKind::Joint))
            if (MetaJoint* j = doc->world().findJoint(id)) {
                sum = sum + JointOps::center(*j);
                ++count;
            }
        break;
    case EditMode::Images: addCenter<ScriptImage>(s.items(ItemKind::Image), ItemKind::Image, sum, count); break;
    case EditMode::Samplers: addCenter<ScriptSampler>(s.items(ItemKind::Sampler), ItemKind::Sampler, sum, count); break;
    case EditMode::Objects: addCenter<ScriptObject>(s.items(ItemKind::Object), ItemKind::Object, sum, count); break;
    }
    if (count == 0)
        return {};
    return {sum.x / float(count), sum.y / float(count)};
}

void transformSelection(EditMode mode, Operation operation, int pivotMode, float a, float b)
{
    ScriptDocument* doc = ScriptApi::document();
    if (!doc)
        return;
    switch (mode) {
    case EditMode::Bodies: transformHandles(selectedHandles<ScriptBody>(ItemKind::Body), operation, pivotMode, a, b); break;
    case EditMode::Fixtures: transformHandles(selectedHandles<ScriptFixture>(ItemKind::Fixture), operation, pivotMode, a, b); break;
    case EditMode::Vertices: {
        std::vector<ScriptVertex> vertices;
        for (const Selection::VertexRef& v : doc->selection().vertices())
            if (MetaFixture* f = doc->world().findFixture(v.fixture))
                vertices.push_back(ScriptApi::vertexHandle(f, v.index));
        transformHandles(vertices, operation, pivotMode, a, b);
        break;
    }
    case EditMode::Joints: transformJoints(selectedHandles<ScriptJoint>(ItemKind::Joint), operation, pivotMode, a, b); break;
    case EditMode::Images: transformHandles(selectedHandles<ScriptImage>(ItemKind::Image), operation, pivotMode, a, b); break;
    case EditMode::Samplers: transformHandles(selectedHandles<ScriptSampler>(ItemKind::Sampler), operation, pivotMode, a, b); break;
    case EditMode::Objects: transformHandles(selectedHandles<ScriptObject>(ItemKind::Object), operation, pivotMode, a, b); break;
    }
}

int duplicateSelection(EditMode mode)
{
    const auto copies = [](auto handles) {
        using Handle = typename decltype(handles)::value_type;
        int made = 0;
        for (const Handle& h : handles)
            made += Duplicate<Handle>::one(h, true).valid ? 1 : 0;
        return made;
    };
    switch (mode) {
    case EditMode::Bodies: return copies(selectedHandles<ScriptBody>(ItemKind::Body));
    case EditMode::Fixtures: return copies(selectedHandles<ScriptFixture>(ItemKind::Fixture));
    case EditMode::Joints: return copies(selectedHandles<ScriptJoint>(ItemKind::Joint));
    case EditMode::Images: return copies(selectedHandles<ScriptImage>(ItemKind::Image));
    case EditMode::Samplers: return copies(selectedHandles<ScriptSampler>(ItemKind::Sampler));
    case EditMode::Objects: return copies(selectedHandles<ScriptObject>(ItemKind::Object));
    case EditMode::Vertices: break;
    }
    return 0;
}

ScriptVec2 getSelectionCenter(int mode)
{
    if (mode < 0 || mode >= kEditModeCount)
        return {};
    return selectionCenter(EditMode(mode));
}

ScriptFixture createFixtureFromPath(const ScriptBody& body, const ScriptPath& path)
{
    return createFixture(body, path);
}

void registerTransforms(ScriptRegistrar& reg)
{
    registerTransformsFor<ScriptBody>(reg, "body");
    registerTransformsFor<ScriptFixture>(reg, "fixture");
    registerTransformsFor<ScriptVertex>(reg, "vertex");
    registerTransformsFor<ScriptImage>(reg, "image");
    registerTransformsFor<ScriptSampler>(reg, "sampler");
    registerTransformsFor<ScriptObject>(reg, "object");
    reg.global("void translate(const joint &in, int, vec2)", asFUNCTION(JointOps::translateV), asCALL_CDECL);
    reg.global("void translate(const joint &in, int, float, float)", asFUNCTION(JointOps::translateF), asCALL_CDECL);
    reg.global("void translate(const joint[] &in, int, vec2)", asFUNCTION(JointOps::translateArrayV), asCALL_CDECL);
    reg.global("void translate(const joint[] &in, int, float, float)", asFUNCTION(JointOps::translateArrayF), asCALL_CDECL);
    reg.global("void rotate(const joint &in, int, int, float)", asFUNCTION(JointOps::rotateOne), asCALL_CDECL);
    reg.global("void rotate(const joint[] &in, int, int, float)", asFUNCTION(JointOps::rotateArray), asCALL_CDECL);
    reg.global("vec2 getSelectionCenter(int)", asFUNCTION(getSelectionCenter), asCALL_CDECL);
}

void registerDuplicateAndStep(ScriptRegistrar& reg)
{
    registerDuplicateFor<ScriptBody>(reg, "body", true);
    registerDuplicateFor<ScriptFixture>(reg, "fixture", false);
    registerDuplicateFor<ScriptJoint>(reg, "joint", false);
    registerDuplicateFor<ScriptImage>(reg, "image", false);
    registerDuplicateFor<ScriptSampler>(reg, "sampler", false);
    registerDuplicateFor<ScriptObject>(reg, "object", false);
    reg.global("void step(const body[] &in, int)", asFUNCTION(stepBodies), asCALL_CDECL);
    reg.global("fixture createFixture(const body& in, const path& in)", asFUNCTION(createFixture), asCALL_CDECL);
}
} // namespace TransformApi
