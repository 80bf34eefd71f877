#pragma once

// Shared set-up of the fuzz targets: a Qt application object, batch mode
// (no questions asked), a quiet log, and a private scratch folder.

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>

class MetaWorld;

/// Prepares the process once; returns the scratch folder.
const QString& fuzzScratchFolder();

/// Writes bytes to a file of the scratch folder and returns its path.
QString writeScratchFile(const QString& name, const QByteArray& bytes);

/// Saves a scene to a scratch file and returns the file's bytes (empty when
/// the save failed).
QByteArray savedSceneBytes(const MetaWorld& scene, const QString& name);

/// Stops the process with a message: a property did not hold.
[[noreturn]] void fuzzFailure(const char* what);
