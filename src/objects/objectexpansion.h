#pragma once

#include <QString>

#include <functional>
#include <memory>

class EditorDocument;
class ExpansionPlan;
class ObjectManager;
class WorldBuild;

/// Reports expansion progress: called with (0, total) before the first
/// instance is added and with (n, total) after the n-th. The interface shows
/// it as a delayed, window-modal progress dialog; the core draws nothing.
using ExpansionProgress = std::function<void(int done, int total)>;

/// Label of the progress the interface shows while instances expand.
QString objectExpansionProgressText();
/// Message shown (and logged) when placed shapes became too small.
QString objectExpansionTooSmallMessage();
/// Title of that message's box.
QString objectExpansionTooSmallTitle();

/// A world built from a scene with every object instance expanded into it.
/// The object documents the built items came from stay loaded (the built
/// world points into them) until this is destroyed.
class ExpandedWorld
{
public:
    ~ExpandedWorld();
    ExpandedWorld(const ExpandedWorld&) = delete;
    ExpandedWorld& operator=(const ExpandedWorld&) = delete;

    /// The built world: the scene's own items first, then each expanded
    /// instance depth first in scene order.
    WorldBuild& build() { return *m_build; }
    const WorldBuild& build() const { return *m_build; }
    /// Number of instances (nested ones included) that were expanded.
    int expandedInstanceCount() const { return m_expanded; }
    /// For a process that ends after this world's last use: the built world
    /// is left to the system instead of being freed (see ProcessExit).
    void leaveWorldToProcessExit() { m_leaveWorldToExit = true; }

private:
    friend std::unique_ptr<ExpandedWorld> buildExportWorld(const EditorDocument&, ObjectManager&,
                                                           const ExpansionProgress&);
    ExpandedWorld() = default;

    std::unique_ptr<ExpansionPlan> m_plan;   // declared first: released after the world
    std::unique_ptr<WorldBuild> m_build;
    int m_expanded = 0;
    bool m_leaveWorldToExit = false;
};

/// Builds the world that export and the player use: the scene, then every
/// instance's object document placed by the instance's placement composed
/// with those of the instances around it (outermost first), its items named
/// with the prefix "<instance>/", growing by "<inner instance>/" per level.
/// Loops, missing files and too-deep nestings are skipped with a warning.
///
/// Refusal dialogs are suppressed meanwhile; when a placed shape was refused
/// (a circle scaled below the minimum radius) the too-small message is logged
/// and, when interactive, shown. Never returns null.
std::unique_ptr<ExpandedWorld> buildExportWorld(const EditorDocument& scene, ObjectManager& cache,
                                                const ExpansionProgress& progress = {});

/// The same through the process-wide object cache.
std::unique_ptr<ExpandedWorld> buildExportWorld(const EditorDocument& scene);
