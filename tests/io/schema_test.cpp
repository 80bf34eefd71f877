// The JSON Schemas of docs/schema describe what the program writes: scene
// files and raw info of every kind of item, in every value style, satisfy
// them, and files that break the format do not.
#include "iotestsupport.h"

#include "document/editordocument.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "objects/objectexpansion.h"
#include "physics/worldbuild.h"
#include "support/schemacheck.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
struct Style
{
    bool humanReadable;
    bool gson;
    bool compact;
    bool pretty;
};

const Style kStyles[] = {
    {false, false, true, false}, {true, false, true, true}, {false, true, false, false}, {false, false, false, true}};

void applyStyle(MetaWorld& scene, const Style& style)
{
    scene.exportOptions.useHumanReadableFloats = style.humanReadable;
    scene.exportOptions.useGsonFormat = style.gson;
    scene.exportOptions.compactCommonFloats = style.compact;
    scene.exportOptions.compactZeroVecs = style.compact;
    scene.exportOptions.usePrettyPrint = style.pretty;
}
} // namespace

TEST(Schemas, EveryItemKindInEveryStyleSatisfiesThem)
{
    QTemporaryDir dir;
    for (const Style& style : kStyles) {
        std::unique_ptr<MetaWorld> scene = makeFullScene();
        applyStyle(*scene, style);
        const QString scenePath = dir.filePath(QStringLiteral("full.plax"));
        ASSERT_TRUE(saveSceneFile(*scene, scenePath));
        EXPECT_EQ(fileSchemaViolation(FileSchema::Scene, scenePath), QString());

        WorldBuild build(*scene);
        build.addScene(*scene);
        const QByteArray raw = rawInfoText(build, *scene, ExportPropertyFilter());
        ASSERT_FALSE(raw.isEmpty());
        EXPECT_EQ(schemaViolation(FileSchema::RawInfo, raw), QString()) << raw.left(400).toStdString();
    }
}

TEST(Schemas, TheExampleSceneAndItsExportSatisfyThem)
{
    const QString example = QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax");
    EXPECT_EQ(fileSchemaViolation(FileSchema::Scene, example), QString());
    EditorDocument document;
    ASSERT_TRUE(document.load(example));
    const std::unique_ptr<ExpandedWorld> expanded = buildExportWorld(document);
    const QByteArray raw =
        rawInfoText(expanded->build(), document.world(), ExportPropertyFilter(document.world().excludedJsonExportProperties));
    EXPECT_EQ(schemaViolation(FileSchema::RawInfo, raw), QString());
    // A scene file is not raw info, nor the other way round.
    EXPECT_NE(schemaViolation(FileSchema::RawInfo, TestFiles::read(example)), QString());
    EXPECT_NE(schemaViolation(FileSchema::Scene, raw), QString());
}

// Each broken file fails the check at the member at fault.
TEST(Schemas, FilesThatBreakTheFormatDoNot)
{
    const struct
    {
        FileSchema schema;
        const char* json;
        const char* pointer;
    } cases[] = {
        {FileSchema::RawInfo, R"({"body": [{"type": 3}]})", "#/body/0/type"},
        {FileSchema::RawInfo, R"({"body": [{"angle": "1.5"}]})", "#/body/0/angle"},
        {FileSchema::RawInfo, R"({"body": [{"position": {"x": 1}}]})", "#/body/0/position"},
        {FileSchema::RawInfo, R"({"body": [{"positon": 0}]})", "#/body/0/positon"},
        {FileSchema::RawInfo, R"({"body": [{"fixture": [{"circle": {}, "polygon": {"vertices": {"x": [], "y": []}}}]}]})",
         "#/body/0/fixture/0"},
        {FileSchema::RawInfo, R"({"body": [{"fixture": [{"name": "no shape"}]}]})", "#/body/0/fixture/0"},
        {FileSchema::RawInfo, R"({"joint": [{"type": "spring"}]})", "#/joint/0/type"},
        {FileSchema::RawInfo, R"({"image": [{"colorTint": [1, 2, 300]}]})", "#/image/0/colorTint/2"},
        {FileSchema::RawInfo, R"({"customProperties": [{"name": "a", "int": 1, "bool": true}]})", "#/customProperties/0"},
        {FileSchema::Scene, R"({"metaworld": {"metabody": [{"id": 1, "type": 2}]}})", "#/metaworld/metabody/0/type"},
        {FileSchema::Scene, R"({"metaworld": {"metajoint": [{"id": 1, "type": "pulley"}]}})", "#/metaworld/metajoint/0/type"},
        {FileSchema::Scene, R"({"metaworld": {"exportOptions": {"usePrettyPrint": "yes"}}})",
         "#/metaworld/exportOptions/usePrettyPrint"},
        {FileSchema::Scene, R"({"world": {}})", "#"},
    };
    for (const auto& c : cases) {
        const QString problem = schemaViolation(c.schema, c.json);
        EXPECT_TRUE(problem.startsWith(QString::fromLatin1(c.pointer) + ":")) << c.json << "\n gave: "
                                                                              << problem.toStdString();
    }
    EXPECT_TRUE(schemaViolation(FileSchema::RawInfo, "{\"body\": [").startsWith("not JSON"));
}
