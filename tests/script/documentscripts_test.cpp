// The three document scripts: loading into their own modules, the functions
// found by their exact declarations, calls item by item with defaults where
// a function is missing or fails, their settings as undo steps, templates.
#include "scripttesting.h"

#include "docscripts/customlabelscript.h"
#include "docscripts/displayfilterscript.h"
#include "docscripts/documentscripts.h"
#include "docscripts/scripttemplates.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class DocumentScriptsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    }
    QString script(const QString& name, const QString& text)
    {
        writeText(dir.filePath(name), text);
        return dir.filePath(name);
    }
    void run(const QString& text)
    {
        ScriptDocumentScope scope(&document);
        ASSERT_TRUE(document.scripting().runOneShot(text, QString()));
    }
    const MetaItem& item(ItemKind kind, const char* name) const
    {
        return *document.world().registry(kind).findByName(name);
    }
    DocumentScripts& scripts() { return document.documentScripts(); }

    QTemporaryDir dir;
    EditorDocument document;
};
} // namespace

TEST_F(DocumentScriptsTest, LabelFunctionsAreFoundByTheirExactDeclarationsAndDefaultElsewhere)
{
    const QString file = script("labels.rs", R"(
void setLabelText(body b, string &out text) { text = "B:" + b.getName(); }
void setLabelText(joint j, const string &in text) { }
void setLabelColors(fixture f, color &out bg, color &out fg, int extra) { }
void setLabelText(image i, string &out text) { text = ""; }
void main() {}
)");
    NotifierScope notifier(true);
    run(QStringLiteral("setCustomLabelsScriptFile('%1');").arg(file));
    ASSERT_TRUE(scripts().prepare());
    CustomLabelScript* labels = scripts().labels();
    ASSERT_NE(labels, nullptr);
    EXPECT_TRUE(labels->hasFunctions(ItemKind::Body));
    EXPECT_TRUE(labels->hasFunctions(ItemKind::Image));
    EXPECT_FALSE(labels->hasFunctions(ItemKind::Joint)) << "&in is not &out";
    EXPECT_FALSE(labels->hasFunctions(ItemKind::Fixture)) << "one parameter too many";

    CustomLabelScript::Pass pass(*labels, document);
    ASSERT_TRUE(pass.isReady());
    CustomLabel body{"crate", {}, {}};
    EXPECT_TRUE(pass.apply(item(ItemKind::Body, "crate"), &body));
    EXPECT_EQ(body.text, "B:crate");
    EXPECT_FALSE(body.background.isValid()) << "no colour function for bodies";
    CustomLabel joint{"hinge", {}, {}};
    EXPECT_FALSE(pass.apply(item(ItemKind::Joint, "hinge"), &joint));
    EXPECT_EQ(joint.text, "hinge");
    EXPECT_TRUE(document.undoStack().count() > 0) << "the setting itself is an undo step";
}

TEST_F(DocumentScriptsTest, ColoursAndAThrowingCallFallBackToTheDefaultAndAreLoggedOnce)
{
    const QString file = script("labels.rs", R"(
void setLabelColors(body b, color &out bg, color &out fg) { bg.set1(1,0,0,0.5); fg.set1(0,1,0,0.5); }
void setLabelText(body b, string &out text) { if (b.getName() == "ball") { array<int> a; a[2] = 0; } text = "ok"; }
void main() {}
)");
    NotifierScope notifier(true);
    run(QStringLiteral("setCustomLabelsScriptFile('%1');").arg(file));
    ASSERT_TRUE(scripts().prepare());
    CustomLabelScript* labels = scripts().labels();
    ASSERT_NE(labels, nullptr);
    LogCapture log;
    CustomLabelScript::Pass pass(*labels, document);
    CustomLabel crate{"crate", {}, {}};
    ASSERT_TRUE(pass.apply(item(ItemKind::Body, "crate"), &crate));
    EXPECT_EQ(crate.background, QColor::fromRgbF(1, 0, 0, 0.5));
    EXPECT_EQ(crate.foreground, QColor::fromRgbF(0, 1, 0, 0.5));
    EXPECT_EQ(crate.text, "ok");
    for (int i = 0; i < 3; ++i) {
        CustomLabel ball{"ball", {}, {}};
        pass.apply(item(ItemKind::Body, "ball"), &ball);
        EXPECT_EQ(ball.text, "ball") << "the default text stays";
    }
    EXPECT_EQ(log.texts(LOG_ERROR).size(), 1) << log.texts(LOG_ERROR).join('\n').toStdString();
}

TEST_F(DocumentScriptsTest, DisplayFilterHidesNamedPropertiesAndAMissingFileLeavesTheDefaults)
{
    const QString file = script("display.rs", R"(
bool shouldDisplayProperty(body b, const string& in name) { return name != "angle"; }
bool shouldDisplayProperty(world w, const string& in name) { return name != "gravity"; }
void main() {}
)");
    NotifierScope notifier(true);
    LogCapture log;
    run(QStringLiteral("setPropertyDisplayFilterScriptFile('%1');").arg(file));
    ASSERT_TRUE(scripts().prepare());
    DisplayFilterScript* filter = scripts().displayFilter();
    ASSERT_NE(filter, nullptr);
    {
        DisplayFilterScript::Pass pass(*filter, document);
        EXPECT_FALSE(pass.shouldDisplay(item(ItemKind::Body, "crate"), "angle"));
        EXPECT_TRUE(pass.shouldDisplay(item(ItemKind::Body, "crate"), "name"));
        EXPECT_TRUE(pass.shouldDisplay(item(ItemKind::Joint, "hinge"), "angle")) << "no function for joints";
        EXPECT_FALSE(pass.shouldDisplayWorld("gravity"));
    }

    run("setPropertyDisplayFilterScriptFile('no-such-file.rs');");
    EXPECT_EQ(scripts().displayFilter(), nullptr);
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not open file for reading: '%1'")
                                       .arg(QStringLiteral(PLAX_SOURCE_DIR "/examples/no-such-file.rs"))));
    // One undo step each; undoing brings the first script back.
    document.undoStack().undo();
    EXPECT_EQ(scripts().setting(DocumentScripts::Script::DisplayFilter), file);
    EXPECT_NE(scripts().displayFilter(), nullptr);
}

TEST_F(DocumentScriptsTest, AScriptThatDoesNotBuildLeavesTheDefaults)
{
    const QString file = script("broken.rs", "void setLabelText(body b, string &out text) { text = ; }\n");
    NotifierScope notifier(true);
    run(QStringLiteral("setCustomLabelsScriptFile('%1');").arg(file));
    scripts().prepare();
    EXPECT_EQ(scripts().labels(), nullptr);
}

TEST(ScriptTemplatesText, TemplatesBuildAndDefineNothingUntilUncommented)
{
    const QString labels = ScriptTemplates::text(DocumentScripts::Script::CustomLabels);
    EXPECT_TRUE(labels.startsWith("// You can use these functions to customize the appearance and content\n"));
    EXPECT_TRUE(labels.contains("set1(1,0,0,0.5)"));
    EXPECT_TRUE(labels.contains("set1(0,1,0,0.5)"));
    EXPECT_TRUE(labels.contains("\"Name: \" + item.getName()"));
    EXPECT_TRUE(labels.endsWith("void main(){}\n"));
    const QString filter = ScriptTemplates::text(DocumentScripts::Script::ExportFilter);
    EXPECT_TRUE(filter.startsWith("// You can use these functions to customize which items and properties\n"));
    EXPECT_TRUE(filter.contains("// If functions are left commented out, the default is to export.\n"));

    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    EditorDocument document;
    NotifierScope notifier(true);
    for (auto kind : {DocumentScripts::Script::CustomLabels, DocumentScripts::Script::ExportFilter,
                      DocumentScripts::Script::DisplayFilter}) {
        const QString path = dir.filePath(QStringLiteral("t%1.rs").arg(int(kind)));
        ASSERT_TRUE(ScriptTemplates::write(kind, path));
        ScriptDocumentScope scope(&document);
        EXPECT_TRUE(document.scripting().runOneShot(readText(path), QString())) << "the template builds and runs";
    }

    const QString blocked = dir.filePath("no/such/folder/t.rs");
    EXPECT_FALSE(ScriptTemplates::write(DocumentScripts::Script::CustomLabels, blocked));
    ASSERT_EQ(notifier.boxes().size(), 1);
    EXPECT_EQ(notifier.boxes()[0], QStringLiteral("Could not open file '%1' for writing.").arg(blocked));
    EXPECT_EQ(notifier.boxTitles()[0], "P.L.A.X");
}
