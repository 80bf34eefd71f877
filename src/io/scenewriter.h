#pragma once

#include <QString>

class MetaWorld;

/// Writes the world as a scene file. The text goes to a temporary file that
/// replaces the target only when complete. Returns false (with the reason
/// logged) on failure; the target is then untouched.
bool saveSceneFile(const MetaWorld& world, const QString& path);
