#pragma once

#include <QString>

class MetaItem;
class MetaWorld;

// File references of scene items (image files, object files, sampler output
// files). In the model a relative reference is relative to the scene's
// reference folder (the folder of the file it was read from). When the scene
// is written elsewhere, or exported, the reference is rewritten so that it
// still names the same file, as the scene's export options ask.

/// The three kinds of reference, each with its own export options.
enum class FileReferenceKind
{
    Image,
    Object,
    SamplerOutput
};

/// The file a reference names: absolute and clean. A relative reference of a
/// scene without reference folder, and an empty one, come back unchanged.
QString absoluteFileReference(const MetaWorld& scene, const QString& file);

/// The reference as a scene file saved into targetFolder holds it: the full
/// path when the kind's "saveFullPathFor..." option is on; otherwise, when
/// its "...PathsRelativeToPLAXFile" option is on, relative to targetFolder
/// (readers resolve relative references against the scene file's folder);
/// otherwise as the scene holds it. A relative reference that cannot be
/// resolved (a scene without reference folder) is written in its clean form.
QString sceneFileReference(const MetaWorld& scene, FileReferenceKind kind, const QString& file,
                           const QString& targetFolder);

/// The reference as the raw info of exportedScene holds it, for an image or
/// object item of that scene or of an object file it places: the full path
/// when "saveFullPathForImages"/"saveFullPathForObjects" is on;
/// otherwise, when "saveImagePathsRelativeToPLAXFile"/
/// "saveObjectPathsRelativeToPLAXFile" is on, relative to the scene file's
/// folder with "extraImagePathRelative"/"extraObjectPathRelative" put in
/// front; otherwise as the item's scene holds it. The options are those of
/// exportedScene. Samplers are not part of raw info,
/// so no sampler output file is ever named there.
QString exportedFileReference(const MetaWorld& exportedScene, const MetaItem& item, const QString& file);

/// Rewrites the scene's relative references so that they name the same files
/// from newFolder, which becomes the reference folder. For a document that
/// takes a new file path in another folder. An empty newFolder (a scene
/// without file) turns the relative references into full paths.
void rebaseFileReferences(MetaWorld& scene, const QString& newFolder);
