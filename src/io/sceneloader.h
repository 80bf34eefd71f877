#pragma once

#include <QString>

#include <memory>

class MetaWorld;

/// Reads a scene file (or a raw-info file) into a new world, logging the
/// progress lines and every problem. Returns null when the file cannot be
/// opened, parsed or understood; a file with item-level problems still loads.
std::unique_ptr<MetaWorld> loadSceneFile(const QString& path);
