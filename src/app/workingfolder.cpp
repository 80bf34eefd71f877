#include "app/workingfolder.h"

#include "base/log.h"
#include "base/settings.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace
{
const QLatin1String kConfigFolder("config");

// Copies every file under `from` into `to` (which exists), keeping the
// folders; copies are writable by their owner even when the originals
// (installed by root) are not.
bool copyTree(const QString& from, const QString& to, int* copied, QString* error)
{
    const QDir source(from);
    QDirIterator it(from, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString target = QDir(to).filePath(source.relativeFilePath(file));
        if (!QDir().mkpath(QFileInfo(target).absolutePath()) || !QFile::copy(file, target)) {
            *error = QStringLiteral("could not copy '%1' to '%2'").arg(file, target);
            return false;
        }
        QFile::setPermissions(target, QFile::permissions(target) | QFile::ReadOwner | QFile::WriteOwner);
        ++*copied;
    }
    return true;
}

void seedInto(WorkingFolder* folder, const QString& installedConfig)
{
    if (installedConfig.isEmpty())
        return;
    const QString here = QDir::currentPath();
    const int copied = seedConfiguration(installedConfig, here, &folder->seedError);
    if (copied > 0) {
        folder->seededFiles = copied;
        folder->seededFrom = installedConfig;
    }
}
} // namespace

QString installedConfigFolder(const QString& programFolder, const QString& relativeToProgram)
{
    const QString config = QDir(QDir(programFolder).filePath(relativeToProgram)).filePath(kConfigFolder);
    if (!QFileInfo(config).isDir())
        return QString();
    return QDir::cleanPath(QFileInfo(config).absoluteFilePath());
}

int seedConfiguration(const QString& from, const QString& folder, QString* error)
{
    const QDir target(folder);
    if (QFileInfo::exists(target.filePath(kConfigFolder)))
        return 0;
    // Copied beside its final place first, so that only a complete copy ever
    // becomes "config", and a second program seeding at the same time loses
    // the rename instead of mixing two copies.
    QTemporaryDir staging(target.filePath(QStringLiteral("config.seeding-XXXXXX")));
    if (!staging.isValid()) {
        *error = QStringLiteral("could not create a folder in '%1': %2").arg(folder, staging.errorString());
        return -1;
    }
    int copied = 0;
    if (!copyTree(from, staging.path(), &copied, error))
        return -1;
    if (!QDir().rename(staging.path(), target.filePath(kConfigFolder))) {
        if (QFileInfo::exists(target.filePath(kConfigFolder)))
            return 0;
        *error = QStringLiteral("could not rename '%1' to '%2'").arg(staging.path(), target.filePath(kConfigFolder));
        return -1;
    }
    staging.setAutoRemove(false);
    return copied;
}

WorkingFolder applyConfiguredWorkingFolder()
{
    WorkingFolder folder;
    folder.configured = openAppSettings()->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString();
    if (folder.configured.isEmpty())
        return folder;
    folder.source = WorkingFolder::Source::Configured;
    folder.changed = QDir::setCurrent(folder.configured);
    if (!folder.changed)
        folder.failed = folder.configured;
    return folder;
}

WorkingFolder prepareEditorWorkingFolder(const QString& installedConfig)
{
    WorkingFolder folder = applyConfiguredWorkingFolder();
    if (folder.source == WorkingFolder::Source::Configured) {
        if (folder.changed)
            seedInto(&folder, installedConfig);
        return folder;
    }
    if (QFileInfo::exists(QLatin1String(kDefaultActionMenuLayout)))
        return folder;
    const QString user = userWorkingFolder();
    folder.source = WorkingFolder::Source::UserFolder;
    folder.changed = QDir().mkpath(user) && QDir::setCurrent(user);
    if (!folder.changed) {
        folder.failed = user;
        return folder;
    }
    seedInto(&folder, installedConfig);
    return folder;
}

WorkingFolder changeWorkingFolder(const QString& path, const QString& installedConfig)
{
    WorkingFolder folder;
    folder.source = WorkingFolder::Source::Configured;
    folder.configured = path;
    folder.changed = QDir::setCurrent(path);
    if (folder.changed)
        seedInto(&folder, installedConfig);
    else
        folder.failed = path;
    return folder;
}

void reportWorkingFolder(const WorkingFolder& folder)
{
    switch (folder.source) {
    case WorkingFolder::Source::StartFolder:
        plaxLog(LOG_DEBUG, QStringLiteral("Current working directory is %1").arg(QDir::currentPath()));
        break;
    case WorkingFolder::Source::Configured:
        if (folder.changed) {
            plaxLog(LOG_INFO, QStringLiteral("Set current working directory to %1").arg(QDir::currentPath()));
        } else {
            plaxLog(LOG_ERROR, QStringLiteral("Could not set current working directory to %1").arg(folder.failed));
            plaxLog(LOG_WARNING, QStringLiteral("Current working directory remains as %1").arg(QDir::currentPath()));
        }
        break;
    case WorkingFolder::Source::UserFolder:
        if (folder.changed) {
            plaxLog(LOG_INFO, QStringLiteral("Set current working directory to %1 (the per-user folder: no working "
                                             "directory is configured and the start folder has no %2)")
                                  .arg(QDir::currentPath(), QLatin1String(kDefaultActionMenuLayout)));
        } else {
            plaxLog(LOG_ERROR, QStringLiteral("Could not create or enter the per-user working folder %1").arg(folder.failed));
            plaxLog(LOG_WARNING, QStringLiteral("Current working directory remains as %1").arg(QDir::currentPath()));
        }
        break;
    }
    if (folder.seededFiles > 0) {
        plaxLog(LOG_INFO, QStringLiteral("Copied the default configuration (%1 files) from %2 into %3")
                              .arg(folder.seededFiles)
                              .arg(folder.seededFrom, QDir(QDir::currentPath()).filePath(kConfigFolder)));
    }
    if (!folder.seedError.isEmpty()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not copy the default configuration into %1: %2")
                               .arg(QDir::currentPath(), folder.seedError));
    }
}
