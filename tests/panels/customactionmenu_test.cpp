// Custom action menus: layouts read into trees with their messages, change
// detection, enabling by the selection, and an action's run as one undo step.
#include "panelstesting.h"

#include "document/editordocument.h"
#include "edits/selectionedits.h"
#include "engine/scriptoutput.h"
#include "hooks/customactionmenu.h"
#include "model/metaworld.h"
#include "panels/customactionmenus.h"
#include "support/logcapture.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QTemporaryDir>

#include <algorithm>

using namespace PanelsTesting;

namespace
{
const char* const kNestedLayout = R"({
  "children": [
    { "type": "menu", "name": "Outer", "children": [
      { "type": "action", "name": "First", "file": "first.rs", "desc": "the first",
        "maxBodies": 3, "minBodies": 1, "minVertices": 2, "maxSamplers": 0 },
      { "type": "menu", "name": "Inner", "children": [
        { "type": "action", "name": "Deep", "file": "deep.rs" }
      ]}
    ]},
    { "type": "action", "name": "No file" },
    { "type": "toolbar", "name": "Odd" },
    { "name": "No type" },
    { "type": "action", "name": "Top", "file": "sub/top.rs", "minJoints": 1, "maxImages": 2, "maxFixtures": 4 }
  ]
})";

class CustomMenuTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        base = dir.filePath(QStringLiteral("actionMenu"));
        QDir().mkpath(base);
    }

    QString layoutPath(const QString& folder) const { return QStringLiteral("%1/%2/layout.json").arg(base, folder); }

    QTemporaryDir dir;
    QString base;
};

QStringList titles(const CustomActionMenuItem& item)
{
    QStringList list;
    for (const auto& child : item.children())
        list.append(child->title());
    return list;
}

// Texts of the entries of a menu, submenus as "title>" followed by their entries.
QStringList entries(const QMenu& menu)
{
    QStringList list;
    for (QAction* action : menu.actions()) {
        if (action->menu()) {
            list.append(action->text() + QLatin1Char('>'));
            list.append(entries(*action->menu()));
        } else if (!action->isSeparator()) {
            list.append(action->text() + (action->isEnabled() ? QString() : QStringLiteral(" (disabled)")));
        }
    }
    return list;
}
} // namespace

TEST_F(CustomMenuTest, NestedLayoutIsReadWithConstraintsAndEveryMessage)
{
    writeText(layoutPath("default"), kNestedLayout);
    writeText(layoutPath("broken"), "{ \"children\": [ { \"type\": ");
    QDir().mkpath(base + "/nolayout");
    writeText(layoutPath("retired-"), R"({"children":[{"type":"action","name":"Old","file":"old.rs"}]})");

    LogCapture log;
    CustomActionMenuLoader loader(base);
    ASSERT_TRUE(loader.load());
    const CustomActionMenuItem* root = loader.root();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->kind(), CustomActionMenuItem::Kind::Root);
    EXPECT_EQ(root->title(), "root");
    EXPECT_EQ(titles(*root), QStringList({"Outer", "Top"})) << "nodes without name, file or known type are skipped";

    const CustomActionMenuItem& outer = *root->children()[0];
    EXPECT_EQ(outer.kind(), CustomActionMenuItem::Kind::Submenu);
    EXPECT_EQ(titles(outer), QStringList({"First", "Inner"}));
    const CustomActionMenuItem& inner = *outer.children()[1];
    ASSERT_EQ(inner.children().size(), 1u);
    CustomAction* deep = inner.children()[0]->action();
    ASSERT_NE(deep, nullptr);
    EXPECT_EQ(deep->scriptPath(), base + "/default/deep.rs");
    EXPECT_EQ(deep->folderPath(), base + "/default");
    EXPECT_TRUE(deep->constraints().empty());

    CustomAction* first = outer.children()[0]->action();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->name(), "First");
    EXPECT_EQ(first->description(), "the first");
    EXPECT_EQ(first->toolTip(), "the first");
    // Appended in the fixed key order, not the file's order.
    ASSERT_EQ(first->constraints().size(), 4u);
    const CustomActionConstraint expected[4] = {{EditMode::Bodies, LimitBound::Minimum, 1},
                                                {EditMode::Bodies, LimitBound::Maximum, 3},
                                                {EditMode::Vertices, LimitBound::Minimum, 2},
                                                {EditMode::Samplers, LimitBound::Maximum, 0}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(first->constraints()[i].mode, expected[i].mode) << i;
        EXPECT_EQ(first->constraints()[i].bound, expected[i].bound) << i;
        EXPECT_EQ(first->constraints()[i].value, expected[i].value) << i;
    }
    CustomAction* top = root->children()[1]->action();
    ASSERT_EQ(top->constraints().size(), 3u);
    EXPECT_EQ(top->constraints()[0].mode, EditMode::Fixtures) << "maxFixtures comes before minJoints";
    EXPECT_EQ(top->constraints()[1].mode, EditMode::Joints);
    EXPECT_EQ(top->constraints()[2].mode, EditMode::Images);
    EXPECT_EQ(top->scriptPath(), base + "/default/sub/top.rs");

    EXPECT_EQ(loader.layouts(), QStringList({"default"})) << "retired-, broken and nolayout give no menu";
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Could not find file '%1'").arg(layoutPath("nolayout"))));
    EXPECT_TRUE(log.hasLineStartingWith(LOG_ERROR, QStringLiteral("Failed to parse file '%1' : ").arg(layoutPath("broken"))));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Skipping action without"));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Skipping node of unknown type 'toolbar'"));
}

TEST_F(CustomMenuTest, TreeIsRebuiltOnlyWhenALayoutFileChanges)
{
    writeText(layoutPath("a"), R"({"children":[{"type":"action","name":"A","file":"a.rs"}]})");
    writeText(layoutPath("b"), R"({"children":[{"type":"action","name":"B","file":"b.rs"}]})");
    CustomActionMenuLoader loader(base);
    ASSERT_TRUE(loader.load());
    const CustomActionMenuItem* firstRoot = loader.root();
    EXPECT_EQ(titles(*firstRoot), QStringList({"A", "B"}));

    EXPECT_FALSE(loader.load());
    EXPECT_EQ(loader.root(), firstRoot) << "nothing changed: the existing actions are reused";
    // A folder without a layout changes nothing.
    QDir().mkpath(base + "/c");
    EXPECT_FALSE(loader.load());
    EXPECT_EQ(loader.root(), firstRoot);
    {
        writeText(layoutPath("b"), R"({"children":[{"type":"action","name":"B2","file":"b.rs"}]})");
        QFile touched(layoutPath("b"));
        ASSERT_TRUE(touched.open(QIODevice::ReadWrite));
        ASSERT_TRUE(touched.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime));
        touched.close();
        EXPECT_TRUE(loader.load()) << "a newer layout file rebuilds the tree";
        EXPECT_EQ(titles(*loader.root()), QStringList({"A", "B2"}));
    }
    ASSERT_TRUE(QDir(base).rename("a", "a-"));
    EXPECT_TRUE(loader.load()) << "a layout that went away rebuilds the tree";
    EXPECT_EQ(titles(*loader.root()), QStringList({"B2"})) << "a hyphen removes the menu";
}

TEST_F(CustomMenuTest, WithoutLayoutsTheMenuSaysNoActionsRegistered)
{
    CustomActionMenus menus([] { return nullptr; }, base);
    QMenu menu;
    menus.buildCustomMenu(&menu);
    EXPECT_EQ(entries(menu), QStringList({"No actions registered (disabled)"}));

    CustomActionMenus missingFolder([] { return nullptr; }, dir.filePath("nowhere"));
    QMenu other;
    missingFolder.buildCustomMenu(&other);
    EXPECT_EQ(entries(other), QStringList({"No actions registered (disabled)"}));
}

TEST_F(CustomMenuTest, ActionsAreEnabledByTheSelection)
{
    writeText(layoutPath("default"), R"({"children":[
        {"type":"action","name":"One body","file":"x.rs","minBodies":1,"maxBodies":1},
        {"type":"menu","name":"More","children":[
          {"type":"action","name":"Two or more","file":"x.rs","minBodies":2},
          {"type":"action","name":"No fixtures","file":"x.rs","maxFixtures":0}]},
        {"type":"action","name":"Always","file":"x.rs"}]})");
    auto document = exampleDocument();
    EditorDocument* current = document.get();
    CustomActionMenus menus([&current] { return current; }, base);
    const auto shown = [&menus] {
        QMenu menu;
        menus.buildCustomMenu(&menu);
        return entries(menu);
    };

    QList<MetaBody*> all = bodies(*document);
    ASSERT_GE(all.size(), 2);
    selectBodies(*document, {});
    EXPECT_EQ(shown(), QStringList({"One body (disabled)", "More>", "Two or more (disabled)", "No fixtures", "Always"}));
    selectBodies(*document, {all[0]});
    EXPECT_EQ(shown(), QStringList({"One body", "More>", "Two or more (disabled)", "No fixtures", "Always"}));
    selectBodies(*document, {all[0], all[1]});
    EXPECT_EQ(shown(), QStringList({"One body (disabled)", "More>", "Two or more", "No fixtures", "Always"}));

    current = nullptr;
    EXPECT_EQ(shown(), QStringList({"One body (disabled)", "More>", "Two or more (disabled)", "No fixtures (disabled)",
                                    "Always (disabled)"}))
        << "without a document nothing can run";
}

TEST_F(CustomMenuTest, LayoutsCanBeShownOneAtATime)
{
    writeText(layoutPath("first"), R"({"children":[{"type":"action","name":"From first","file":"x.rs"}]})");
    writeText(layoutPath("second"), R"({"children":[{"type":"action","name":"From second","file":"x.rs"}]})");
    auto document = exampleDocument();
    CustomActionMenus menus([&document] { return document.get(); }, base);
    const auto shown = [&menus] {
        QMenu menu;
        menus.buildCustomMenu(&menu);
        return entries(menu);
    };
    menus.setCurrentLayout(QString());
    EXPECT_EQ(shown(), QStringList({"From first", "From second"}));
    QMenu layouts;
    menus.buildLayoutMenu(&layouts);
    EXPECT_EQ(entries(layouts), QStringList({"All layouts", "first", "second"}));
    layouts.actions()[2]->trigger();
    EXPECT_EQ(menus.currentLayout(), "second");
    EXPECT_EQ(shown(), QStringList({"From second"}));
    menus.setCurrentLayout(QString());
}

TEST_F(CustomMenuTest, RunningAnActionIsOneUndoStepAndKnowsItsFolder)
{
    writeText(layoutPath("tools"), R"({"children":[
        {"type":"action","name":"Lift two","file":"lift.rs","minBodies":2},
        {"type":"action","name":"Gone","file":"missing.rs"},
        {"type":"action","name":"Broken","file":"broken.rs"}]})");
    writeText(base + "/tools/lift.rs",
              "body[]@ b = sb();\nfor (uint i = 0; i < b.length(); i++) b[i].setPosition(b[i].pos.x, b[i].pos.y + 5);\n"
              "print(getCurrentActionMenuFolder());\n");
    writeText(base + "/tools/broken.rs", "getBody(1).setAngle(1);\nthis is not plaxscript\n");
    auto document = exampleDocument();
    CustomActionMenus menus([&document] { return document.get(); }, base);
    ASSERT_TRUE(menus.loadCustomMenuActions());
    const QList<CustomAction*> actions = menus.loader().root()->allActions();
    ASSERT_EQ(actions.size(), 3);

    QList<MetaBody*> all = bodies(*document);
    selectBodies(*document, {all[0], all[1]});
    const float y0 = all[0]->position.y;
    const float y1 = all[1]->position.y;
    QStringList statuses;
    QObject::connect(&menus, &CustomActionMenus::statusMessage, [&statuses](const QString& text) { statuses.append(text); });
    const int before = document->undoStack().count();
    QList<ScriptOutputLine> printed;
    ScriptOutput::setSink([&printed](const QList<ScriptOutputLine>& lines) { printed.append(lines); });

    EXPECT_TRUE(menus.runAction(actions[0]));
    EXPECT_FLOAT_EQ(all[0]->position.y, y0 + 5);
    EXPECT_FLOAT_EQ(all[1]->position.y, y1 + 5);
    EXPECT_EQ(document->undoStack().count(), before + 1) << "the whole run is one undo step";
    EXPECT_EQ(document->undoStack().undoText(), "Lift two");
    EXPECT_EQ(statuses, QStringList({"Running script...", QString()}));
    ScriptOutput::flush();
    ScriptOutput::setSink({});
    ASSERT_FALSE(printed.isEmpty());
    EXPECT_EQ(printed.last().text, QFileInfo(base + "/tools").absoluteFilePath());

    document->undoStack().undo();
    EXPECT_FLOAT_EQ(all[0]->position.y, y0);
    EXPECT_FLOAT_EQ(all[1]->position.y, y1);

    LogCapture log;
    EXPECT_FALSE(menus.runAction(actions[1]));
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not find file '%1'").arg(base + "/tools/missing.rs")));
    const int index = document->undoStack().index();
    ASSERT_NE(document->world().findBody(1), nullptr);
    const float angle = document->world().findBody(1)->angle;
    EXPECT_FALSE(menus.runAction(actions[2]));
    EXPECT_EQ(document->undoStack().index(), index) << "a script that does not compile changes nothing";
    EXPECT_EQ(document->world().findBody(1)->angle, angle);

    selectBodies(*document, {all[0]});
    EXPECT_FALSE(menus.runAction(actions[0])) << "a shortcut cannot run an action the selection does not suit";
}

TEST(ShippedActionMenu, EveryDefaultActionRunsAsOneUndoStep)
{
    CustomActionMenuLoader loader(QStringLiteral(PLAX_SOURCE_DIR "/config/actionMenu"));
    ASSERT_TRUE(loader.load());
    ASSERT_TRUE(loader.layouts().contains("default"));
    const QList<CustomAction*> actions = loader.root()->allActions();
    ASSERT_GE(actions.size(), 8);

    QTemporaryDir folder;
    auto document = exampleDocument();
    CustomActionMenus menus([&document] { return document.get(); }, QStringLiteral(PLAX_SOURCE_DIR "/config/actionMenu"));
    ASSERT_TRUE(menus.loadCustomMenuActions());
    QList<MetaBody*> all = bodies(*document);
    ASSERT_GE(all.size(), 3);
    for (CustomAction* action : menus.loader().root()->allActions()) {
        EXPECT_TRUE(QFileInfo::exists(action->scriptPath())) << action->scriptPath().toStdString();
        // Three bodies and one fixture suit every shipped action but the swap of two.
        selectBodies(*document, action->name() == "Swap two bodies" ? QList<MetaBody*>{all[0], all[1]}
                                                                     : QList<MetaBody*>{all[0], all[1], all[2]});
        if (!all[0]->fixtures().empty()) {
            SelectionEdits::setSelected(*document, ItemKind::Fixture, {all[0]->fixtures()[0]->id()}, true);
        }
        ASSERT_TRUE(action->isAllowedBy(document->selection())) << action->name().toStdString();
        const std::string name = action->name().toStdString();
        const QString file = folder.filePath("check.plax");
        const QByteArray before = TestFiles::savedScene(document->world(), file);
        const int steps = document->undoStack().count();
        LogCapture log;
        EXPECT_TRUE(menus.runAction(action)) << name << "\n" << log.dump().toStdString();
        EXPECT_FALSE(log.contains(LOG_ERROR, "")) << name << "\n" << log.dump().toStdString();
        EXPECT_EQ(document->undoStack().count(), steps + 1) << name;
        document->undoStack().undo();
        EXPECT_EQ(TestFiles::savedScene(document->world(), file), before) << name << " is taken back by one undo";
    }
}

TEST(ShippedActionMenu, AlignAndDistributeDoWhatTheySay)
{
    auto document = exampleDocument();
    const QString base = QStringLiteral(PLAX_SOURCE_DIR "/config/actionMenu");
    CustomActionMenus menus([&document] { return document.get(); }, base);
    ASSERT_TRUE(menus.loadCustomMenuActions());
    const auto find = [&menus](const QString& name) -> CustomAction* {
        for (CustomAction* action : menus.loader().root()->allActions())
            if (action->name() == name)
                return action;
        return nullptr;
    };
    QList<MetaBody*> all = bodies(*document);
    QList<MetaBody*> three{all[0], all[1], all[2]};
    selectBodies(*document, three);
    ASSERT_TRUE(menus.runAction(find("Align left")));
    const float left = std::min({all[0]->position.x, all[1]->position.x, all[2]->position.x});
    for (MetaBody* body : three)
        EXPECT_FLOAT_EQ(body->position.x, left);
    document->undoStack().undo();

    ASSERT_TRUE(menus.runAction(find("Distribute vertically")));
    std::vector<float> ys{all[0]->position.y, all[1]->position.y, all[2]->position.y};
    std::sort(ys.begin(), ys.end());
    EXPECT_NEAR(ys[1] - ys[0], ys[2] - ys[1], 1e-4);
}
