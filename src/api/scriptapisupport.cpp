#include "api/scriptapisupport.h"

#include "base/log.h"
#include "editing/itemcommands.h"
#include "editing/propertycommands.h"
#include "editing/scripttext.h"
#include "editing/selection.h"
#include "engine/documentscripting.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <algorithm>
#include <cmath>

using namespace AngelScript;

namespace ScriptApi
{
ScriptDocument* document()
{
    return ScriptDocument::s_currentScriptContextDocument;
}

MetaWorld* world()
{
    ScriptDocument* doc = document();
    return doc ? &doc->world() : nullptr;
}

ScriptBody bodyHandle(const MetaBody* body)
{
    ScriptBody h;
    if (body) {
        h.valid = true;
        h.id = body->id();
        h.pos = {body->position.x, body->position.y};
        h.angle = body->angle;
    }
    return h;
}

ScriptFixture fixtureHandle(const MetaFixture* fixture)
{
    ScriptFixture h;
    if (fixture) {
        h.valid = true;
        h.id = fixture->id();
    }
    return h;
}

ScriptJoint jointHandle(const MetaJoint* joint)
{
    ScriptJoint h;
    if (joint) {
        h.valid = true;
        h.id = joint->id();
    }
    return h;
}

ScriptImage imageHandle(const MetaImage* image)
{
    ScriptImage h;
    if (image) {
        h.valid = true;
        h.id = image->id();
        h.center = {image->center.x, image->center.y};
    }
    return h;
}

ScriptSampler samplerHandle(const MetaSampler* sampler)
{
    ScriptSampler h;
    if (sampler) {
        h.valid = true;
        h.id = sampler->id();
        h.center = {sampler->center.x, sampler->center.y};
    }
    return h;
}

ScriptObject objectHandle(const MetaObject* object)
{
    ScriptObject h;
    if (object) {
        h.valid = true;
        h.id = object->id();
        h.pos = {object->position.x, object->position.y};
        h.angle = object->angle;
    }
    return h;
}

ScriptVertex vertexHandle(const MetaFixture* fixture, int index)
{
    ScriptVertex h;
    if (!fixture || index < 0 || size_t(index) >= fixture->vertices().size())
        return h;
    const Vec2 local = fixture->vertices()[size_t(index)];
    Vec2 world = local;
    if (const MetaBody* body = fixture->body()) {
        const float c = std::cos(body->angle), s = std::sin(body->angle);
        world = {body->position.x + c * local.x - s * local.y, body->position.y + s * local.x + c * local.y};
    }
    h.valid = true;
    h.index = unsigned(index);
    h.fixture = fixture->id();
    h.pos = {local.x, local.y};
    h.wpos = {world.x, world.y};
    h.x = local.x;
    h.y = local.y;
    h.wx = world.x;
    h.wy = world.y;
    return h;
}

ScriptShape shapeHandle(const MetaFixture* fixture, int index)
{
    ScriptShape h;
    if (!fixture || index < 0 || size_t(index) >= fixture->shapes().size())
        return h;
    h.valid = true;
    h.type = int(fixture->shapes()[size_t(index)].type());
    h.fixture = fixture->id();
    h.index = index;
    return h;
}

namespace
{
template <class Item>
Item* findItem(ItemKind kind, bool valid, ItemId id)
{
    MetaWorld* w = world();
    if (!valid || !w)
        return nullptr;
    return static_cast<Item*>(w->findItem(kind, id));
}

template <class Item>
Item* useItem(Item* item, const char* message, const char* kindWord)
{
    if (!item) {
        if (message)
            plaxLog(LOG_ERROR, "%s", message);
        else
            plaxLog(LOG_ERROR, "Script attempted to use invalid %s", kindWord);
    }
    return item;
}
} // namespace

MetaBody* find(const ScriptBody& h) { return findItem<MetaBody>(ItemKind::Body, h.valid, h.id); }
MetaFixture* find(const ScriptFixture& h) { return findItem<MetaFixture>(ItemKind::Fixture, h.valid, h.id); }
MetaJoint* find(const ScriptJoint& h) { return findItem<MetaJoint>(ItemKind::Joint, h.valid, h.id); }
MetaImage* find(const ScriptImage& h) { return findItem<MetaImage>(ItemKind::Image, h.valid, h.id); }
MetaSampler* find(const ScriptSampler& h) { return findItem<MetaSampler>(ItemKind::Sampler, h.valid, h.id); }
MetaObject* find(const ScriptObject& h) { return findItem<MetaObject>(ItemKind::Object, h.valid, h.id); }

MetaBody* use(const ScriptBody& h, const char* message) { return useItem(find(h), message, "body"); }
MetaFixture* use(const ScriptFixture& h, const char* message) { return useItem(find(h), message, "fixture"); }
MetaJoint* use(const ScriptJoint& h, const char* message) { return useItem(find(h), message, "joint"); }
MetaImage* use(const ScriptImage& h, const char* message) { return useItem(find(h), message, "image"); }
MetaSampler* use(const ScriptSampler& h, const char* message) { return useItem(find(h), message, "sampler"); }
MetaObject* use(const ScriptObject& h, const char* message) { return useItem(find(h), message, "object"); }

asIScriptEngine* engine()
{
    if (asIScriptContext* context = asGetActiveContext())
        return context->GetEngine();
    ScriptDocument* doc = document();
    return doc ? doc->scripting().engine() : nullptr;
}

CScriptArray* newArray(const char* declaration, unsigned size)
{
    asIScriptEngine* e = engine();
    if (!e)
        return nullptr;
    asITypeInfo* type = e->GetTypeInfoByDecl(declaration);
    return type ? CScriptArray::Create(type, size) : nullptr;
}

void appendToArray(CScriptArray& array, void* value)
{
    // Sizes 16, 32, 64, ...: the room doubles, so each append costs O(1) on average.
    const asUINT size = array.GetSize();
    if (size >= 16 && (size & (size - 1)) == 0)
        array.Reserve(2 * size);
    array.InsertLast(value);
}

bool isUsable(float value, const char* kindWord, const char* method)
{
    if (std::isfinite(value))
        return true;
    plaxLog(LOG_WARNING, QStringLiteral("Ignoring invalid value for %1::%2: %3")
                             .arg(QLatin1String(kindWord), QLatin1String(method), QString::number(double(value))));
    return false;
}

bool isUsable(Vec2 value, const char* kindWord, const char* method)
{
    return isUsable(value.x, kindWord, method) && isUsable(value.y, kindWord, method);
}

namespace
{
QString kindWordOf(const MetaItem& item)
{
    return itemKindWord(item.kind());
}
} // namespace

void setFloat(MetaItem& item, const char* setter, float& field, float value)
{
    if (!isUsable(value, qPrintable(kindWordOf(item)), setter) || field == value)
        return;
    const float old = field;
    field = value;
    record<SetItemPropertyFloatCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), old, value);
}

void setVec(MetaItem& item, const char* setter, Vec2& field, Vec2 value)
{
    if (!isUsable(value, qPrintable(kindWordOf(item)), setter) || field == value)
        return;
    const Vec2 old = field;
    field = value;
    record<SetItemPropertyVecCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), old, value);
}

void setInt(MetaItem& item, const char* setter, int& field, int value)
{
    if (field == value)
        return;
    const int old = field;
    field = value;
    record<SetItemPropertyIntCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), qint64(old),
                                      qint64(value));
}

void setBool(MetaItem& item, const char* setter, bool& field, bool value)
{
    if (field == value)
        return;
    field = value;
    record<SetItemPropertyIntCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(),
                                      qint64(!value), qint64(value));
}

void setString(MetaItem& item, const char* setter, QString& field, const QString& value)
{
    if (field == value)
        return;
    const QString old = field;
    field = value;
    record<SetItemPropertyStringCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), old, value);
}

void setColor(MetaItem& item, const char* setter, Color& field, Color value)
{
    if (field == value)
        return;
    const Color old = field;
    field = value;
    record<SetItemPropertyColorCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), old, value);
}

void setBodyRef(MetaItem& item, const char* setter, MetaBody*& field, MetaBody* value)
{
    if (field == value)
        return;
    const quint64 old = field ? field->id() : 0;
    field = value;
    record<SetItemPropertyUintCommand>(scriptGetterName(item.kind()), QLatin1String(setter), item.id(), old,
                                       quint64(value ? value->id() : 0));
}

Color toColor(const ScriptColor& c)
{
    auto channel = [](float v) { return std::isfinite(v) ? int(std::lround(std::clamp(v, 0.0f, 1.0f) * 255)) : 0; };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

ScriptColor toScript(const Color& c)
{
    return {float(c.r) / 255.0f, float(c.g) / 255.0f, float(c.b) / 255.0f, float(c.a) / 255.0f};
}

void setName(MetaItem& item, const QString& name)
{
    MetaWorld* w = item.world();
    if (!w || item.name() == name)
        return;
    const QString old = item.name();
    if (!w->setName(&item, name))
        return;
    record<SetNameCommand>(item.kind(), item.id(), old, name);
}

void setSelected(MetaItem& item, bool selected)
{
    ScriptDocument* doc = document();
    if (!doc)
        return;
    Selection& selection = doc->selection();
    if (selected ? !selection.add(item.kind(), item.id()) : !selection.remove(item.kind(), item.id()))
        return;
    if (selected)
        record<SelectCommand>(item.kind(), item.id());
    else
        record<DeselectCommand>(item.kind(), item.id());
}

bool isSelected(const MetaItem& item)
{
    ScriptDocument* doc = document();
    return doc && doc->selection().contains(item.kind(), item.id());
}
} // namespace ScriptApi
