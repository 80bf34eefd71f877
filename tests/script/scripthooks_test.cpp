// Script hooks: the event table and its file, running an event's scripts in
// order as one undo step with the hook data, and the user's agreement to the
// scripts a working folder names.
#include "scripttesting.h"

#include "api/scripthookdata.h"
#include "document/editordocument.h"
#include "edits/creationedits.h"
#include "edits/selectionedits.h"
#include "edits/transformsession.h"
#include "engine/documentscripting.h"
#include "hooks/hookevents.h"
#include "hooks/scripthooksmanager.h"
#include "hooks/scripthookstable.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace
{
using Op = TransformApi::Operation;

class ScriptHooksTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    }
    void TearDown() override { HookEvents::setHandler({}); }

    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString script(const QString& name, const QString& text)
    {
        writeText(path(name), text);
        return path(name);
    }
    QString hooksFile() const { return path("config/scripthooks.json"); }
    void writeTable(const ScriptHooksTable& table) { ASSERT_TRUE(table.write(hooksFile())); }
    ItemId bodyId(const char* name) const { return m_document.world().registry(ItemKind::Body).findByName(name)->id(); }
    QString lastText() { return m_document.undoStack().text(m_document.undoStack().count() - 1); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST(ScriptHookEvents, ConfigurationNamesReadBackAndUnknownEventsAreRefused)
{
    // The names the hooks file uses for the events, in event order.
    const char* names[] = {"KEY_0", "KEY_1", "KEY_2", "KEY_3", "KEY_4", "KEY_5", "KEY_6",
                           "KEY_7", "KEY_8", "KEY_9", "IMAGES_DROPPED", "BODIES_MANIPULATED",
                           "FIXTURES_MANIPULATED", "JOINTS_MANIPULATED", "VERTICES_MANIPULATED",
                           "IMAGES_MANIPULATED", "SAMPLERS_MANIPULATED", "OBJECTS_MANIPULATED",
                           "BEFORE_EXPORT", "AFTER_EXPORT"};
    for (int i = 0; i < SHE_MAX; ++i) {
        EXPECT_EQ(scriptHookEventConfigName(i), names[i]);
        EXPECT_EQ(scriptHookEventFromConfigName(names[i]), ScriptHookEvent(i));
    }
    EXPECT_EQ(scriptHookEventFromConfigName("KEY_10"), SHE_MAX);

    LogCapture log;
    EXPECT_EQ(scriptHookEventName(SHE_MAX), "");
    EXPECT_EQ(scriptHookEventTooltip(-1), "");
    EXPECT_EQ(scriptHookEventIcon(99), "");
    EXPECT_EQ(log.texts(LOG_ERROR).size(), 3) << "each out-of-range request is reported";
}

TEST_F(ScriptHooksTest, TheFileHoldsOnlyEventsWithScriptsInEventOrderAndReadsBackTheSame)
{
    ScriptHooksTable table;
    table.setScripts(SHE_AFTER_EXPORT, {"after.rs"});
    table.setScripts(SHE_KEY_3, {"three.rs", "", "third.rs"});
    table.setScripts(SHE_BODIES_MANIPULATED, {"moved.rs"});
    table.setScripts(SHE_IMAGES_DROPPED, {});
    writeTable(table);

    const QString text = readText(hooksFile());
    const qsizetype key = text.indexOf("\"KEY_3\""), bodies = text.indexOf("\"BODIES_MANIPULATED\""),
                    after = text.indexOf("\"AFTER_EXPORT\"");
    EXPECT_TRUE(key > 0 && key < bodies && bodies < after) << text.toStdString();
    EXPECT_FALSE(text.contains("IMAGES_DROPPED")) << "an event without scripts is not written";
    EXPECT_TRUE(text.contains("\"events\""));
    EXPECT_TRUE(text.contains("\"trigger\""));
    EXPECT_TRUE(text.contains("\"scripts\""));

    ScriptHooksTable back;
    ASSERT_TRUE(back.read(hooksFile()));
    EXPECT_EQ(back, table);
    EXPECT_EQ(back.scripts(SHE_KEY_3), (QStringList{"three.rs", "third.rs"}));
    EXPECT_TRUE(back.scripts(SHE_IMAGES_DROPPED).isEmpty());
}

TEST_F(ScriptHooksTest, EachLoadFailureIsReportedAndLeavesNoHooks)
{
    ScriptHooksTable table;
    table.setScripts(SHE_KEY_1, {"one.rs"});
    {
        LogCapture log;
        EXPECT_FALSE(table.read(path("nowhere.json")));
        EXPECT_TRUE(log.contains(0, QStringLiteral("Could not find file: '%1'").arg(path("nowhere.json"))));
        EXPECT_TRUE(table.isEmpty());
    }
    {
        QDir().mkpath(path("folder.json"));
        table.setScripts(SHE_KEY_1, {"one.rs"});
        LogCapture log;
        EXPECT_FALSE(table.read(path("folder.json")));
        EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not open file for reading: '%1'").arg(path("folder.json"))))
            << log.dump().toStdString();
        EXPECT_TRUE(table.isEmpty());
    }
    {
        writeText(path("bad.json"), "{\"events\": [ {\"trigger\": \"KEY_1\", ");
        table.setScripts(SHE_KEY_1, {"one.rs"});
        LogCapture log;
        EXPECT_FALSE(table.read(path("bad.json")));
        EXPECT_TRUE(log.hasLineStartingWith(LOG_ERROR,
                                            QStringLiteral("Failed to parse JSON from file '%1' : ").arg(path("bad.json"))))
            << log.dump().toStdString();
        EXPECT_TRUE(table.isEmpty());
    }
    {
        // Unknown triggers and malformed entries are passed over; the rest loads.
        writeText(path("odd.json"), R"({"events": [
            {"trigger": "KEY_11", "scripts": ["x.rs"]},
            {"trigger": "KEY_2", "scripts": "y.rs"},
            17,
            {"trigger": "KEY_4", "scripts": ["four.rs", 5, "four-b.rs"]}]})");
        EXPECT_TRUE(table.read(path("odd.json")));
        EXPECT_EQ(table.allScripts(), (QStringList{"four.rs", "four-b.rs"}));
    }
}

TEST_F(ScriptHooksTest, ATableThatCannotBeWrittenTellsTheUser)
{
    NotifierScope notifier(true);
    writeText(path("plain"), "not a folder");
    ScriptHooksTable table;
    table.setScripts(SHE_KEY_1, {"one.rs"});
    LogCapture log;
    const QString target = path("plain/scripthooks.json");
    EXPECT_FALSE(table.write(target));
    const QString message = QStringLiteral("Could not open file '%1' for writing.").arg(target);
    EXPECT_TRUE(log.has(LOG_ERROR, message));
    ASSERT_EQ(notifier.boxes().size(), 1);
    EXPECT_EQ(notifier.boxes().front(), message);
    EXPECT_EQ(notifier.boxTitles().front(), "P.L.A.X");
}

TEST_F(ScriptHooksTest, ScriptsRunInOrderAndAMissingFileEndsTheList)
{
    NotifierScope notifier(true);
    ScriptHooksTable table;
    const QString first = script("first.rs", "print('first');");
    const QString failing = script("failing.rs", "this does not compile");
    const QString second = script("second.rs", "print('second');");
    table.setScripts(SHE_KEY_1, {first, failing, second, path("missing.rs"), script("never.rs", "print('never');")});
    writeTable(table);
    ScriptHooksManager manager(hooksFile());

    LogCapture log;
    HookEvents::raise(m_document, SHE_KEY_1, ScriptHookData());
    EXPECT_EQ(log.texts(LOG_SCRIPT), (QStringList{"first", "second"})) << log.dump().toStdString();
    EXPECT_TRUE(log.has(LOG_ERROR, "Script compile failed")) << "a failing script is reported and the next runs";
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not find file '%1'").arg(path("missing.rs"))));

    // Events without scripts do nothing at all.
    const int steps = m_document.undoStack().count();
    EXPECT_FALSE(manager.runHooks(m_document, SHE_KEY_2, ScriptHookData()));
    EXPECT_EQ(m_document.undoStack().count(), steps);
}

TEST_F(ScriptHooksTest, HookScriptsSeeTheDataOfEachManipulation)
{
    NotifierScope notifier(true);
    // An image, a sampler and an object instance join the demo's items.
    ASSERT_TRUE(m_document.scripting().runOneShot(
        "image i = addImage('sprite.png', mv(1, 1)); sampler s = addSampler(mv(3, 3));"
        "object o = addObject('thing.plax', mv(5, 5));",
        QString()));
    const QString report = script("report.rs", R"(
        print(getHookEventName() + ' ' + getManipulationType());
        string ids = '';
        for (uint i = 0; i < getManipulatedBodies().length(); ++i) ids += ' b' + getManipulatedBodies()[i].id;
        for (uint i = 0; i < getManipulatedFixtures().length(); ++i) ids += ' f' + getManipulatedFixtures()[i].id;
        for (uint i = 0; i < getManipulatedVertices().length(); ++i) ids += ' v' + getManipulatedVertices()[i].index;
        for (uint i = 0; i < getManipulatedJoints().length(); ++i) ids += ' j' + getManipulatedJoints()[i].id;
        for (uint i = 0; i < getManipulatedImages().length(); ++i) ids += ' i' + getManipulatedImages()[i].id;
        for (uint i = 0; i < getManipulatedSamplers().length(); ++i) ids += ' s' + getManipulatedSamplers()[i].id;
        for (uint i = 0; i < getManipulatedObjects().length(); ++i) ids += ' o' + getManipulatedObjects()[i].id;
        print(ids);
    )");
    ScriptHooksTable table;
    for (int event = SHE_BODIES_MANIPULATED; event <= SHE_OBJECTS_MANIPULATED; ++event)
        table.setScripts(ScriptHookEvent(event), {report});
    writeTable(table);
    ScriptHooksManager manager(hooksFile());

    const MetaWorld& world = m_document.world();
    const ItemId fixture = world.registry(ItemKind::Fixture).findByName("box")->id();
    const ItemId joint = world.joints().front()->id();
    const ItemId image = world.images().back()->id();
    const ItemId sampler = world.samplers().back()->id();
    const ItemId object = world.objects().back()->id();
    struct Case
    {
        int mode;
        Op operation;
        float a, b;
        QString expected[2];
    };
    const Case cases[] = {
        {0, Op::Translate, 1, 0, {"Bodies manipulated TRANSLATE", QStringLiteral(" b%1").arg(bodyId("ball"))}},
        {1, Op::Rotate, 0.5f, 0, {"Fixtures manipulated ROTATE", QStringLiteral(" f%1").arg(fixture)}},
        {2, Op::Scale, 2, 2, {"Vertices manipulated SCALE", " v0 v1"}},
        {3, Op::Translate, 0, 1, {"Joints manipulated TRANSLATE", QStringLiteral(" j%1").arg(joint)}},
        {4, Op::Rotate, 1, 0, {"Images manipulated ROTATE", QStringLiteral(" i%1").arg(image)}},
        {5, Op::Scale, 2, 3, {"Samplers manipulated SCALE", QStringLiteral(" s%1").arg(sampler)}},
        {6, Op::Translate, 2, 2, {"Objects manipulated TRANSLATE", QStringLiteral(" o%1").arg(object)}},
    };
    for (const Case& c : cases) {
        SelectionEdits::clearSelection(m_document);
        switch (c.mode) {
        case 0: SelectionEdits::setSelected(m_document, ItemKind::Body, {bodyId("ball")}, true); break;
        case 1: SelectionEdits::setSelected(m_document, ItemKind::Fixture, {fixture}, true); break;
        case 2: SelectionEdits::setVerticesSelected(m_document, {{fixture, 0}, {fixture, 1}}, true); break;
        case 3: SelectionEdits::setSelected(m_document, ItemKind::Joint, {joint}, true); break;
        case 4: SelectionEdits::setSelected(m_document, ItemKind::Image, {image}, true); break;
        case 5: SelectionEdits::setSelected(m_document, ItemKind::Sampler, {sampler}, true); break;
        default: SelectionEdits::setSelected(m_document, ItemKind::Object, {object}, true); break;
        }
        LogCapture log;
        TransformSession session(m_document, EditMode(c.mode), c.operation);
        ASSERT_TRUE(session.finish(c.a, c.b)) << c.mode;
        EXPECT_EQ(log.texts(LOG_SCRIPT), (QStringList{c.expected[0], c.expected[1]})) << log.dump().toStdString();
    }
    // Outside a hook the data is empty again.
    EXPECT_TRUE(ScriptHookData::current().eventName.isEmpty());
    EXPECT_TRUE(ScriptHookData::current().bodies.empty());
}

TEST_F(ScriptHooksTest, KeysAndDroppedImagesCarryTheirData)
{
    NotifierScope notifier(true);
    const QString report = script("report.rs", R"(
        string text = getHookEventName();
        image[]@ dropped = getDroppedImages();
        for (uint i = 0; i < dropped.length(); ++i) text += ' ' + dropped[i].getName();
        print(text);
    )");
    ScriptHooksTable table;
    table.setScripts(SHE_KEY_5, {report});
    table.setScripts(SHE_IMAGES_DROPPED, {report});
    writeTable(table);
    ScriptHooksManager manager(hooksFile());

    LogCapture log;
    HookEvents::raise(m_document, SHE_KEY_5, ScriptHookData());
    QImage picture(4, 4, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path("a.png")));
    ASSERT_TRUE(picture.save(path("b.png")));
    const std::vector<MetaImage*> added =
        CreationEdits::addImages(m_document, {path("a.png"), path("b.png")}, {0, 0}, true);
    ASSERT_EQ(added.size(), 2u);
    EXPECT_EQ(log.texts(LOG_SCRIPT), (QStringList{"Keypress: 5",
                                                  QStringLiteral("Images dropped %1 %2")
                                                      .arg(added[0]->name(), added[1]->name())}));
}

TEST_F(ScriptHooksTest, AnEventIsOneUndoStepOfItsOwnAfterTheEdit)
{
    NotifierScope notifier(true);
    ScriptHooksTable table;
    table.setScripts(SHE_BODIES_MANIPULATED, {script("up.rs", "body b = getBody('crate'); b.setAngle(1);"),
                                              script("name.rs", "getBody('crate').setName('hooked');"),
                                              script("print.rs", "print(getBody('crate').getName());")});
    writeTable(table);
    ScriptHooksManager manager(hooksFile());

    const ItemId ball = bodyId("ball");
    const ItemId crate = bodyId("crate");
    MetaBody* crateBody = m_document.world().findBody(crate);
    const float angle = crateBody->angle;
    const Vec2 at = m_document.world().findBody(ball)->position;
    SelectionEdits::setSelected(m_document, ItemKind::Body, {ball}, true);
    const int steps = m_document.undoStack().count();
    TransformSession session(m_document, EditMode::Bodies, Op::Translate);
    ASSERT_TRUE(session.finish(3, 0));
    EXPECT_EQ(m_document.undoStack().count(), steps + 2);
    EXPECT_EQ(lastText(), "script hook [Bodies manipulated]");
    EXPECT_EQ(crateBody->name(), "hooked");
    EXPECT_FLOAT_EQ(crateBody->angle, 1);

    m_document.undoStack().undo();
    EXPECT_EQ(crateBody->name(), "crate") << "the hook's step undoes all its scripts";
    EXPECT_FLOAT_EQ(crateBody->angle, angle);
    EXPECT_FLOAT_EQ(m_document.world().findBody(ball)->position.x, at.x + 3) << "the edit stays";
    m_document.undoStack().undo();
    EXPECT_FLOAT_EQ(m_document.world().findBody(ball)->position.x, at.x);
    m_document.undoStack().redo();
    m_document.undoStack().redo();
    EXPECT_EQ(crateBody->name(), "hooked");
}

TEST_F(ScriptHooksTest, AWorkingFolderHooksRunOnlyOnceTheUserAgreed)
{
    ScriptHooksTable table;
    table.setScripts(SHE_KEY_2, {script("two.rs", "print('two');")});
    writeTable(table);
    NotifierScope notifier(false);
    {
        ScriptHooksManager manager(hooksFile());
        LogCapture log;
        HookEvents::raise(m_document, SHE_KEY_2, ScriptHookData());
        HookEvents::raise(m_document, SHE_KEY_2, ScriptHookData());
        EXPECT_TRUE(log.texts(LOG_SCRIPT).isEmpty()) << "refused: nothing runs";
        ASSERT_EQ(notifier.questions().size(), 1) << "asked once, not at every event";
        EXPECT_TRUE(notifier.questions().front().contains(path("two.rs")));
        EXPECT_TRUE(notifier.questions().front().contains(QFileInfo(hooksFile()).absoluteFilePath()));
    }
    notifier.setAnswer(true);
    {
        ScriptHooksManager manager(hooksFile());
        LogCapture log;
        HookEvents::raise(m_document, SHE_KEY_2, ScriptHookData());
        EXPECT_EQ(log.texts(LOG_SCRIPT), QStringList{"two"});
        EXPECT_EQ(notifier.questions().size(), 2) << "a refusal is not remembered";
    }
    {
        ScriptHooksManager manager(hooksFile());
        LogCapture log;
        HookEvents::raise(m_document, SHE_KEY_2, ScriptHookData());
        EXPECT_EQ(log.texts(LOG_SCRIPT), QStringList{"two"});
        EXPECT_EQ(notifier.questions().size(), 2) << "the agreement is remembered";
    }
    // Someone changes the file: the new list is asked about again.
    table.setScripts(SHE_KEY_2, {path("two.rs"), script("three.rs", "print('three');")});
    writeTable(table);
    notifier.setAnswer(false);
    {
        ScriptHooksManager manager(hooksFile());
        LogCapture log;
        HookEvents::raise(m_document, SHE_KEY_2, ScriptHookData());
        EXPECT_TRUE(log.texts(LOG_SCRIPT).isEmpty());
        EXPECT_EQ(notifier.questions().size(), 3);
        // The user saving the table from the editor is the user's agreement.
        manager.setScripts(SHE_KEY_3, {path("three.rs")});
        ASSERT_TRUE(manager.save());
        HookEvents::raise(m_document, SHE_KEY_3, ScriptHookData());
        EXPECT_EQ(log.texts(LOG_SCRIPT), QStringList{"three"});
    }
    {
        BatchModeScope batch(true);
        ScriptHooksTable other;
        other.setScripts(SHE_KEY_4, {path("two.rs")});
        writeTable(other);
        ScriptHooksManager manager(hooksFile());
        LogCapture log;
        HookEvents::raise(m_document, SHE_KEY_4, ScriptHookData());
        EXPECT_EQ(log.texts(LOG_SCRIPT), QStringList{"two"}) << "the command line asks no question";
        EXPECT_EQ(notifier.questions().size(), 3);
    }
    ScriptHooksManager last(hooksFile());
    EXPECT_EQ(ScriptHooksManager::instance(), &last);
}
