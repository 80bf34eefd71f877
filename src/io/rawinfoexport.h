#pragma once

#include <QByteArray>
#include <QString>

class ExportPropertyFilter;
class MetaWorld;
class WorldBuild;

/// The raw-info JSON text of a built world, in the scene's export style
/// (floats, pretty printing), leaving out what the filter refuses.
QByteArray rawInfoText(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter);

/// Writes the raw info to a file through a temporary file that replaces the
/// target only when complete. False, with the reason logged, on failure.
bool writeRawInfoFile(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter,
                      const QString& path);

/// Box2D's C++ source dump of the world (statements that recreate it
/// through a `b2World* m_world`).
QByteArray sourceCodeText(WorldBuild& build);

/// Writes the C++ source dump to a file, atomically. No other file is left
/// behind. False, with the reason logged, on failure.
bool writeSourceCodeFile(WorldBuild& build, const QString& path);
