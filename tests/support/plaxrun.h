#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

/// Result of one run of the real plax binary.
struct PlaxRun
{
    int exitCode = -1;
    QString out;    ///< standard output
    QString err;    ///< standard error
    QString log;    ///< plax.log written in the working directory
};

/// The exit code a run is given when plax exited with 0 but a file it wrote
/// after "-e" (raw info) or "-r" (a scene) does not satisfy its JSON Schema
/// (docs/schema); `err` then ends with the violation.
constexpr int kPlaxSchemaViolation = 97;

/// A scratch folder to run the plax binary in, with its own settings location.
class PlaxSandbox
{
public:
    PlaxSandbox();
    /// Absolute path of a file in the sandbox.
    QString path(const QString& name) const;
    /// Writes a text file into the sandbox and returns its absolute path.
    QString write(const QString& name, const QByteArray& content) const;
    /// Reads a file of the sandbox (empty when missing).
    QByteArray read(const QString& name) const;
    /// Runs plax with the arguments, in the sandbox as working directory,
    /// with the variables of `environment` added to the environment. Every
    /// raw-info export ("-e") and resaved scene ("-r") of a successful run
    /// is checked against its JSON Schema (see kPlaxSchemaViolation).
    PlaxRun run(const QStringList& arguments, const QMap<QString, QString>& environment = {}) const;
    /// Writes one value into the application settings that plax reads when
    /// it runs in this sandbox.
    void setSetting(const QString& key, const QVariant& value) const;
    /// The settings folder of plax runs in this sandbox (where its backups go).
    QString settingsFolder() const;

private:
    QTemporaryDir m_dir;
};
