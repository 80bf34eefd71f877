#include "objects/expansionplan.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"

namespace
{
Placement placementOf(const MetaObject& instance)
{
    Placement p;
    p.position = instance.position;
    p.angle = instance.angle;
    p.scale = instance.scale;
    p.flip = instance.flip;
    return p;
}

// The text an instance adds to the names of its items: its name, or
// "object<id>" for an unnamed instance.
QString prefixPart(const MetaObject& instance)
{
    return instance.name().isEmpty() ? QStringLiteral("object%1").arg(instance.id()) : instance.name();
}
} // namespace

ExpansionPlan::ExpansionPlan(const EditorDocument& scene, ObjectManager& cache) : m_cache(cache)
{
    if (!scene.filePath().isEmpty())
        m_chain.append(ObjectManager::keyFor(scene.filePath()));
    visit(scene, Placement(), QString(), 0);
}

ExpansionPlan::~ExpansionPlan()
{
    for (EditorDocument* document : m_held)
        m_cache.releaseObject(document, this);
}

void ExpansionPlan::visit(const EditorDocument& containing, const Placement& outer, const QString& prefix, int depth)
{
    for (const auto& instance : containing.world().objects()) {
        const QString path = instanceFilePath(*instance, containing.filePath());
        const QString key = path.isEmpty() ? QString() : ObjectManager::keyFor(path);
        if (!key.isEmpty() && m_chain.contains(key)) {
            plaxLog(LOG_WARNING,
                    QStringLiteral("Detected loop in object instances, ignoring object file: %1").arg(instance->file));
            continue;
        }
        if (depth >= kMaxObjectNesting) {
            plaxLog(LOG_WARNING,
                    QStringLiteral("Object instances are nested more than %1 levels deep, ignoring object file: %2")
                        .arg(kMaxObjectNesting)
                        .arg(instance->file));
            continue;
        }
        if (int(m_steps.size()) >= kMaxExpandedInstances) {
            // Reported once: past the limit every remaining instance is skipped.
            if (!m_limitReported)
                plaxLog(LOG_WARNING, QStringLiteral("More than %1 object instances to expand, ignoring the rest")
                                         .arg(kMaxExpandedInstances));
            m_limitReported = true;
            continue;
        }
        EditorDocument* document = m_cache.getObject(path, this);
        if (!document) {
            plaxLog(LOG_WARNING, QStringLiteral("Could not load file for object during export: %1").arg(instance->file));
            continue;
        }
        m_held.push_back(document);

        ExpansionStep step;
        step.scene = &document->world();
        step.placement = outer.then(placementOf(*instance));
        step.namePrefix = prefix + prefixPart(*instance) + QLatin1Char('/');
        m_steps.push_back(step);

        m_chain.append(key);
        visit(*document, step.placement, step.namePrefix, depth + 1);
        m_chain.removeLast();
    }
}
