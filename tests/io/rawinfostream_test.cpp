// The streamed raw-info writer: the text layout (checked against the layout
// algorithm the program used when it built the whole text in memory), the
// file and in-memory outputs agreeing, the DOM of the player, and the chain
// call repair of the source export.
#include "iotestsupport.h"

#include "io/b2djson.h"
#include "io/chaincallrepair.h"
#include "io/exportfilter.h"
#include "io/jsontext.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <gtest/gtest.h>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QTemporaryDir>

#include <algorithm>
#include <string>

namespace
{
// The layout as it was defined when the text was built from a DOM: three
// spaces a level, arrays of plain values on one line.
void referenceLayout(const rapidjson::Value& value, std::string& out, int depth)
{
    const auto newline = [&out](int d) { out += '\n' + std::string(size_t(d) * 3, ' '); };
    const auto scalar = [&out](const rapidjson::Value& v) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        v.Accept(writer);
        out += buffer.GetString();
    };
    if (value.IsObject()) {
        if (value.ObjectEmpty()) {
            out += "{}";
            return;
        }
        out += '{';
        bool first = true;
        for (const auto& member : value.GetObject()) {
            if (!first)
                out += ',';
            first = false;
            newline(depth + 1);
            scalar(member.name);
            out += ": ";
            referenceLayout(member.value, out, depth + 1);
        }
        newline(depth);
        out += '}';
        return;
    }
    if (value.IsArray()) {
        const bool singleLine = std::all_of(value.Begin(), value.End(), [](const rapidjson::Value& v) {
            return !v.IsObject() && !v.IsArray();
        });
        out += '[';
        bool first = true;
        for (const rapidjson::Value& element : value.GetArray()) {
            if (!first)
                out += singleLine ? ", " : ",";
            first = false;
            if (!singleLine)
                newline(depth + 1);
            referenceLayout(element, out, depth + 1);
        }
        if (!singleLine && !value.Empty())
            newline(depth);
        out += ']';
        return;
    }
    scalar(value);
}

QByteArray referenceText(const rapidjson::Value& value, bool pretty)
{
    if (!pretty) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        value.Accept(writer);
        return QByteArray(buffer.GetString());
    }
    std::string out;
    referenceLayout(value, out, 0);
    return QByteArray::fromStdString(out + '\n');
}

struct Style
{
    bool pretty;
    bool readable;
    bool gson;
};

class RawInfoStream : public ::testing::TestWithParam<Style>
{
};
} // namespace

TEST_P(RawInfoStream, TextFileAndDomAgreeWithTheReferenceLayout)
{
    std::unique_ptr<MetaWorld> scene = makeFullScene();
    scene->exportOptions.usePrettyPrint = GetParam().pretty;
    scene->exportOptions.useHumanReadableFloats = GetParam().readable;
    scene->exportOptions.useGsonFormat = GetParam().gson;
    WorldBuild build(*scene);
    build.addScene(*scene);
    const ExportPropertyFilter filter(scene->excludedJsonExportProperties);

    const QByteArray text = rawInfoText(build, *scene, filter);
    ASSERT_FALSE(text.isEmpty());
    rapidjson::Document parsed;
    ASSERT_TRUE(parseJson(text, &parsed, nullptr));
    EXPECT_EQ(text, referenceText(parsed, GetParam().pretty));

    // The DOM handed to the player holds the same document.
    const rapidjson::Document dom = b2dJson(exportStyle(*scene), filter).write(build, *scene);
    EXPECT_TRUE(dom == parsed);
    EXPECT_EQ(jsonToText(dom, GetParam().pretty), text);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("out.json"));
    ASSERT_TRUE(writeRawInfoFile(build, *scene, filter, path));
    EXPECT_EQ(TestFiles::read(path), text);
}

INSTANTIATE_TEST_SUITE_P(Styles, RawInfoStream,
                         ::testing::Values(Style{true, false, false}, Style{false, false, false},
                                           Style{true, true, false}, Style{false, true, false},
                                           Style{true, false, true}));

TEST(RawInfoStreamFile, BigExportStreamsAcrossManyBufferFillsAndLeavesNoTemporaryFile)
{
    // Enough bodies for several megabytes: the file is written in many
    // buffer-sized pieces and must still equal the text built in memory.
    MetaWorld scene;
    scene.exportOptions.usePrettyPrint = true;
    for (int i = 0; i < 3000; ++i) {
        auto body = std::make_unique<MetaBody>();
        body->type = BodyType::Dynamic;
        body->position = {float(i) * 0.37f, float(i % 17)};
        MetaBody* added = scene.addBody(std::move(body), 0, scene.uniqueName(ItemKind::Body));
        auto fixture = std::make_unique<MetaFixture>();
        fixture->setVertices({{0, 0}, {1, 0}, {1.5f, 0.7f}, {0.4f, 1.2f}, {-0.3f, 0.5f}});
        fixture->addShape(ShapeType::Polygon, 0);
        scene.addFixture(added, std::move(fixture), 0, QStringLiteral("f"));
    }
    WorldBuild build(scene);
    build.addScene(scene);
    const ExportPropertyFilter filter;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.json"));
    ASSERT_TRUE(writeRawInfoFile(build, scene, filter, path));
    const QByteArray text = rawInfoText(build, scene, filter);
    EXPECT_GT(text.size(), 1 << 20);
    EXPECT_EQ(TestFiles::read(path), text);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("big.json")});

    // A folder that does not exist: nothing is written, the failure is told.
    LogCapture log;
    EXPECT_FALSE(writeRawInfoFile(build, scene, filter, dir.filePath(QStringLiteral("missing/out.json"))));
    EXPECT_FALSE(log.texts(LOG_ERROR).isEmpty());
}

TEST(RawInfoStreamFilter, RefusedPathsAreLeftOutWhileAFilterThatRefusesNothingIsNeverAsked)
{
    std::unique_ptr<MetaWorld> scene = makeFullScene();
    WorldBuild build(*scene);
    build.addScene(*scene);
    const QByteArray everything = rawInfoText(build, *scene, ExportPropertyFilter());

    int asked = 0;
    ExportPropertyFilter permissive;
    permissive.setPredicate([&asked](const QString&) {
        ++asked;
        return true;
    });
    EXPECT_EQ(rawInfoText(build, *scene, permissive), everything);
    EXPECT_GT(asked, 0);

    ExportPropertyFilter noCircles;
    noCircles.setPredicate([](const QString& path) { return path != QLatin1String("/world/body/fixture/circle"); });
    const QByteArray cut = rawInfoText(build, *scene, noCircles);
    EXPECT_TRUE(everything.contains("\"circle\""));
    EXPECT_FALSE(cut.contains("\"circle\""));
    EXPECT_TRUE(cut.contains("\"polygon\""));
}

TEST(ChainCallRepair, CallsAreRewrittenInOnePassAndEverythingElseIsKept)
{
    const std::string dump = "  {\n    b2ChainShape shape;\n    shape.CreateChain(vs, 4);\n"
                             "    shape.m_prevVertex.Set(1.0f, -2.5f);\n    shape.m_nextVertex.Set(3.0f, 4.0f);\n"
                             "  }\nshape.CreateChain(vs, 12);\r\n\tshape.m_prevVertex.Set(0, 0);"
                             "shape.m_nextVertex.Set(a, b);";
    std::string out;
    repairChainCalls(dump, [&out](const char* data, size_t length) { out.append(data, length); });
    EXPECT_EQ(out, "  {\n    b2ChainShape shape;\n    shape.CreateChain(vs, 4, b2Vec2(1.0f, -2.5f), b2Vec2(3.0f, 4.0f));\n"
                   "  }\nshape.CreateChain(vs, 12, b2Vec2(0, 0), b2Vec2(a, b));");

    // Incomplete or different calls stay as they are, whole.
    for (const std::string& kept :
         {std::string("shape.CreateChain(vs, 4);\n    shape.m_prevVertex.Set(1, 2);\n"),
          std::string("shape.CreateChain(vs, );shape.m_prevVertex.Set(1, 2);shape.m_nextVertex.Set(3, 4);"),
          std::string("shape.CreateChain(vs, 3);shape.m_prevVertex.Set(1, 2"), std::string("shape.CreateChain("),
          std::string()}) {
        std::string copy;
        repairChainCalls(kept, [&copy](const char* data, size_t length) { copy.append(data, length); });
        EXPECT_EQ(copy, kept);
    }
}
