#include "io/filereferences.h"

#include "model/metaworld.h"

#include <QDir>
#include <QFileInfo>

namespace
{
struct ReferenceOptions
{
    bool fullPath;
    bool relativeToScene;
    QString extra;
};

ReferenceOptions optionsFor(const ExportOptions& o, FileReferenceKind kind)
{
    switch (kind) {
    case FileReferenceKind::Image:
        return {o.saveFullPathForImages, o.saveImagePathsRelativeToPLAXFile, o.extraImagePathRelative};
    case FileReferenceKind::Object:
        return {o.saveFullPathForObjects, o.saveObjectPathsRelativeToPLAXFile, o.extraObjectPathRelative};
    case FileReferenceKind::SamplerOutput:
        break;
    }
    return {o.saveFullPathForSamplerOutput, o.saveSamplerOutputPathsRelativeToPLAXFile, QString()};
}

QString relativeTo(const QString& folder, const QString& absolute)
{
    return QDir(folder).relativeFilePath(absolute);
}
} // namespace

QString absoluteFileReference(const MetaWorld& scene, const QString& file)
{
    if (file.isEmpty())
        return file;
    if (QFileInfo(file).isAbsolute())
        return QDir::cleanPath(file);
    if (scene.referenceFolder.isEmpty())
        return file;
    return QDir::cleanPath(QDir(scene.referenceFolder).filePath(file));
}

QString sceneFileReference(const MetaWorld& scene, FileReferenceKind kind, const QString& file,
                           const QString& targetFolder)
{
    const QString absolute = absoluteFileReference(scene, file);
    // A relative reference of a scene read from no file: written clean, as
    // it comes out once the saved file is read again and written anew.
    if (!QFileInfo(absolute).isAbsolute())
        return QDir::cleanPath(file);
    const ReferenceOptions options = optionsFor(scene.exportOptions, kind);
    if (options.fullPath)
        return absolute;
    if (!options.relativeToScene || targetFolder.isEmpty())
        return file;
    return relativeTo(targetFolder, absolute);
}

QString exportedFileReference(const MetaWorld& exportedScene, const MetaItem& item, const QString& file)
{
    const MetaWorld* own = item.world();
    if (!own || file.isEmpty())
        return file;
    const FileReferenceKind kind =
        item.kind() == ItemKind::Object ? FileReferenceKind::Object : FileReferenceKind::Image;
    const ReferenceOptions options = optionsFor(exportedScene.exportOptions, kind);
    const QString absolute = absoluteFileReference(*own, file);
    if (!QFileInfo(absolute).isAbsolute())
        return file;
    if (options.fullPath)
        return absolute;
    if (!options.relativeToScene || exportedScene.referenceFolder.isEmpty())
        return file;
    const QString relative = relativeTo(exportedScene.referenceFolder, absolute);
    if (options.extra.isEmpty())
        return relative;
    return QDir::cleanPath(options.extra + QLatin1Char('/') + relative);
}

void rebaseFileReferences(MetaWorld& scene, const QString& newFolder)
{
    const QString folder = newFolder.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(newFolder).absoluteFilePath());
    const auto rebase = [&](QString& file) {
        const QString absolute = absoluteFileReference(scene, file);
        if (!QFileInfo(file).isAbsolute() && QFileInfo(absolute).isAbsolute())
            file = folder.isEmpty() ? absolute : relativeTo(folder, absolute);
    };
    for (const auto& image : scene.images())
        rebase(image->file);
    for (const auto& object : scene.objects())
        rebase(object->file);
    for (const auto& sampler : scene.samplers())
        rebase(sampler->file);
    scene.referenceFolder = folder;
}
