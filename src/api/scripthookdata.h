#pragma once

#include "base/types.h"

#include <QString>

#include <utility>
#include <vector>

/// What a running hook script may ask about the event that raised it: the
/// event's name, the kind of manipulation and the items concerned. The hook
/// machinery fills it for the length of a hook run; outside hooks it is empty.
struct ScriptHookData
{
    QString eventName;
    QString manipulationType;
    std::vector<ItemId> droppedImages;
    std::vector<ItemId> bodies;
    std::vector<ItemId> fixtures;
    std::vector<ItemId> joints;
    std::vector<std::pair<ItemId, int>> vertices;
    std::vector<ItemId> images;
    std::vector<ItemId> samplers;
    std::vector<ItemId> objects;

    /// The data of the hook running now (empty outside hooks).
    static const ScriptHookData& current();
};

/// Makes hook data current for a scope, restoring the previous data after it.
class ScriptHookDataScope
{
public:
    /// Makes `data` current.
    explicit ScriptHookDataScope(ScriptHookData data);
    ~ScriptHookDataScope();
    ScriptHookDataScope(const ScriptHookDataScope&) = delete;
    ScriptHookDataScope& operator=(const ScriptHookDataScope&) = delete;

private:
    ScriptHookData m_previous;
};
