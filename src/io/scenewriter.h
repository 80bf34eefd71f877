#pragma once

#include <QString>

class MetaWorld;

/// Writes the world as a scene file. Relative references to image, object
/// and sampler output files are rewritten to name the same files from the
/// new file's folder, as the export options ask (see sceneFileReference). The text goes to a temporary file that
/// replaces the target only when complete. Returns false (with the reason
/// logged) on failure; the target is then untouched.
bool saveSceneFile(const MetaWorld& world, const QString& path);
