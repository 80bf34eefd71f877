#include "base/processexit.h"

#include <mutex>
#include <vector>

bool ProcessExit::freesEverything()
{
#if defined(__SANITIZE_ADDRESS__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}

void ProcessExit::keepUntilExit(std::shared_ptr<void> object)
{
    // In builds that free everything, the object goes with the last owner here.
    if (freesEverything() || !object)
        return;
    // Never destroyed, not even by the static destructors at exit.
    static auto* const kept = new std::vector<std::shared_ptr<void>>;
    static std::mutex guard;
    const std::lock_guard<std::mutex> lock(guard);
    kept->push_back(std::move(object));
}
