// Every declaration in required_api.txt (the API scripts are promised) is
// registered: properties and methods on their types, global functions and
// function types, looked up by AngelScript itself so spacing cannot matter.

#include "scripttesting.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace AngelScript;

namespace
{
const char* const kListPath = PLAX_SOURCE_DIR "/tests/script/required_api.txt";

QString withoutSpaces(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("\\s+")));
}

bool hasProperty(asITypeInfo* type, const QString& decl)
{
    for (asUINT i = 0; i < type->GetPropertyCount(); ++i)
        if (withoutSpaces(QString::fromUtf8(type->GetPropertyDeclaration(i))) == withoutSpaces(decl))
            return true;
    return false;
}

bool hasFuncdef(asIScriptEngine* engine, const QString& decl)
{
    for (asUINT i = 0; i < engine->GetFuncdefCount(); ++i) {
        const char* text = engine->GetFuncdefByIndex(i)->GetFuncdefSignature()->GetDeclaration(true, false, false);
        if (withoutSpaces(QString::fromUtf8(text)) == withoutSpaces(decl))
            return true;
    }
    return false;
}

// Default arguments are not part of what identifies a function.
QByteArray withoutDefaults(const QString& decl)
{
    QString text = decl;
    text.remove(QRegularExpression(QStringLiteral("\\s*=\\s*[^,)]*")));
    return text.toUtf8();
}
} // namespace

TEST(RequiredApi, EveryPromisedDeclarationIsRegistered)
{
    const QStringList lines = readText(QString::fromUtf8(kListPath)).split('\n', Qt::SkipEmptyParts);
    ASSERT_GT(lines.size(), 700) << "missing " << kListPath;
    EditorDocument document;
    asIScriptEngine* engine = document.scripting().engine();
    ASSERT_NE(engine, nullptr);
    int checked = 0;
    for (const QString& line : lines) {
        if (line.startsWith('#'))
            continue;
        const QStringList parts = line.split('\t');
        ASSERT_EQ(parts.size(), 3) << line.toStdString();
        const QString& kind = parts[0];
        const QString& owner = parts[1];
        const QString& decl = parts[2];
        bool found = false;
        if (kind == "function") {
            found = engine->GetGlobalFunctionByDecl(withoutDefaults(decl).constData()) != nullptr;
        } else if (kind == "funcdef") {
            found = hasFuncdef(engine, decl);
        } else {
            asITypeInfo* type = engine->GetTypeInfoByName(owner.toUtf8().constData());
            ASSERT_NE(type, nullptr) << "no type " << owner.toStdString();
            found = kind == "property" ? hasProperty(type, decl)
                                       : type->GetMethodByDecl(withoutDefaults(decl).constData()) != nullptr;
        }
        EXPECT_TRUE(found) << kind.toStdString() << " of " << owner.toStdString() << ": " << decl.toStdString();
        ++checked;
    }
    EXPECT_GT(checked, 700);
}
