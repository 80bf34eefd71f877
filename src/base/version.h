#pragma once

/// Program version and build facts shown in version blocks and start-up lines.
namespace Version
{
/// Major, minor and patch version of the program.
constexpr int kMajor = 1;
constexpr int kMinor = 8;
constexpr int kPatch = 0;
/// Build time in the form "Feb 10 2022 09:44:02 UTC".
const char* buildTimestamp();
/// Version of the Box2D library built against ("2.4.1").
const char* box2dVersion();
/// Product web page line of the version block.
const char* webPage();
/// True in the restricted edition (no resave, export or file writing from scripts).
constexpr bool kTrial =
#ifdef PLAX_TRIAL
    true;
#else
    false;
#endif
} // namespace Version
