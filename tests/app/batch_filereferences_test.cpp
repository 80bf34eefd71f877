// Resaving a scene into another folder keeps its file references working:
// images, object instances and sampler outputs still name the same files,
// and the export options about full and relative paths are honoured.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace
{
const char* const kThing =
    R"({"metaworld":{"metabody":[{"id":1,"name":"thingBody","type":"dynamic","fixture":[{"id":1,)"
    R"("shapes":[{"type":"circle","radius":0.5,"vertices":{"x":[0],"y":[0]}}]}]}],)"
    R"("metaimage":[{"id":1,"name":"thingImage","body":1,"file":"thing.png","scale":1}]}})";

QByteArray scene(const QByteArray& exportOptions)
{
    // Readable floats: the checks read the exported corners as numbers.
    const QByteArray options = exportOptions.isEmpty() ? QByteArray() : "," + exportOptions;
    return R"({"metaworld":{"exportOptions":{"useHumanReadableFloats":true)" + options +
           R"(},"metabody":[{"id":1,"name":"ground","type":"static"}],)"
           R"("metaimage":[{"id":1,"name":"wide","file":"img/wide.png","scale":1}],)"
           R"("metasampler":[{"id":1,"name":"sampler","file":"img/sampled.png"}],)"
           R"("metaobject":[{"id":1,"name":"thing","file":"objs/thing.plax","position":{"x":3,"y":0}}]}})";
}

// A sandbox with a/scene.plax, its 200x100 image, and an object file with an
// image of its own.
void makeScene(const PlaxSandbox& box, const QByteArray& exportOptions = "")
{
    ASSERT_TRUE(QDir().mkpath(box.path("a/img")));
    ASSERT_TRUE(QDir().mkpath(box.path("a/objs")));
    ASSERT_TRUE(QDir().mkpath(box.path("b")));
    QImage wide(200, 100, QImage::Format_RGB32);
    wide.fill(Qt::red);
    ASSERT_TRUE(wide.save(box.path("a/img/wide.png")));
    QImage square(10, 10, QImage::Format_RGB32);
    square.fill(Qt::blue);
    ASSERT_TRUE(square.save(box.path("a/objs/thing.png")));
    box.write("a/objs/thing.plax", kThing);
    box.write("a/scene.plax", scene(exportOptions));
}

QJsonObject metaworld(const PlaxSandbox& box, const char* file)
{
    return QJsonDocument::fromJson(box.read(file)).object().value("metaworld").toObject();
}

QString fileOf(const QJsonObject& world, const char* array)
{
    return world.value(array).toArray().at(0).toObject().value("file").toString();
}

QJsonObject recordNamed(const QJsonArray& records, const QString& name)
{
    for (const QJsonValue& r : records) {
        if (r.toObject().value("name").toString().contains(name))
            return r.toObject();
    }
    return {};
}

// Width over height of an exported image's quad.
double aspect(const QJsonObject& image)
{
    const QJsonArray xs = image.value("corners").toObject().value("x").toArray();
    const QJsonArray ys = image.value("corners").toObject().value("y").toArray();
    const double width = std::abs(xs.at(1).toDouble() - xs.at(0).toDouble());
    const double height = std::abs(ys.at(2).toDouble() - ys.at(1).toDouble());
    return height > 0 ? width / height : 0;
}

// Exports a resaved scene and checks that everything it names was found.
void expectEverythingResolves(const PlaxSandbox& box, const QString& resaved)
{
    const PlaxRun run = box.run({"-i", resaved, "-e", "check.json"});
    ASSERT_EQ(run.exitCode, 0) << run.log.toStdString();
    EXPECT_FALSE(run.log.contains("Could not")) << run.log.toStdString();
    const QJsonObject raw = QJsonDocument::fromJson(box.read("check.json")).object();
    EXPECT_FALSE(recordNamed(raw.value("body").toArray(), "thingBody").isEmpty()) << "the instance was expanded";
    EXPECT_NEAR(aspect(recordNamed(raw.value("image").toArray(), "wide")), 2.0, 1e-3) << "the image was read";
}
} // namespace

TEST(BatchFileReferences, ResavingIntoAnotherFolderKeepsEveryReference)
{
    PlaxSandbox box;
    makeScene(box);
    for (const QString& target : {QStringLiteral("b/out.plax"), QStringLiteral("a/sub/deeper/out.plax")}) {
        QDir().mkpath(QFileInfo(box.path(target)).absolutePath());
        const PlaxRun run = box.run({"-i", "a/scene.plax", "-r", target});
        ASSERT_EQ(run.exitCode, 0) << run.log.toStdString();
        const QDir folder = QFileInfo(box.path(target)).absoluteDir();
        const QJsonObject world = metaworld(box, qPrintable(target));
        EXPECT_TRUE(QFileInfo(fileOf(world, "metaimage")).isRelative());
        EXPECT_EQ(QFileInfo(folder.filePath(fileOf(world, "metaimage"))).canonicalFilePath(),
                  QFileInfo(box.path("a/img/wide.png")).canonicalFilePath());
        EXPECT_EQ(QFileInfo(folder.filePath(fileOf(world, "metaobject"))).canonicalFilePath(),
                  QFileInfo(box.path("a/objs/thing.plax")).canonicalFilePath());
        EXPECT_EQ(QDir::cleanPath(folder.filePath(fileOf(world, "metasampler"))),
                  QDir::cleanPath(box.path("a/img/sampled.png")));
        expectEverythingResolves(box, target);
    }
    // Resaved next to itself, nothing changes.
    ASSERT_EQ(box.run({"-i", "a/scene.plax", "-r", "a/same.plax"}).exitCode, 0);
    EXPECT_EQ(fileOf(metaworld(box, "a/same.plax"), "metaimage"), "img/wide.png");
    EXPECT_EQ(fileOf(metaworld(box, "a/same.plax"), "metaobject"), "objs/thing.plax");
}

TEST(BatchFileReferences, FullPathOptionsWriteAbsolutePathsInSceneAndExport)
{
    PlaxSandbox box;
    makeScene(box, R"("saveFullPathForImages":true,"saveFullPathForObjects":true,)"
                   R"("saveFullPathForSamplerOutput":true)");
    ASSERT_EQ(box.run({"-i", "a/scene.plax", "-r", "b/out.plax", "-e", "b/out.json"}).exitCode, 0);
    const QJsonObject world = metaworld(box, "b/out.plax");
    EXPECT_EQ(fileOf(world, "metaimage"), QDir::cleanPath(box.path("a/img/wide.png")));
    EXPECT_EQ(fileOf(world, "metaobject"), QDir::cleanPath(box.path("a/objs/thing.plax")));
    EXPECT_EQ(fileOf(world, "metasampler"), QDir::cleanPath(box.path("a/img/sampled.png")));
    expectEverythingResolves(box, "b/out.plax");

    const QJsonObject raw = QJsonDocument::fromJson(box.read("b/out.json")).object();
    EXPECT_EQ(recordNamed(raw.value("image").toArray(), "wide").value("file").toString(),
              QDir::cleanPath(box.path("a/img/wide.png")));
    EXPECT_EQ(recordNamed(raw.value("image").toArray(), "thingImage").value("file").toString(),
              QDir::cleanPath(box.path("a/objs/thing.png")));
    EXPECT_EQ(raw.value("object").toArray().at(0).toObject().value("path").toString(),
              QDir::cleanPath(box.path("a/objs/thing.plax")));
}

TEST(BatchFileReferences, ExportNamesFilesRelativeToTheSceneFileWithTheExtraPath)
{
    PlaxSandbox box;
    makeScene(box, R"("extraImagePathRelative":"../assets","extraObjectPathRelative":"")");
    ASSERT_EQ(box.run({"-i", "a/scene.plax", "-e", "b/out.json"}).exitCode, 0);
    const QJsonObject raw = QJsonDocument::fromJson(box.read("b/out.json")).object();
    EXPECT_EQ(recordNamed(raw.value("image").toArray(), "wide").value("file").toString(), "../assets/img/wide.png");
    // An object file's image is named from the exported scene's folder too.
    EXPECT_EQ(recordNamed(raw.value("image").toArray(), "thingImage").value("file").toString(),
              "../assets/objs/thing.png");
    EXPECT_EQ(raw.value("object").toArray().at(0).toObject().value("path").toString(), "objs/thing.plax");

    // With the relative option off, relative references are kept as written.
    PlaxSandbox plain;
    makeScene(plain, R"("saveImagePathsRelativeToPLAXFile":false)");
    ASSERT_EQ(plain.run({"-i", "a/scene.plax", "-e", "out.json", "-r", "b/out.plax"}).exitCode, 0);
    const QJsonObject plainRaw = QJsonDocument::fromJson(plain.read("out.json")).object();
    EXPECT_EQ(recordNamed(plainRaw.value("image").toArray(), "wide").value("file").toString(), "img/wide.png");
    // So does the scene file; the object reference, still relative to the
    // scene file, follows it.
    EXPECT_EQ(fileOf(metaworld(plain, "b/out.plax"), "metaimage"), "img/wide.png");
    EXPECT_EQ(fileOf(metaworld(plain, "b/out.plax"), "metaobject"), "../a/objs/thing.plax");
}
