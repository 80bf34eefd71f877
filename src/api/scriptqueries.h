#pragma once

#include "base/types.h"

#include <QString>

#include <functional>
#include <optional>

/// The dialogs that scripts open with queryOpenFile, queryNumericValue,
/// queryVectorValue, queryStringValue and queryYesNo. The core has no
/// widgets: the interface installs these. Without them (batch mode, tests)
/// a query logs a WARNING and returns its default, so a script written for
/// the editor still runs headless. Each returns nothing when cancelled.
struct ScriptQueryHooks
{
    std::function<std::optional<QString>(const QString& prompt)> openFile;
    std::function<std::optional<float>(const QString& prompt, float initial)> numericValue;
    std::function<std::optional<Vec2>(const QString& prompt, Vec2 initial)> vectorValue;
    std::function<std::optional<QString>(const QString& prompt, const QString& initial)> stringValue;
    std::function<std::optional<bool>(const QString& prompt)> yesNo;

    /// Installs the hooks (the interface, at start-up).
    static void install(ScriptQueryHooks hooks);
    /// The installed hooks.
    static const ScriptQueryHooks& installed();
};
