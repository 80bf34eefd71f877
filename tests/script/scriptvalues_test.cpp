#include "scripttesting.h"

#include "base/log.h"
#include "base/version.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace
{
QStringList run(const QString& text)
{
    EditorDocument document;
    bool ok = false;
    QStringList prints = runAndCollectPrints(document, text, &ok);
    EXPECT_TRUE(ok) << text.toStdString();
    return prints;
}
} // namespace

TEST(ScriptValueTypes, Vec2ArithmeticAndAssignmentOperators)
{
    QStringList prints = run(QStringLiteral(R"(
vec2 a = mv(1, 2);
vec2 b = mv(3, -1);
print(a + b); print(a - b); print(a * 2); print(2 * a); print(b / 2); print(-a);
vec2 c = a;
c += b; print(c);
c -= b; print(c);
c *= 3; print(c);
c /= 3; print(c);
print(a == mv(1, 2)); print(a == b);
vec2 z; print(z);
print(mv(1, 1).set(4, 5));
)"));
    EXPECT_EQ(prints, QStringList({"(4, 1)", "(-2, 3)", "(2, 4)", "(2, 4)", "(1.5, -0.5)", "(-1, -2)", "(4, 1)",
                                   "(1, 2)", "(3, 6)", "(1, 2)", "true", "false", "(0, 0)", "(4, 5)"}));
}

TEST(ScriptValueTypes, Vec2GeometryMethods)
{
    QStringList prints = run(QStringLiteral(R"(
vec2 a = mv(1, 2);
vec2 b = mv(3, -1);
print(a.dot(b)); print(a.cross(b));
vec2 d = mv(3, 4);
print(d.length()); print(d.normalize()); print(d);
vec2 zero; print(zero.normalize()); print(zero.normalized());
print(mv(0, 5).normalized());
print(mv(3, 4).distanceTo(mv(0, 0)));
print(mv(2, 3).projectedOnto(mv(4, 0)));
vec2 e = mv(2, 3); e.projectOnto(mv(0, 2)); print(e);
print(mv(1, 0).rotatedBy(dr(90)).distanceTo(mv(0, 1)) < 1e-6);
)"));
    EXPECT_EQ(prints, QStringList({"1", "-7", "5", "5", "(0.6, 0.8)", "0", "(0, 0)", "(0, 1)", "5", "(2, 0)", "(0, 3)",
                                   "true"}));
}

TEST(ScriptValueTypes, Vec2JoinsStrings)
{
    QStringList prints = run(QStringLiteral(R"(
string s = "p=" + mv(1, 2); print(s);
s = mv(5, 6); print(s);
s += mv(7, 8); print(s);
print(mv(1, 2) + "!");
)"));
    EXPECT_EQ(prints, QStringList({"p=(1, 2)", "(5, 6)", "(5, 6)(7, 8)", "(1, 2)!"}));
}

TEST(ScriptValueTypes, ColorOperatorsAndTextForms)
{
    QStringList prints = run(QStringLiteral(R"(
color c = mc255(255, 0, 51, 255);
print(c.getStr255()); print(c.getStrHex()); print(c);
print(mcHex("#FF003380").getStr255());
color g; g.setHex("00ff00"); print(g.getStrHex());
color kept = mc1(0.1, 0.2, 0.3, 0.4); kept.setHex("xyz"); print(kept.getStr1());
print(mcHex(c.getStrHex()) == c);
print((mc1(0.1, 0.2, 0.3, 0.4) + mc1(0.1, 0.1, 0.1, 0.1)).getStr1());
print((mc1(0.5, 0.5, 0.5, 1) - mc1(0.5, 0.25, 0, 0.5)).getStr1());
print((mc1(0.5, 0.5, 0.5, 1) * 2).getStr1());
print((2 * mc1(0.25, 1, 1, 1)).getStr1());
print((mc1(1, 1, 1, 1) / 4).getStr1());
print((-mc1(1, 2, 3, 4)).getStr1());
color d = mc1(1, 1, 1, 1);
d -= mc1(0.5, 0.5, 0.5, 0.5); print(d.getStr1());
d += mc1(0.5, 0, 0, 0); print(d.getStr1());
d *= 2; print(d.getStr1());
d /= 4; print(d.getStr1());
print(mc255(300, -5, 128, 255).getStr255());
color s; print(s.set1(0, 0.5, 1, 1).getStr1()); print(s.set255(0, 0, 255, 0).getStr255());
)"));
    EXPECT_EQ(prints, QStringList({"255, 0, 51, 255", "FF0033FF", "1, 0, 0.2, 1", "255, 0, 51, 128", "00FF00FF",
                                   "0.1, 0.2, 0.3, 0.4", "true", "0.2, 0.3, 0.4, 0.5", "0, 0.25, 0.5, 0.5",
                                   "1, 1, 1, 2", "0.5, 2, 2, 2", "0.25, 0.25, 0.25, 0.25", "-1, -2, -3, -4",
                                   "0.5, 0.5, 0.5, 0.5", "1, 0.5, 0.5, 0.5", "2, 1, 1, 1", "0.5, 0.25, 0.25, 0.25",
                                   "255, 0, 128, 255", "0, 0.5, 1, 1", "0, 0, 255, 0"}));
}

TEST(ScriptValueTypes, AabbUnionAndSet)
{
    QStringList prints = run(QStringLiteral(R"(
aabb a = maabb(0, 2, 0, 1);
aabb b = maabb(-1, 1, 0.5, 3);
print(a + b);
print(a);
a += b; print(a);
print(a == maabb(-1, 2, 0, 3)); print(a == b);
aabb c; c.set(1, 2, 3, 4);
print(c.lx); print(c.ux); print(c.ly); print(c.uy);
aabb z; print(z);
)"));
    EXPECT_EQ(prints, QStringList({"(-1, 0) - (2, 3)", "(0, 0) - (2, 1)", "(-1, 0) - (2, 3)", "true", "false", "1", "2",
                                   "3", "4", "(0, 0) - (0, 0)"}));
}

TEST(ScriptGlobalFunctions, NumberConversions)
{
    QStringList prints = run(QStringLiteral(R"(
print(intval("42")); print(intval(" -7 ")); print(intval("x1"));
bool ok = true;
print(intval("12", ok)); print(ok);
print(intval("1.5", ok)); print(ok);
print(floatval("2.5")); print(floatval("abc", ok)); print(ok);
print(floatval("-0.25", ok)); print(ok);
print(dr(180)); print(rd(3.14159265));
)"));
    EXPECT_EQ(prints, QStringList({"42", "-7", "0", "12", "true", "0", "false", "2.5", "0", "false", "-0.25", "true",
                                   "3.14159", "180"}));
}

TEST(ScriptGlobalFunctions, RndStaysWithinZeroAndOneAndFollowsTheSeed)
{
    QStringList prints = run(QStringLiteral(R"(
srand(3);
float lo = 2, hi = -1;
for (int i = 0; i < 20000; i++) {
    float r = rnd();
    if (r < lo) lo = r;
    if (r > hi) hi = r;
}
print(lo >= 0); print(hi <= 1); print(hi - lo > 0.99);
srand(11); float first = rnd(); float second = rnd();
srand(11); print(first == rnd()); print(second == rnd());
)"));
    EXPECT_EQ(prints, QStringList({"true", "true", "true", "true", "true"}));
}

TEST(ScriptGlobalFunctions, PrintOverloads)
{
    QStringList prints = run(QStringLiteral(R"(
print(3); print(false); print(0.5f); print("text");
string[] words = {"one", "two"};
print(words);
)"));
    if (Version::kTrial) {
        QString disabled = QStringLiteral("Printing strings in plaxscript is disabled in the trial version.");
        EXPECT_EQ(prints, QStringList({"3", "false", "0.5", disabled, disabled}));
    } else {
        EXPECT_EQ(prints, QStringList({"3", "false", "0.5", "text", "one", "two"}));
    }
}

TEST(ScriptGlobalFunctions, FilesAreWrittenReadAndChecked)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QString path = dir.filePath(QStringLiteral("out.txt"));
    EditorDocument document;
    LogCapture capture;
    bool ok = document.scripting().runOneShot(QStringLiteral("string p = '%1';\n"
                                                            "print(fileExists(p));\n"
                                                            "print(writeFile(p, 'h\\u00e9llo\\n'));\n"
                                                            "print(fileExists(p)); print(dirExists(p));\n"
                                                            "print(dirExists('%2'));\n"
                                                            "print(readFile(p) == 'h\\u00e9llo\\n');\n"
                                                            "print(readFile('%2/missing') == '');\n")
                                                  .arg(path, dir.path()),
                                              QString());
    EXPECT_TRUE(ok);
    QStringList prints = capture.texts(LOG_SCRIPT);
    if (Version::kTrial) {
        EXPECT_EQ(prints, QStringList({"false", "false", "false", "false", "true", "false", "true"}));
        EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Writing files in plaxscript is disabled in the trial version."));
    } else {
        EXPECT_EQ(prints, QStringList({"false", "true", "true", "false", "true", "true", "true"}));
        EXPECT_EQ(readText(path), QString::fromUtf8("h\xc3\xa9llo\n"));
    }
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_WARNING, QStringLiteral("Could not open file '%1/missing'").arg(dir.path())));
}

TEST(ScriptGlobalFunctions, ImageFormatsFilterNamesTheReadableFormats)
{
    EditorDocument document;
    LogCapture capture;
    ASSERT_TRUE(document.scripting().runOneShot(QStringLiteral("print(getSupportedImageFormatsFilter());"), QString()));
    const QStringList prints = capture.texts(LOG_SCRIPT);
    ASSERT_EQ(prints.size(), 1);
    EXPECT_TRUE(prints[0].startsWith("Image files (")) << prints[0].toStdString();
    EXPECT_TRUE(prints[0].endsWith(")"));
    for (const char* pattern : {"*.png", "*.jpg", "*.bmp"})
        EXPECT_TRUE(prints[0].contains(pattern)) << pattern;
}

TEST(ScriptGlobalFunctions, JsonEncodeWritesNestedValues)
{
    QStringList prints = run(QStringLiteral(R"(
dictionary inner = {{'n', 2}};
dictionary d = {{'i', 1}, {'f', 0.5}, {'s', 'text'}, {'b', true}};
d['v'] = mv(1, -2);
d['c'] = mc1(1, 0, 0, 1);
int[] list = {1, 2, 3};
d['list'] = list;
@d['inner'] = inner;
print(jsonEncode(d));
)"));
    ASSERT_EQ(prints.size(), 1);
    QJsonParseError error;
    QJsonDocument json = QJsonDocument::fromJson(prints.first().toUtf8(), &error);
    ASSERT_EQ(error.error, QJsonParseError::NoError) << prints.first().toStdString();
    QJsonObject o = json.object();
    EXPECT_EQ(o.value("i").toInt(), 1);
    EXPECT_EQ(o.value("f").toDouble(), 0.5);
    EXPECT_EQ(o.value("s").toString(), "text");
    EXPECT_TRUE(o.value("b").toBool());
    EXPECT_EQ(o.value("v").toObject().value("y").toDouble(), -2.0);
    EXPECT_EQ(o.value("c").toArray().size(), 4);
    EXPECT_EQ(o.value("list").toArray().at(2).toInt(), 3);
    EXPECT_EQ(o.value("inner").toObject().value("n").toInt(), 2);
}
