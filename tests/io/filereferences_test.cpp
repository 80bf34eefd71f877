// File references of a scene seen from other folders: scene files and raw
// info name the same files, as the export options ask.
#include "iotestsupport.h"

#include "io/filereferences.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace
{
class FileReferences : public ::testing::Test
{
protected:
    void SetUp() override
    {
        root = QDir::cleanPath(m_dir.path());
        scene.referenceFolder = root + "/a";
        auto image = std::make_unique<MetaImage>();
        image->file = "img/pic.png";
        m_image = scene.addImage(std::move(image), 1, "pic");
        auto object = std::make_unique<MetaObject>();
        object->file = "../shared/thing.plax";
        m_object = scene.addObject(std::move(object), 1, "thing");
        auto sampler = std::make_unique<MetaSampler>();
        sampler->file = "/elsewhere/out.png";
        m_sampler = scene.addSampler(std::move(sampler), 1, "sampler");
    }

    QTemporaryDir m_dir;
    QString root;
    MetaWorld scene;
    MetaImage* m_image = nullptr;
    MetaObject* m_object = nullptr;
    MetaSampler* m_sampler = nullptr;
};
} // namespace

TEST_F(FileReferences, SceneFilesHoldReferencesRelativeToTheirOwnFolderOrFull)
{
    EXPECT_EQ(absoluteFileReference(scene, m_image->file), root + "/a/img/pic.png");
    EXPECT_EQ(absoluteFileReference(scene, m_object->file), root + "/shared/thing.plax");
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Image, m_image->file, root + "/b"), "../a/img/pic.png");
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Image, m_image->file, root + "/a"), "img/pic.png");
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Object, m_object->file, root + "/a/x/y"),
              "../../../shared/thing.plax");
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Image, "", root + "/b"), "");

    scene.exportOptions.saveFullPathForImages = true;
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Image, m_image->file, root + "/b"), root + "/a/img/pic.png");
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::Object, m_object->file, root + "/b"),
              "../shared/thing.plax") << "each kind has its own options";
    scene.exportOptions.saveSamplerOutputPathsRelativeToPLAXFile = false;
    EXPECT_EQ(sceneFileReference(scene, FileReferenceKind::SamplerOutput, "out.png", root + "/b"), "out.png")
        << "neither option: kept as written";

    // A scene never read from a file keeps its references as they are.
    MetaWorld fresh;
    EXPECT_EQ(sceneFileReference(fresh, FileReferenceKind::Image, "img/pic.png", root + "/b"), "img/pic.png");
}

TEST_F(FileReferences, RawInfoNamesFilesFromTheSceneFileWithTheExtraPath)
{
    EXPECT_EQ(exportedFileReference(scene, *m_image, m_image->file), "img/pic.png");
    EXPECT_EQ(exportedFileReference(scene, *m_object, m_object->file), "../shared/thing.plax");
    scene.exportOptions.extraImagePathRelative = "../assets";
    EXPECT_EQ(exportedFileReference(scene, *m_image, m_image->file), "../assets/img/pic.png");
    scene.exportOptions.saveImagePathsRelativeToPLAXFile = false;
    EXPECT_EQ(exportedFileReference(scene, *m_image, "img/./pic.png"), "img/./pic.png") << "kept as written";
    scene.exportOptions.saveFullPathForObjects = true;
    EXPECT_EQ(exportedFileReference(scene, *m_object, m_object->file), root + "/shared/thing.plax");

    // An image of an object file is named from the exported scene's folder.
    MetaWorld objectScene;
    objectScene.referenceFolder = root + "/shared";
    auto image = std::make_unique<MetaImage>();
    image->file = "thing.png";
    MetaImage* inner = objectScene.addImage(std::move(image), 1, "inner");
    scene.exportOptions.saveImagePathsRelativeToPLAXFile = true;
    scene.exportOptions.extraImagePathRelative.clear();
    EXPECT_EQ(exportedFileReference(scene, *inner, inner->file), "../shared/thing.png");
}

TEST_F(FileReferences, SavingElsewhereAndRebasingKeepTheSameFiles)
{
    ASSERT_TRUE(QDir().mkpath(root + "/b/c"));
    ASSERT_TRUE(saveSceneFile(scene, root + "/b/c/moved.plax"));
    std::unique_ptr<MetaWorld> moved = loadSceneFile(root + "/b/c/moved.plax");
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->referenceFolder, root + "/b/c");
    EXPECT_EQ(moved->images()[0]->file, "../../a/img/pic.png");
    EXPECT_EQ(absoluteFileReference(*moved, moved->images()[0]->file), root + "/a/img/pic.png");
    EXPECT_EQ(absoluteFileReference(*moved, moved->objects()[0]->file), root + "/shared/thing.plax");
    EXPECT_EQ(absoluteFileReference(*moved, moved->samplers()[0]->file), "/elsewhere/out.png");

    rebaseFileReferences(scene, root + "/b");
    EXPECT_EQ(scene.referenceFolder, root + "/b");
    EXPECT_EQ(m_image->file, "../a/img/pic.png");
    EXPECT_EQ(m_object->file, "../shared/thing.plax");
    EXPECT_EQ(m_sampler->file, "/elsewhere/out.png") << "full paths stay full";
}
