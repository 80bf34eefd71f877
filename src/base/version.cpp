#include "base/version.h"

#include "base/buildinfo.h"

namespace Version
{
const char* buildTimestamp() { return PLAX_BUILD_TIMESTAMP; }
const char* webPage() { return "Product page: see README.md"; }
} // namespace Version
