// Samplers through the script API and the editing functions: the alpha
// edge box and seed points, the debug pictures, outlines traced into paths
// (one undo step) and paths turned into fixtures whose pieces tile them.

#include "samplingtestimages.h"

#include "document/editordocument.h"
#include "edits/samplerpaths.h"
#include "engine/documentscripting.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "sampling/sampleranalysis.h"
#include "sampling/samplerframe.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImageReader>
#include <QTemporaryDir>

#include <cmath>

namespace
{
class SamplerScript : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        clearSamplerAnalysisCache();
        // A 40 x 20 picture with a 30 x 10 block in it, and a scene holding
        // a static body at (1, 1) and a sampler on it, 2 units high.
        QImage sprite(40, 20, QImage::Format_ARGB32);
        sprite.fill(Qt::transparent);
        for (int y = 5; y < 15; ++y)
            for (int x = 5; x < 35; ++x)
                sprite.setPixel(x, y, qRgba(200, 10, 10, 255));
        ASSERT_TRUE(sprite.save(m_dir.filePath("sprite.png")));
        ASSERT_TRUE(TestImages::letterL(256, 16, 64).save(m_dir.filePath("letter.png")));
        ASSERT_TRUE(m_document.save(m_dir.filePath("scene.plax")));
        run(R"(
body b = addBody(1, '{"name":"holder","type":"static","position":{"x":1,"y":1}}');
addSampler(1, '{"name":"block","body":1,"file":"sprite.png","center":0,"outputWidth":64,"outputHeight":32,"height":2}');
)");
    }

    void run(const QString& text) { ASSERT_TRUE(m_document.scripting().runOneShot(text, QString())) << text.toStdString(); }

    // What a text prints (print() writes at the SCRIPT level of the log).
    QStringList printed(const QString& text)
    {
        LogCapture capture;
        run(text);
        return capture.texts(LOG_SCRIPT);
    }

    MetaSampler& sampler() { return *m_document.world().findSampler(1); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};

double piecesArea(const BuiltBody& body)
{
    double area = 0;
    for (const BuiltFixture& f : body.fixtures) {
        const auto* polygon = dynamic_cast<const b2PolygonShape*>(f.fixture->GetShape());
        if (!polygon)
            continue;
        std::vector<Vec2> points;
        for (int i = 0; i < polygon->m_count; ++i)
            points.push_back({polygon->m_vertices[i].x, polygon->m_vertices[i].y});
        area += polygonArea(points);
    }
    return area;
}
} // namespace

TEST_F(SamplerScript, AlphaEdgeBoxAndSeedPoints)
{
    // The block spans 30 of 40 pixels across (4 units) and 10 of 20 up (2 units).
    const QStringList lines = printed(R"(
sampler s = getSampler(1);
aabb box = s.getAlphaEdgeAABB();
print(box.lx); print(box.ux); print(box.ly); print(box.uy);
vec2[]@ seeds = s.getAlphaEdgePathSeedPoints();
print(seeds.length());
print(abs(seeds[0].y) > 0.45 || abs(seeds[0].x) > 1.45);
)");
    ASSERT_EQ(lines.size(), 6);
    EXPECT_NEAR(lines[0].toDouble(), -1.5, 0.04);
    EXPECT_NEAR(lines[1].toDouble(), 1.5, 0.04);
    EXPECT_NEAR(lines[2].toDouble(), -0.5, 0.04);
    EXPECT_NEAR(lines[3].toDouble(), 0.5, 0.04);
    EXPECT_EQ(lines[4], "1");
    EXPECT_EQ(lines[5], "true") << "a seed point lies on the outline";

    LogCapture capture;
    run("sampler s = getSampler(1); s.setFile('gone.png'); print(s.getAlphaEdgeAABB()); "
        "print(s.getAlphaEdgePathSeedPoints().length());");
    EXPECT_EQ(capture.texts(LOG_SCRIPT), QStringList({"(0, 0) - (0, 0)", "0"}));
    EXPECT_EQ(capture.texts(LOG_WARNING).size(), 2) << "one line per request";
}

TEST_F(SamplerScript, DebugPicturesAreWritten)
{
    run(R"(
sampler s = getSampler(1);
s.writeToFile(); s.writeToFile_alpha(); s.writeToFile_alphaEdge(); s.writeToFile_colorEdgeSobel();
s.writeToFile_colorEdgeLocalMaxima();
s.writeToFile('out/sampled.png'); s.writeToFile_alpha('a.png'); s.writeToFile_alphaEdge('e.png');
s.writeToFile_colorEdgeSobel('sobel.png'); s.writeToFile_colorEdgeLocalMaxima('maxima.png');
)");
    for (const char* name : {"block-sampled.png", "block-alpha.png", "block-alphaEdge.png", "block-colorEdgeSobel.png",
                             "block-colorEdgeLocalMaxima.png", "a.png", "e.png", "sobel.png", "maxima.png"}) {
        QImageReader reader(m_dir.filePath(name));
        EXPECT_EQ(reader.size(), QSize(64, 32)) << name;
        EXPECT_EQ(reader.format(), QByteArray("png")) << name;
    }
    EXPECT_FALSE(QFile::exists(m_dir.filePath("out/sampled.png"))) << "a missing folder is not made";
    QImage alpha(m_dir.filePath("a.png"));
    EXPECT_EQ(qGray(alpha.pixel(32, 16)), 255);
    EXPECT_EQ(qGray(alpha.pixel(2, 2)), 0);
}

TEST_F(SamplerScript, TracedOutlinesBecomePathsInOneStep)
{
    run("getSampler(1).setFile('letter.png'); getSampler(1).setOutputWidth(256); getSampler(1).setOutputHeight(256);"
        "getSampler(1).setHeight(10);");
    const int steps = m_document.undoStack().count();
    ASSERT_TRUE(SamplerPaths::traceIntoPaths(m_document, 1, 0, 50));
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(m_document.undoStack().text(steps), "trace outline of sampler");
    ASSERT_EQ(sampler().paths.size(), 1u);
    const MetaPath& path = sampler().paths[0];
    EXPECT_EQ(path.type, ShapeType::Polygon);
    EXPECT_EQ(path.controlPoints.size(), 6u) << "the L's corners";
    EXPECT_EQ(path.minAngle, 50);
    // The L covers (64 * 224 * 2 - 64 * 64) of 256 * 256 pixels of a 10 x 10 picture.
    const double expected = (64.0 * 224 * 2 - 64 * 64) / (256.0 * 256) * 100;
    EXPECT_NEAR(polygonArea(path.controlPoints), expected, 0.02 * expected);

    ASSERT_TRUE(SamplerPaths::traceIntoPaths(m_document, 1, 4, 0));
    EXPECT_EQ(sampler().paths[0].controlPoints.size(), 4u) << "at most maxPoints points";
    m_document.undoStack().undo();
    EXPECT_EQ(sampler().paths[0].controlPoints.size(), 6u);
    m_document.undoStack().undo();
    EXPECT_TRUE(sampler().paths.empty());
    EXPECT_EQ(sampler().id(), 1u);
}

TEST_F(SamplerScript, APathBecomesAFixtureWhosePiecesTileIt)
{
    run("getSampler(1).setFile('letter.png'); getSampler(1).setOutputWidth(256); getSampler(1).setOutputHeight(256);"
        "getSampler(1).setHeight(10); getSampler(1).setAngle(0.3); getSampler(1).setCenter(0.5, 0.25);");
    ASSERT_TRUE(SamplerPaths::traceIntoPaths(m_document, 1, 40, 3));
    const std::vector<Vec2> outline = sampler().paths[0].controlPoints;
    run("fixture f = createFixture(getBody(1), getPath(1, 0)); f.setName('made');");
    MetaBody& body = *m_document.world().findBody(1);
    ASSERT_EQ(body.fixtures().size(), 1u);
    const MetaFixture& made = *body.fixtures()[0];
    EXPECT_EQ(made.name(), "made");
    ASSERT_EQ(made.shapes().size(), 1u);
    EXPECT_EQ(made.shapes()[0].type(), ShapeType::Polygon);
    // Its vertices are the path's points, moved from the sampler's frame onto the body.
    const SamplerFrame frame = SamplerFrame::of(sampler());
    ASSERT_EQ(made.vertices().size(), outline.size());
    for (size_t i = 0; i < outline.size(); ++i) {
        const Vec2 expected = worldToBody(&body, frame.toWorld(outline[i]));
        EXPECT_NEAR(made.vertices()[i].x, expected.x, 1e-4);
        EXPECT_NEAR(made.vertices()[i].y, expected.y, 1e-4);
    }

    WorldBuild build(m_document.world());
    build.addScene(m_document.world());
    ASSERT_EQ(build.bodies().size(), 1u);
    const BuiltBody& built = build.bodies()[0];
    EXPECT_GT(built.fixtures.size(), 1u) << "an L is not convex: it is exported as pieces";
    const double area = polygonArea(made.vertices());
    EXPECT_NEAR(piecesArea(built), area, 0.005 * area) << "the pieces cover the outline once";
    for (const BuiltFixture& f : built.fixtures) {
        const auto* polygon = dynamic_cast<const b2PolygonShape*>(f.fixture->GetShape());
        ASSERT_NE(polygon, nullptr);
        EXPECT_TRUE(pointInPolygon(made.vertices(), {polygon->m_centroid.x, polygon->m_centroid.y}))
            << "each piece lies inside the outline";
    }
}

TEST_F(SamplerScript, PathsBecomeFixturesOnTheSamplersBodyOrTheSelectedOne)
{
    run("getSampler(1).setFile('letter.png'); getSampler(1).setOutputWidth(256); getSampler(1).setOutputHeight(256);"
        "getSampler(1).setHeight(10);");
    ASSERT_TRUE(SamplerPaths::traceIntoPaths(m_document, 1, 40, 3));
    MetaBody& holder = *m_document.world().findBody(1);
    int steps = m_document.undoStack().count();
    SamplerPaths::PathFixtures made = SamplerPaths::fixturesFromPaths(m_document, {1}, 0);
    EXPECT_EQ(made.made, 1);
    EXPECT_TRUE(made.samplersWithoutBody.isEmpty());
    EXPECT_EQ(holder.fixtures().size(), 1u);
    EXPECT_EQ(m_document.undoStack().count(), steps + 1);
    EXPECT_EQ(m_document.undoStack().text(steps), "fixtures from paths");

    // Loose, the sampler needs the body it is given.
    run("getSampler(1).setBody(0); addBody(2, '{\"name\":\"other\",\"type\":\"dynamic\"}');");
    made = SamplerPaths::fixturesFromPaths(m_document, {1}, 0);
    EXPECT_EQ(made.made, 0);
    EXPECT_EQ(made.samplersWithoutBody, QStringList{"block"});
    made = SamplerPaths::fixturesFromPaths(m_document, {1}, 2);
    EXPECT_EQ(made.made, 1);
    EXPECT_EQ(m_document.world().findBody(2)->fixtures().size(), 1u);
    EXPECT_EQ(holder.fixtures().size(), 1u);
    m_document.undoStack().undo();
    EXPECT_TRUE(m_document.world().findBody(2)->fixtures().empty());
}

TEST_F(SamplerScript, PathTypesAndTooFewPoints)
{
    run(R"(addSampler(2, '{"name":"paths","body":1,"center":{"x":1,"y":0},"height":1,"paths":[)"
        R"({"type":"polygon","controlPoints":{"x":[0,1],"y":[0,0]}},)"
        R"({"type":"line","controlPoints":{"x":[0,1,2],"y":[0,1,0]}},)"
        R"({"type":"loop","controlPoints":{"x":[0,1,1],"y":[0,0,1]}},)"
        R"({"type":"circle","radius":0,"controlPoints":{"x":[1,-1,0,0],"y":[0,0,1,-1]}},)"
        R"({"type":"circle","radius":0.25,"controlPoints":{"x":[2],"y":[2]}}]}');)");
    {
        LogCapture capture;
        run("print(createFixture(getBody(1), getPath(2, 0)).valid);");
        EXPECT_EQ(capture.texts(LOG_WARNING),
                  QStringList({"createFixture: a polygon needs at least 3 points; the path has 2"}));
    }
    run("createFixture(getBody(1), getPath(2, 1)); createFixture(getBody(1), getPath(2, 2));"
        "createFixture(getBody(1), getPath(2, 3)); createFixture(getBody(1), getPath(2, 4));");
    const auto& fixtures = m_document.world().findBody(1)->fixtures();
    ASSERT_EQ(fixtures.size(), 4u);
    EXPECT_EQ(fixtures[0]->shapes()[0].type(), ShapeType::Line);
    EXPECT_EQ(fixtures[0]->vertices().size(), 3u);
    EXPECT_EQ(fixtures[1]->shapes()[0].type(), ShapeType::Loop);
    EXPECT_EQ(fixtures[2]->shapes()[0].type(), ShapeType::Circle);
    EXPECT_FLOAT_EQ(fixtures[2]->shapes()[0].radius(), 1.0f) << "the points' mean distance from their centre";
    ASSERT_EQ(fixtures[2]->vertices().size(), 1u);
    // The sampler is at (1, 0) on the body at (1, 1): its origin is the body's (1, 0).
    EXPECT_NEAR(fixtures[2]->vertices()[0].x, 1.0f, 1e-6);
    EXPECT_NEAR(fixtures[2]->vertices()[0].y, 0.0f, 1e-6);
    EXPECT_FLOAT_EQ(fixtures[3]->shapes()[0].radius(), 0.25f);
    EXPECT_NEAR(fixtures[3]->vertices()[0].x, 3.0f, 1e-6);
}
