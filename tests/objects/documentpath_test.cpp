// A document that takes another file (save as into another folder, an
// autosaved copy recovered from the backups folder) still finds the images
// and object files its relative references name.
#include "document/editordocument.h"
#include "document/imagedata.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"
#include "objects/objectscenes.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

using namespace ObjectScenes;

namespace
{
// A scene "a/main.plax" with an image "img/pic.png" beside it and an
// instance of "../parts/wheel.plax".
class DocumentPath : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QDir().mkpath(m_folder.path("a/img"));
        ASSERT_TRUE(QImage(40, 10, QImage::Format_ARGB32).save(m_folder.path("a/img/pic.png")));
        m_folder.write("parts/wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
        QByteArray text = scene(circleBody(1, "box", 0, 0, 1), instance(1, "wheel", "../parts/wheel.plax"));
        text.chop(2);
        text += R"(,"metaimage":[{"id":1,"name":"pic","file":"img/pic.png","center":0,"scale":1}]}})";
        m_main = m_folder.write("a/main.plax", text);
        ASSERT_TRUE(m_document.load(m_main));
    }

    // The document's image and instance resolve to the files next to the
    // original scene, and the instance attaches.
    void expectReferencesResolve(EditorDocument& document)
    {
        MetaImage& image = *document.world().images().at(0);
        EXPECT_EQ(QDir::cleanPath(resolveImagePath(image, document.filePath())), m_folder.path("a/img/pic.png"));
        EXPECT_TRUE(refreshImageData(image, document.filePath()));
        EXPECT_EQ(image.pixelWidth, 40);
        MetaObject& wheel = *document.world().objects().at(0);
        EXPECT_EQ(instanceFilePath(wheel, document.filePath()), m_folder.path("parts/wheel.plax"));
        ObjectManager cache;
        attachSceneObjects(document, cache);
        ASSERT_NE(wheel.objectDocument, nullptr);
        EXPECT_EQ(wheel.objectDocument->world().bodies().at(0)->name(), "rim");
        detachDocumentInstances(document, cache);
    }

    SceneFolder m_folder;
    QString m_main;
    EditorDocument m_document;
};
} // namespace

TEST_F(DocumentPath, SaveAsIntoAnotherFolderKeepsImagesAndObjects)
{
    QDir().mkpath(m_folder.path("b/deeper"));
    ASSERT_TRUE(m_document.save(m_folder.path("b/deeper/copy.plax")));
    EXPECT_EQ(m_document.filePath(), m_folder.path("b/deeper/copy.plax"));
    expectReferencesResolve(m_document);

    // The file written there, opened anew, names the same files.
    EditorDocument reopened;
    ASSERT_TRUE(reopened.load(m_folder.path("b/deeper/copy.plax")));
    EXPECT_EQ(reopened.world().images().at(0)->file, "../../a/img/pic.png");
    expectReferencesResolve(reopened);

    // A copy (not adopted) leaves the document's path and references alone.
    ASSERT_TRUE(m_document.save(m_folder.path("copy-elsewhere.plax"), false));
    EXPECT_EQ(m_document.filePath(), m_folder.path("b/deeper/copy.plax"));
    expectReferencesResolve(m_document);
}

TEST_F(DocumentPath, RecoveredAutosavesResolveFromTheOriginalFileOrHoldFullPaths)
{
    // Autosave writes its copy into a folder of its own.
    QDir().mkpath(m_folder.path("backups/main"));
    const QString backup = m_folder.path("backups/main/autosave.plax");
    ASSERT_TRUE(m_document.save(backup, false));

    EditorDocument recovered;
    ASSERT_TRUE(recovered.loadRecovered(backup, m_main));
    EXPECT_EQ(recovered.world().images().at(0)->file, "img/pic.png");
    expectReferencesResolve(recovered);

    // A scene never saved has no folder of its own: its references are full paths.
    EditorDocument untitled;
    ASSERT_TRUE(untitled.loadRecovered(backup, QString()));
    EXPECT_TRUE(untitled.filePath().isEmpty());
    EXPECT_EQ(untitled.world().images().at(0)->file, m_folder.path("a/img/pic.png"));
    expectReferencesResolve(untitled);
}
