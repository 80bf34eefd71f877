// Recorded edit scripts run straight through the registered functions must
// do exactly what the compiled script does: the same values to the last
// bit, the same refusals and messages, the same undo steps.
#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "editing/scripttext.h"
#include "engine/documentscripting.h"
#include "model/metaworld.h"

#include <QMutexLocker>
#include <QUndoStack>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace
{
MetaBody* addBody(EditorDocument& document, const QString& name)
{
    return document.world().addBody(std::make_unique<MetaBody>(), 0, name);
}

// Runs `text` without compiling; `ran` tells whether it was taken.
bool runDirect(EditorDocument& document, const QString& text, bool* ran)
{
    DocumentScripting& scripting = document.scripting();
    QMutexLocker lock(&scripting.scriptMutex());
    return scripting.runRecordedCallsLocked(text, QString(), ran);
}

bool runCompiled(EditorDocument& document, const QString& text)
{
    return document.scripting().runOneShot(text, QString());
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}
} // namespace

TEST(RecordedCalls, RecordedValuesArriveBitForBitAsTheCompilerGivesThem)
{
    EditorDocument direct, compiled;
    const MetaBody* a = addBody(direct, QStringLiteral("a"));
    const MetaBody* b = addBody(compiled, QStringLiteral("a"));
    const QString id = QString::number(a->id());
    ASSERT_EQ(a->id(), b->id());

    // Values as edits record them, and literals written by hand.
    std::mt19937 random(11);
    std::vector<QString> literals = {QStringLiteral("-0.0"), QStringLiteral("1"), QStringLiteral("-7"),
                                     QStringLiteral("2147483647"), QStringLiteral("1e-3"), QStringLiteral("2.5E+2"),
                                     QStringLiteral("0.1"), QStringLiteral("123456789")};
    for (int i = 0; i < 400; ++i) {
        std::uint32_t bits = random();
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value))
            literals.push_back(scriptFloat(value));
        literals.push_back(scriptFloat(float(random() % 100000) / 997.f - 50.f));
    }
    for (const QString& literal : literals) {
        const QString text = QStringLiteral("getBody(%1).setAngle(%2);").arg(id, literal);
        bool ran = false;
        EXPECT_TRUE(runDirect(direct, text, &ran)) << text.toStdString();
        EXPECT_TRUE(ran) << text.toStdString();
        EXPECT_TRUE(runCompiled(compiled, text)) << text.toStdString();
        ASSERT_EQ(bitsOf(a->angle), bitsOf(b->angle)) << text.toStdString();
    }

    // Several calls and kinds of argument in one text, as merged commands hold them.
    const QString text = QStringLiteral("getBody(%1).setPosition(1.5,-2);\ngetBody(%1).setBullet(1);\n"
                                        "getBody(%1).setGravityScale(3);")
                             .arg(id);
    bool ran = false;
    EXPECT_TRUE(runDirect(direct, text, &ran));
    EXPECT_TRUE(ran);
    EXPECT_TRUE(runCompiled(compiled, text));
    EXPECT_EQ(a->position, (Vec2{1.5f, -2}));
    EXPECT_EQ(a->position, b->position);
    EXPECT_TRUE(a->bullet);
    EXPECT_EQ(a->gravityScale, 3.f);
}

TEST(RecordedCalls, OtherTextsAreLeftToTheCompiler)
{
    EditorDocument document;
    MetaBody* body = addBody(document, QStringLiteral("a"));
    const QString id = QString::number(body->id());
    for (const QString& text : {
             QStringLiteral("getBody(%1).setName('b');"),        // a text argument
             QStringLiteral("getBody(%1).setAngle(1+2);"),       // an expression
             QStringLiteral("getBody(%1).setAngle(1.5f);"),      // a suffix the reader does not take
             QStringLiteral("getBody(%1).setAngle(nan);"),       // not a literal
             QStringLiteral("getBody(%1).setAngle(1)"),          // no semicolon
             QStringLiteral("getBody(%1).setAngle(1); print(1);"),
             QStringLiteral("getBody(%1).setBullet(true);"),     // a flag for a number
             QStringLiteral("getBody(2147483648).setAngle(1);"), // an id past an int
             QStringLiteral("getBody(-1).setAngle(1);"),
             QStringLiteral("getNothing(%1).setAngle(1);"),
             QStringLiteral("getBody(%1).noSuchMethod(1);"),
             QStringLiteral("getBody(%1).setAngle(1,2);"),       // wrong count
             QStringLiteral(""),
         }) {
        const QString filled = text.contains(QLatin1String("%1")) ? text.arg(id) : text;
        bool ran = true;
        EXPECT_FALSE(runDirect(document, filled, &ran)) << filled.toStdString();
        EXPECT_FALSE(ran) << filled.toStdString();
    }
    EXPECT_EQ(body->angle, 0.f) << "nothing ran";
    EXPECT_EQ(body->name(), "a");
}

TEST(RecordedCalls, AMissingItemIsReportedAsByTheCompiledScript)
{
    EditorDocument direct, compiled;
    addBody(direct, QStringLiteral("a"));
    addBody(compiled, QStringLiteral("a"));
    const QString text = QStringLiteral("getBody(999).setAngle(2);");
    QStringList directErrors, compiledErrors;
    {
        LogCapture log;
        bool ran = false;
        runDirect(direct, text, &ran);
        EXPECT_TRUE(ran);
        directErrors = log.texts(LOG_ERROR);
    }
    {
        LogCapture log;
        runCompiled(compiled, text);
        compiledErrors = log.texts(LOG_ERROR);
    }
    EXPECT_FALSE(directErrors.isEmpty());
    EXPECT_EQ(directErrors, compiledErrors);
}

TEST(RecordedCalls, UndoAndRedoOfARecordedScriptRestoreEachStateExactly)
{
    EditorDocument document;
    for (int i = 0; i < 30; ++i)
        addBody(document, QStringLiteral("b%1").arg(i));
    // Six hundred recorded setters: undo and redo replay them in pieces.
    LogCapture log;
    ASSERT_TRUE(document.scripting().runOneShot(QStringLiteral(R"(
body[] bodies = ab();
for (int round = 0; round < 10; round++)
    for (uint i = 0; i < bodies.length(); i++) {
        bodies[i].setAngle(round + i * 0.001);
        bodies[i].setPosition(i * 0.37f, round * -1.1f);
    })"),
                                                QString()))
        << log.texts(LOG_ERROR).join(QLatin1Char('\n')).toStdString();
    ASSERT_EQ(document.undoStack().count(), 1);
    std::vector<std::pair<float, Vec2>> after;
    for (const auto& body : document.world().bodies())
        after.emplace_back(body->angle, body->position);
    for (int round = 0; round < 2; ++round) {
        document.undoStack().undo();
        for (const auto& body : document.world().bodies()) {
            EXPECT_EQ(bitsOf(body->angle), bitsOf(0.f));
            EXPECT_EQ(body->position, (Vec2{0, 0}));
        }
        document.undoStack().redo();
        for (size_t i = 0; i < after.size(); ++i) {
            const MetaBody& body = *document.world().bodies()[i];
            EXPECT_EQ(bitsOf(body.angle), bitsOf(after[i].first));
            EXPECT_EQ(body.position, after[i].second);
        }
    }
    EXPECT_EQ(document.undoStack().count(), 1) << "replays record nothing";
}
