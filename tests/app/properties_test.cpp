// The properties panel for every kind: the rows a selection shows, edits as
// one undo step each through the script API, and custom properties.
#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "mainwindowtesting.h"
#include "model/metaworld.h"
#include "panels/propertiespanel.h"
#include "support/guitesting.h"
#include "views/editorview.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest/QTest>

using namespace GuiTesting;

namespace
{
class PropertiesTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        if (HasFatalFailure())
            return;
        EditorView* view = window->workspace()->openFile(copyExample(dir));
        ASSERT_NE(view, nullptr);
        doc = &view->document();
        panel = window->findChild<PropertiesPanel*>();
        ASSERT_NE(panel, nullptr);
    }

    void run(const QString& script) { ASSERT_TRUE(doc->scripting().runOneShot(script, QString())); }
    // The editor of a row, once the panel has caught up with the selection.
    template <class Widget>
    Widget* editor(const QString& name)
    {
        Widget* found = nullptr;
        waitFor([&] { return (found = panel->findChild<Widget*>(name)) != nullptr; });
        return found;
    }
    void type(QLineEdit* edit, const QString& text)
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    QString lastText() const { return doc->undoStack().text(doc->undoStack().index() - 1); }

    EditorDocument* doc = nullptr;
    PropertiesPanel* panel = nullptr;
};
} // namespace

TEST_F(PropertiesTest, JointsShowTheRowsOfTheirTypeAndEditsAreOneStepEach)
{
    run("getJoint('hinge').select();");
    MetaJoint* hinge = static_cast<MetaJoint*>(doc->world().registry(ItemKind::Joint).findByName("hinge"));
    ASSERT_EQ(hinge->type, JointType::Revolute);
    QLineEdit* lower = editor<QLineEdit>("joint/Lower limit");
    ASSERT_NE(lower, nullptr);
    EXPECT_EQ(panel->findChild<QLineEdit*>("joint/Length"), nullptr) << "a revolute joint has no length";
    EXPECT_NE(panel->findChild<QCheckBox*>("joint/Motor enabled"), nullptr);
    const int steps = doc->undoStack().index();
    type(lower, "-0.5");
    EXPECT_FLOAT_EQ(hinge->lowerLimit, -0.5f);
    EXPECT_EQ(doc->undoStack().index(), steps + 1);
    EXPECT_EQ(lastText(), "change lower limit");

    // A rope joint selected as well: only the rows both have remain.
    MetaJoint* tether = static_cast<MetaJoint*>(doc->world().registry(ItemKind::Joint).findByName("tether"));
    run("getJoint('tether').select();");
    waitFor([&] { return panel->findChild<QLineEdit*>("joint/Lower limit") == nullptr; });
    EXPECT_EQ(panel->findChild<QLineEdit*>("joint/Lower limit"), nullptr) << MetaJoint::typeWord(tether->type).toStdString();
    EXPECT_NE(panel->findChild<QLineEdit*>("joint/Anchor A x"), nullptr);
}

TEST_F(PropertiesTest, ImagesAndCustomPropertiesAreEditedInThePanel)
{
    run("addImage(0, '{\"name\":\"pic\",\"file\":\"pic.png\",\"center\":{\"x\":1,\"y\":2},\"scale\":2,\"body\":0}');"
        "getImage('pic').select();");
    QLineEdit* opacity = editor<QLineEdit>("image/Opacity");
    ASSERT_NE(opacity, nullptr);
    type(opacity, "0.25");
    const MetaImage* image = doc->world().images().front().get();
    EXPECT_FLOAT_EQ(image->opacity, 0.25f);
    // A value the setter refuses changes nothing.
    const int steps = doc->undoStack().index();
    type(editor<QLineEdit>("image/Opacity"), "7");
    EXPECT_FLOAT_EQ(image->opacity, 0.25f);
    // The edit's run is still listed, as a step that holds no command.
    ASSERT_EQ(doc->undoStack().index(), steps + 1);
    EXPECT_EQ(doc->undoStack().command(steps)->childCount(), 0);

    run("addCustomProperty('body', 'hp', 'Hit points', 'int'); getImage('pic').deselect(); getBody('ball').select();");
    QLineEdit* hp = editor<QLineEdit>("body/Hit points");
    ASSERT_NE(hp, nullptr);
    EXPECT_TRUE(hp->text().isEmpty()) << "no value yet";
    type(hp, "12");
    EXPECT_EQ(lastText(), "set custom property 'hp'");
    const MetaItem* ball = doc->world().registry(ItemKind::Body).findByName("ball");
    const CustomProperty* value = ball->customProperties.find("hp");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(std::get<int>(value->value), 12);
    doc->undoStack().undo();
    EXPECT_EQ(ball->customProperties.find("hp"), nullptr) << "undo clears a property that had no value";
}

TEST_F(PropertiesTest, SamplerPathRowsSetEveryPathInOneStep)
{
    run("addSampler(0, '{\"name\":\"s\",\"file\":\"none.png\",\"center\":0,\"height\":2,\"body\":0,"
        "\"paths\":[{\"type\":\"polygon\",\"maxPoints\":40,\"minAngle\":5,\"controlPoints\":{\"x\":[0,1,1],\"y\":[0,0,1]}},"
        "{\"type\":\"loop\",\"maxPoints\":30,\"minAngle\":5,\"controlPoints\":{\"x\":[0,1,1],\"y\":[0,0,1]}}]}');"
        "getSampler('s').select();");
    const MetaSampler* sampler = doc->world().samplers().front().get();
    ASSERT_EQ(sampler->paths.size(), 2u);
    QLineEdit* maxPoints = editor<QLineEdit>("sampler/Path max points");
    ASSERT_NE(maxPoints, nullptr);
    EXPECT_EQ(maxPoints->text(), "40") << "the first path shows its value";
    const int steps = doc->undoStack().index();
    type(maxPoints, "12");
    EXPECT_EQ(sampler->paths[0].maxPoints, 12);
    EXPECT_EQ(sampler->paths[1].maxPoints, 12);
    EXPECT_EQ(doc->undoStack().index(), steps + 1);
    doc->undoStack().undo();
    EXPECT_EQ(sampler->paths[0].maxPoints, 40);
    EXPECT_EQ(sampler->paths[1].maxPoints, 30);
}

TEST_F(PropertiesTest, AChoiceWithoutValueSaysNotSetAndDifferingValuesSayMixed)
{
    // The example's "Role" choice: the ball has none, the crate and chassis differ.
    run("getBody('ball').select();");
    QComboBox* role = editor<QComboBox>("body/Role");
    ASSERT_NE(role, nullptr);
    EXPECT_EQ(role->currentIndex(), -1);
    EXPECT_EQ(role->placeholderText(), "(not set)");

    run("getBody('ball').deselect(); getBody('crate').select(); getBody('chassis').select();");
    ASSERT_TRUE(waitFor([&] {
        role = panel->findChild<QComboBox*>("body/Role");
        return role && role->placeholderText() == "(mixed)";
    }, 2000)) << "placeholder: " << (role ? role->placeholderText().toStdString() : "no combo");
    EXPECT_EQ(role->currentIndex(), -1);
}
