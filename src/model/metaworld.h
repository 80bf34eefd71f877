#pragma once

#include "model/customproperties.h"
#include "model/itemregistry.h"
#include "model/metabody.h"
#include "model/metaimage.h"
#include "model/metajoint.h"
#include "model/metaobject.h"
#include "model/metasampler.h"
#include "model/worldsettings.h"

#include <QStringList>

#include <array>
#include <unordered_map>
#include <memory>
#include <vector>

/// The scene: world settings, scene-level options and the items. The world
/// owns its bodies (which own their fixtures), joints, images, samplers and
/// object instances, and keeps per-kind id and name registries.
class MetaWorld
{
public:
    MetaWorld();
    ~MetaWorld();
    MetaWorld(const MetaWorld&) = delete;
    MetaWorld& operator=(const MetaWorld&) = delete;

    WorldSettings settings;
    ExportOptions exportOptions;
    DisplayOptions displayOptions;
    std::vector<CustomPropertyDef> customPropertyDefs;
    CustomProperties customProperties;
    QStringList collisionBitplaneNames;
    SystemHook afterExportHook;
    QStringList excludedJsonExportProperties;
    QString activeScript;
    /// The folder that relative file references of the items (image, object
    /// and sampler output files) are relative to: the folder of the file the
    /// scene was read from, empty for a scene never read from a file.
    QString referenceFolder;

    /// Items of each kind, in order.
    const std::vector<std::unique_ptr<MetaBody>>& bodies() const { return m_bodies; }
    const std::vector<std::unique_ptr<MetaJoint>>& joints() const { return m_joints; }
    const std::vector<std::unique_ptr<MetaImage>>& images() const { return m_images; }
    const std::vector<std::unique_ptr<MetaSampler>>& samplers() const { return m_samplers; }
    const std::vector<std::unique_ptr<MetaObject>>& objects() const { return m_objects; }

    /// Registry of a kind (ids, names).
    ItemRegistry& registry(ItemKind kind) { return m_registries[size_t(kind)]; }
    const ItemRegistry& registry(ItemKind kind) const { return m_registries[size_t(kind)]; }

    /// Item of a kind by id, or null.
    MetaItem* findItem(ItemKind kind, ItemId id) const { return registry(kind).find(id); }
    MetaBody* findBody(ItemId id) const { return static_cast<MetaBody*>(findItem(ItemKind::Body, id)); }
    MetaFixture* findFixture(ItemId id) const { return static_cast<MetaFixture*>(findItem(ItemKind::Fixture, id)); }
    MetaJoint* findJoint(ItemId id) const { return static_cast<MetaJoint*>(findItem(ItemKind::Joint, id)); }
    MetaImage* findImage(ItemId id) const { return static_cast<MetaImage*>(findItem(ItemKind::Image, id)); }
    MetaSampler* findSampler(ItemId id) const { return static_cast<MetaSampler*>(findItem(ItemKind::Sampler, id)); }
    MetaObject* findObject(ItemId id) const { return static_cast<MetaObject*>(findItem(ItemKind::Object, id)); }

    /// A free id of a kind (0 when none is left; the error is logged).
    ItemId allocateId(ItemKind kind, bool continueFromLast = true) { return registry(kind).allocate(continueFromLast); }
    /// A name of the kind's pattern that no item of the kind carries.
    QString uniqueName(ItemKind kind) { return registry(kind).uniqueName(); }

    /// Renames an item; refused (with a warning) for names with forbidden characters.
    bool setName(MetaItem* item, const QString& name);

    /// Adds an item under an id (0 allocates one; a used id is refused) and an
    /// initial name. Returns the item, or null when it was refused. A body's
    /// fixtures are registered with it; they must carry free ids or 0.
    MetaBody* addBody(std::unique_ptr<MetaBody> body, ItemId id, const QString& name = QString());
    MetaFixture* addFixture(MetaBody* body, std::unique_ptr<MetaFixture> fixture, ItemId id, const QString& name = QString());
    MetaJoint* addJoint(std::unique_ptr<MetaJoint> joint, ItemId id, const QString& name = QString());
    MetaImage* addImage(std::unique_ptr<MetaImage> image, ItemId id, const QString& name = QString());
    MetaSampler* addSampler(std::unique_ptr<MetaSampler> sampler, ItemId id, const QString& name = QString());
    MetaObject* addObject(std::unique_ptr<MetaObject> object, ItemId id, const QString& name = QString());

    /// Takes an item out of the world, with its fixtures for a body. Items
    /// referring to a removed body are left to the caller. The world remembers
    /// where the item stood: adding an item again under the same id puts it
    /// back there, so that undoing a delete restores the order exactly.
    std::unique_ptr<MetaBody> removeBody(MetaBody* body);
    std::unique_ptr<MetaFixture> removeFixture(MetaFixture* fixture);
    std::unique_ptr<MetaJoint> removeJoint(MetaJoint* joint);
    std::unique_ptr<MetaImage> removeImage(MetaImage* image);
    std::unique_ptr<MetaSampler> removeSampler(MetaSampler* sampler);
    std::unique_ptr<MetaObject> removeObject(MetaObject* object);

    /// Removes a custom property definition, remembering its place and
    /// choice entries for restoreCustomPropertyDef.
    void removeCustomPropertyDef(size_t index);
    /// Adds a definition; one that was removed before (same class, name,
    /// display name and type) returns to its place with its choice entries.
    void restoreCustomPropertyDef(CustomPropertyDef def);

    /// Number of fixtures of all bodies.
    size_t fixtureCount() const { return registry(ItemKind::Fixture).size(); }

private:
    template <typename T>
    std::unique_ptr<T> takeFrom(std::vector<std::unique_ptr<T>>& items, T* item);
    template <typename T>
    T* placeInto(std::vector<std::unique_ptr<T>>& items, std::unique_ptr<T> item);
    bool attach(MetaItem* item, ItemId id, const QString& name);
    void detach(MetaItem* item);

    std::array<ItemRegistry, kItemKindCount> m_registries;
    std::vector<std::unique_ptr<MetaBody>> m_bodies;
    std::vector<std::unique_ptr<MetaJoint>> m_joints;
    std::vector<std::unique_ptr<MetaImage>> m_images;
    std::vector<std::unique_ptr<MetaSampler>> m_samplers;
    std::vector<std::unique_ptr<MetaObject>> m_objects;
    // Removed custom property definitions with their former places.
    std::vector<std::pair<size_t, CustomPropertyDef>> m_removedDefs;
    // Position of each removed item in its list, by kind and id.
    std::array<std::unordered_map<ItemId, size_t>, kItemKindCount> m_removedAt;
};
