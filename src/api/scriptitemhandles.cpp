#include "api/scriptitemhandles.h"

#include "api/scriptapisupport.h"
#include "api/scriptcustomprops.h"
#include "api/scriptitemops.h"
#include "api/scriptkinds.h"
#include "api/scriptregistrar.h"
#include "editing/selection.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <string>
#include <vector>

using namespace AngelScript;

namespace
{
// What differs between the kinds, beyond HandleKind.
template <class Handle>
struct Kind;

template <>
struct Kind<ScriptJoint> : HandleKind<ScriptJoint>
{
    static constexpr ItemKind kind = ItemKind::Joint;
    static constexpr const char* name = "Joint";
    static constexpr const char* shortSelected = "sj";
    static constexpr const char* shortAll = "aj";
    static MetaJoint* add(ItemId id, const QString& json) { return ItemOps::addJoint(id, json); }
    static void remove(MetaJoint& item) { ItemOps::deleteJoint(item); }
};

template <>
struct Kind<ScriptImage> : HandleKind<ScriptImage>
{
    static constexpr ItemKind kind = ItemKind::Image;
    static constexpr const char* name = "Image";
    static constexpr const char* shortSelected = "si";
    static constexpr const char* shortAll = "ai";
    static MetaImage* add(ItemId id, const QString& json) { return ItemOps::addImage(id, json); }
    static void remove(MetaImage& item) { ItemOps::deleteImage(item); }
};

template <>
struct Kind<ScriptSampler> : HandleKind<ScriptSampler>
{
    static constexpr ItemKind kind = ItemKind::Sampler;
    static constexpr const char* name = "Sampler";
    static constexpr const char* shortSelected = "ss";
    static constexpr const char* shortAll = "as";
    static MetaSampler* add(ItemId id, const QString& json) { return ItemOps::addSampler(id, json); }
    static void remove(MetaSampler& item) { ItemOps::deleteSampler(item); }
};

template <>
struct Kind<ScriptObject> : HandleKind<ScriptObject>
{
    static constexpr ItemKind kind = ItemKind::Object;
    static constexpr const char* name = "Object";
    static constexpr const char* shortSelected = "so";
    static constexpr const char* shortAll = "ao";
    static MetaObject* add(ItemId id, const QString& json) { return ItemOps::addObject(id, json); }
    static void remove(MetaObject& item) { ItemOps::deleteObject(item); }
};

template <class Handle>
struct Members
{
    using K = Kind<Handle>;
    using Item = typename K::Item;

    static std::string arrayDecl() { return std::string("array<") + K::type + ">"; }

    static CScriptArray* array(const std::vector<const Item*>& items)
    {
        return ScriptApi::handleArray<Handle>(arrayDecl().c_str(), items, K::handle);
    }

    template <class Keep>
    static std::vector<const Item*> collect(Keep keep)
    {
        std::vector<const Item*> items;
        if (MetaWorld* world = ScriptApi::world())
            for (const Item* item : K::items(*world))
                if (keep(*item))
                    items.push_back(item);
        return items;
    }

    static bool opEquals(const Handle* self, const Handle& other) { return self->valid == other.valid && self->id == other.id; }
    static void select(Handle* self)
    {
        if (Item* item = ScriptApi::use(*self))
            ScriptApi::setSelected(*item, true);
    }
    static void deselect(Handle* self)
    {
        if (Item* item = ScriptApi::use(*self))
            ScriptApi::setSelected(*item, false);
    }
    static bool isSelected(Handle* self)
    {
        Item* item = ScriptApi::use(*self);
        return item && ScriptApi::isSelected(*item);
    }
    static std::string getName(Handle* self)
    {
        Item* item = ScriptApi::use(*self);
        return item ? item->name().toStdString() : std::string();
    }
    static void setName(Handle* self, const std::string& name)
    {
        if (Item* item = ScriptApi::use(*self))
            ScriptApi::setName(*item, QString::fromStdString(name));
    }
    static void remove(Handle* self)
    {
        if (Item* item = ScriptApi::use(*self))
            K::remove(*item);
    }

    static Handle get(int id)
    {
        MetaWorld* world = ScriptApi::world();
        return K::handle(world && id > 0 ? static_cast<Item*>(world->findItem(K::kind, ItemId(id))) : nullptr);
    }
    static Handle getByName(const std::string& name)
    {
        MetaWorld* world = ScriptApi::world();
        return K::handle(world ? static_cast<Item*>(world->registry(K::kind).findByName(QString::fromStdString(name)))
                               : nullptr);
    }
    static CScriptArray* getAllNamed(const std::string& name)
    {
        const QString wanted = QString::fromStdString(name);
        return array(collect([&](const Item& item) { return item.name() == wanted; }));
    }
    static CScriptArray* getSelected()
    {
        std::vector<const Item*> items;
        if (ScriptDocument* doc = ScriptApi::document())
            for (ItemId id : doc->selection().items(K::kind))
                if (auto* item = static_cast<const Item*>(doc->world().findItem(K::kind, id)))
                    items.push_back(item);
        return array(items);
    }
    static CScriptArray* getAll()
    {
        return array(collect([](const Item&) { return true; }));
    }
    static Handle add(int id, const std::string& json)
    {
        return id < 0 ? Handle() : K::handle(K::add(ItemId(id), QString::fromStdString(json)));
    }

    template <void (*F)(Handle*)>
    static void forEach(const CScriptArray& handles)
    {
        std::vector<Handle> copies;
        for (asUINT i = 0; i < handles.GetSize(); ++i)
            copies.push_back(*static_cast<const Handle*>(handles.At(i)));
        for (Handle& h : copies)
            F(&h);
    }
};
} // namespace

template <class Handle>
void registerItemHandleBasics(ScriptRegistrar& reg)
{
    using K = Kind<Handle>;
    using M = Members<Handle>;
    const char* t = K::type;
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    auto decl = [](const char* pattern, const char* a, const char* b = "") {
        return QString::fromLatin1(pattern)
            .replace(QLatin1String("%1"), QLatin1String(a))
            .replace(QLatin1String("%2"), QLatin1String(b))
            .toStdString();
    };

    reg.method(t, decl("bool opEquals(const %1 &in) const", t).c_str(), asFUNCTION(M::opEquals), cc);
    reg.method(t, "void select()", asFUNCTION(M::select), cc);
    reg.method(t, "void deselect()", asFUNCTION(M::deselect), cc);
    reg.method(t, "bool isSelected()", asFUNCTION(M::isSelected), cc);
    reg.method(t, "string getName()", asFUNCTION(M::getName), cc);
    reg.method(t, "void setName(const string &in)", asFUNCTION(M::setName), cc);
    reg.method(t, "void delete()", asFUNCTION(M::remove), cc);
    registerCustomPropertyMethods<Handle>(reg, t);

    reg.global(decl("%1 get%2(int)", t, K::name).c_str(), asFUNCTION(M::get), asCALL_CDECL);
    reg.global(decl("%1 get%2(const string &in)", t, K::name).c_str(), asFUNCTION(M::getByName), asCALL_CDECL);
    reg.global(decl("%1[]@ get%2(const string &in)", t, K::plural).c_str(), asFUNCTION(M::getAllNamed), asCALL_CDECL);
    reg.global(decl("%1[]@ getSelected%2()", t, K::plural).c_str(), asFUNCTION(M::getSelected), asCALL_CDECL);
    reg.global(decl("%1[]@ %2()", t, K::shortSelected).c_str(), asFUNCTION(M::getSelected), asCALL_CDECL);
    reg.global(decl("%1[]@ getAll%2()", t, K::plural).c_str(), asFUNCTION(M::getAll), asCALL_CDECL);
    reg.global(decl("%1[]@ %2()", t, K::shortAll).c_str(), asFUNCTION(M::getAll), asCALL_CDECL);
    reg.global(decl("%1 add%2(int, const string &in)", t, K::name).c_str(), asFUNCTION(M::add), asCALL_CDECL);
    reg.global(decl("void select(const %1[] &in)", t).c_str(), asFUNCTION(M::template forEach<M::select>), asCALL_CDECL);
    reg.global(decl("void deselect(const %1[] &in)", t).c_str(), asFUNCTION(M::template forEach<M::deselect>),
               asCALL_CDECL);
    reg.global(decl("void delete(const %1[] &in)", t).c_str(), asFUNCTION(M::template forEach<M::remove>), asCALL_CDECL);
}

template void registerItemHandleBasics<ScriptJoint>(ScriptRegistrar&);
template void registerItemHandleBasics<ScriptImage>(ScriptRegistrar&);
template void registerItemHandleBasics<ScriptSampler>(ScriptRegistrar&);
template void registerItemHandleBasics<ScriptObject>(ScriptRegistrar&);
