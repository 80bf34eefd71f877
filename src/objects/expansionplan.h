#pragma once

#include "physics/placement.h"

#include <QString>
#include <QStringList>

#include <vector>

class EditorDocument;
class MetaWorld;
class ObjectManager;

/// Most object instances one expansion places; further ones are skipped with
/// a warning so that wide nestings (every file placing the next several
/// times) cannot grow without bound.
constexpr int kMaxExpandedInstances = 100000;

/// One object document to add to an expanded world: where it goes and how
/// its items are named.
struct ExpansionStep
{
    const MetaWorld* scene = nullptr;
    Placement placement;   ///< composed placement, outermost instance first
    QString namePrefix;    ///< instance names joined by "/", ending in "/"
};

/// The object documents a scene's instances expand to, found (and loaded
/// through the cache) before anything is built, so the total is known up
/// front. The plan holds one cache reference per step until it is destroyed.
class ExpansionPlan
{
public:
    /// Walks every instance of `scene`, nested ones included, depth first in
    /// scene order. Instances whose file cannot be loaded, whose file is
    /// already on the way down from the scene (the scene's own file
    /// included), that lie deeper than the nesting limit or beyond the
    /// instance limit are skipped with a warning.
    ExpansionPlan(const EditorDocument& scene, ObjectManager& cache);
    /// Gives back the cache references.
    ~ExpansionPlan();
    ExpansionPlan(const ExpansionPlan&) = delete;
    ExpansionPlan& operator=(const ExpansionPlan&) = delete;

    /// The documents to add, in order.
    const std::vector<ExpansionStep>& steps() const { return m_steps; }

private:
    void visit(const EditorDocument& containing, const Placement& outer, const QString& prefix, int depth);

    ObjectManager& m_cache;
    std::vector<ExpansionStep> m_steps;
    std::vector<EditorDocument*> m_held;
    QStringList m_chain;   ///< cache keys of the files on the way down
    bool m_limitReported = false;
};
