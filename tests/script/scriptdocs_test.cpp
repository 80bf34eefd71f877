// docs/scripting.md lists every declaration of the registered API; it is
// generated from the same dump as the API snapshot, so it cannot drift.
#include "scripttesting.h"

#include "api/scriptapidump.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"

#include <gtest/gtest.h>

#include <QFile>

namespace
{
const char* const kHead = PLAX_SOURCE_DIR "/docs/scripting.head.md";
const char* const kDoc = PLAX_SOURCE_DIR "/docs/scripting.md";

// The plaxscript part of the dump: our types and the global functions,
// without the add-ons' own types.
QString declarationList(const QStringList& dump)
{
    static const QStringList kAddOnTypes = {"array ", "string ", "dictionary ", "dictionaryValue ", "funcdef: bool array::"};
    QString text;
    for (const QString& line : dump) {
        if (line.isEmpty() || std::any_of(kAddOnTypes.begin(), kAddOnTypes.end(),
                                          [&](const QString& p) { return line.startsWith(p); }))
            continue;
        text += QStringLiteral("- `%1`\n").arg(line);
    }
    return text;
}
} // namespace

TEST(ScriptDocs, ReferenceListsTheRegisteredApi)
{
    EditorDocument document;
    const QString expected = readText(kHead) + declarationList(describeScriptApi(document.scripting().engine()));
    if (qEnvironmentVariableIsSet("PLAX_UPDATE_API_SNAPSHOT"))
        writeText(kDoc, expected);
    const QString actual = readText(kDoc);
    EXPECT_EQ(actual, expected) << "docs/scripting.md is out of date: run the script tests with PLAX_UPDATE_API_SNAPSHOT=1";
    for (const char* needle : {"getBodiesByCustomInt", "void translate(const joint&in, int, vec2)", "body::setAngle"})
        EXPECT_TRUE(actual.contains(needle)) << needle;
}
