#pragma once

#include <memory>

/// Memory that the system takes back when the process ends.
namespace ProcessExit
{
/// True in builds with the address sanitizer: they free everything, so that
/// the sanitizer sees every object go.
bool freesEverything();

/// Keeps an object alive, never destroyed, until the process ends: the
/// system takes back the memory of a big scene at once, where freeing it
/// object by object takes a noticeable part of a batch run. The object stays
/// reachable, so no leak checker counts it as lost. Only for objects whose
/// destruction has no effect beyond freeing memory. Destroys it at once in
/// builds that free everything.
void keepUntilExit(std::shared_ptr<void> object);

/// As above, for an object held alone.
template <typename T>
void keepUntilExit(std::unique_ptr<T> object)
{
    keepUntilExit(std::shared_ptr<void>(std::move(object)));
}
} // namespace ProcessExit
