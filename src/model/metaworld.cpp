#include "model/metaworld.h"

#include "base/log.h"

#include <algorithm>

namespace
{
} // namespace

template <typename T>
std::unique_ptr<T> MetaWorld::takeFrom(std::vector<std::unique_ptr<T>>& items, T* item)
{
    auto it = std::find_if(items.begin(), items.end(), [&](const std::unique_ptr<T>& p) { return p.get() == item; });
    if (it == items.end())
        return nullptr;
    m_removedAt[size_t(item->kind())][item->id()] = size_t(it - items.begin());
    std::unique_ptr<T> taken = std::move(*it);
    items.erase(it);
    return taken;
}

template <typename T>
T* MetaWorld::placeInto(std::vector<std::unique_ptr<T>>& items, std::unique_ptr<T> item)
{
    auto& removedAt = m_removedAt[size_t(item->kind())];
    size_t index = items.size();
    if (auto it = removedAt.find(item->id()); it != removedAt.end()) {
        index = std::min(it->second, items.size());
        removedAt.erase(it);
    }
    T* placed = item.get();
    items.insert(items.begin() + std::ptrdiff_t(index), std::move(item));
    return placed;
}

MetaWorld::MetaWorld()
    : m_registries{ItemRegistry(ItemKind::Body), ItemRegistry(ItemKind::Fixture), ItemRegistry(ItemKind::Joint),
                   ItemRegistry(ItemKind::Image), ItemRegistry(ItemKind::Sampler), ItemRegistry(ItemKind::Object)}
{
}

MetaWorld::~MetaWorld() = default;

bool MetaWorld::setName(MetaItem* item, const QString& name)
{
    if (!isValidItemName(name)) {
        plaxLog(LOG_WARNING, "Ignoring attempt to set name with invalid characters");
        return false;
    }
    if (item->m_world != this) {
        item->m_name = name;
        item->markChanged();
        return true;
    }
    registry(item->kind()).rename(item, item->m_name, name);
    item->m_name = name;
    item->markChanged();
    return true;
}

bool MetaWorld::attach(MetaItem* item, ItemId id, const QString& name)
{
    ItemRegistry& reg = registry(item->kind());
    if (id == 0)
        id = reg.allocate(true);
    if (id == 0 || reg.contains(id))
        return false;
    item->m_id = id;
    item->m_name = isValidItemName(name) ? name : QString();
    item->m_world = this;
    reg.insert(item);
    item->markChanged();
    return true;
}

void MetaWorld::detach(MetaItem* item)
{
    registry(item->kind()).erase(item);
    item->m_world = nullptr;
}

MetaBody* MetaWorld::addBody(std::unique_ptr<MetaBody> body, ItemId id, const QString& name)
{
    if (!attach(body.get(), id, name))
        return nullptr;
    for (auto& fixture : body->m_fixtures) {
        fixture->m_body = body.get();
        if (!attach(fixture.get(), fixture->id(), fixture->name()))
            attach(fixture.get(), 0, fixture->name());
    }
    return placeInto(m_bodies, std::move(body));
}

MetaFixture* MetaWorld::addFixture(MetaBody* body, std::unique_ptr<MetaFixture> fixture, ItemId id, const QString& name)
{
    if (!body || !attach(fixture.get(), id, name))
        return nullptr;
    fixture->m_body = body;
    body->markChanged();
    return placeInto(body->m_fixtures, std::move(fixture));
}

MetaJoint* MetaWorld::addJoint(std::unique_ptr<MetaJoint> joint, ItemId id, const QString& name)
{
    if (!attach(joint.get(), id, name))
        return nullptr;
    return placeInto(m_joints, std::move(joint));
}

MetaImage* MetaWorld::addImage(std::unique_ptr<MetaImage> image, ItemId id, const QString& name)
{
    if (!attach(image.get(), id, name))
        return nullptr;
    return placeInto(m_images, std::move(image));
}

MetaSampler* MetaWorld::addSampler(std::unique_ptr<MetaSampler> sampler, ItemId id, const QString& name)
{
    if (!attach(sampler.get(), id, name))
        return nullptr;
    return placeInto(m_samplers, std::move(sampler));
}

MetaObject* MetaWorld::addObject(std::unique_ptr<MetaObject> object, ItemId id, const QString& name)
{
    if (!attach(object.get(), id, name))
        return nullptr;
    return placeInto(m_objects, std::move(object));
}

std::unique_ptr<MetaBody> MetaWorld::removeBody(MetaBody* body)
{
    std::unique_ptr<MetaBody> taken = takeFrom(m_bodies, body);
    if (!taken)
        return nullptr;
    for (auto& fixture : taken->m_fixtures)
        detach(fixture.get());
    detach(taken.get());
    return taken;
}

std::unique_ptr<MetaFixture> MetaWorld::removeFixture(MetaFixture* fixture)
{
    MetaBody* body = fixture ? fixture->body() : nullptr;
    if (!body)
        return nullptr;
    std::unique_ptr<MetaFixture> taken = takeFrom(body->m_fixtures, fixture);
    if (!taken)
        return nullptr;
    detach(taken.get());
    taken->m_body = nullptr;
    body->markChanged();
    return taken;
}

std::unique_ptr<MetaJoint> MetaWorld::removeJoint(MetaJoint* joint)
{
    std::unique_ptr<MetaJoint> taken = takeFrom(m_joints, joint);
    if (taken)
        detach(taken.get());
    return taken;
}

std::unique_ptr<MetaImage> MetaWorld::removeImage(MetaImage* image)
{
    std::unique_ptr<MetaImage> taken = takeFrom(m_images, image);
    if (taken)
        detach(taken.get());
    return taken;
}

std::unique_ptr<MetaSampler> MetaWorld::removeSampler(MetaSampler* sampler)
{
    std::unique_ptr<MetaSampler> taken = takeFrom(m_samplers, sampler);
    if (taken)
        detach(taken.get());
    return taken;
}

std::unique_ptr<MetaObject> MetaWorld::removeObject(MetaObject* object)
{
    std::unique_ptr<MetaObject> taken = takeFrom(m_objects, object);
    if (taken)
        detach(taken.get());
    return taken;
}

void MetaWorld::removeCustomPropertyDef(size_t index)
{
    if (index >= customPropertyDefs.size())
        return;
    m_removedDefs.emplace_back(index, customPropertyDefs[index]);
    customPropertyDefs.erase(customPropertyDefs.begin() + std::ptrdiff_t(index));
}

void MetaWorld::restoreCustomPropertyDef(CustomPropertyDef def)
{
    for (auto it = m_removedDefs.rbegin(); it != m_removedDefs.rend(); ++it) {
        const CustomPropertyDef& removed = it->second;
        if (removed.itemClass == def.itemClass && removed.name == def.name && removed.displayName == def.displayName
            && removed.type == def.type) {
            const size_t index = std::min(it->first, customPropertyDefs.size());
            def.comboboxEntries = removed.comboboxEntries;
            customPropertyDefs.insert(customPropertyDefs.begin() + std::ptrdiff_t(index), std::move(def));
            m_removedDefs.erase(std::next(it).base());
            return;
        }
    }
    customPropertyDefs.push_back(std::move(def));
}
