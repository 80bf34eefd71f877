#include "base/flags.h"

#include <atomic>

namespace
{
std::atomic<bool> s_batchMode{false};
std::atomic<bool> s_verbose{false};
std::atomic<bool> s_quiet{false};
std::atomic<bool> s_suppressRefusalDialogs{false};
std::atomic<bool> s_invalidSettings{false};
std::atomic<bool> s_loadingObject{false};
} // namespace

namespace AppFlags
{
bool isBatchMode() { return s_batchMode; }
void setBatchMode(bool on) { s_batchMode = on; }
bool isVerbose() { return s_verbose; }
void setVerbose(bool on) { s_verbose = on; }
bool isQuiet() { return s_quiet; }
void setQuiet(bool on) { s_quiet = on; }
bool suppressRefusalDialogs() { return s_suppressRefusalDialogs; }
bool setSuppressRefusalDialogs(bool on) { return s_suppressRefusalDialogs.exchange(on); }
bool invalidSettingsFlag() { return s_invalidSettings; }
void setInvalidSettingsFlag(bool on) { s_invalidSettings = on; }
bool isLoadingObject() { return s_loadingObject; }
bool setLoadingObject(bool on) { return s_loadingObject.exchange(on); }
} // namespace AppFlags
