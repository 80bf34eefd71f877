#pragma once

#include <memory>

class MetaWorld;

/// Number of bodies of the generated large scene.
constexpr int kLargeSceneBodies = 10000;

/// A large scene: 10,000 bodies with four fixtures each (circle, polygon,
/// rounded line, loop) and a joint between every tenth pair.
std::unique_ptr<MetaWorld> makeLargeScene(bool humanReadable, int bodies = kLargeSceneBodies);
