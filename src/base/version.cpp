#include "base/version.h"

#include "base/buildinfo.h"

namespace Version
{
const char* buildTimestamp() { return PLAX_BUILD_TIMESTAMP; }
const char* box2dVersion() { return PLAX_BOX2D_VERSION; }
const char* webPage() { return "Product page: see README.md"; }
} // namespace Version
