// The include preprocessor on any text, with a few include files beside it:
// it ends, and no include line is left in the result. Path separators of the
// input are replaced, so that included names stay inside the scratch folder.
#include "fuzzsupport.h"

#include "engine/scriptpreprocessor.h"

#include <QDir>
#include <QRegularExpression>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool prepared = [] {
        writeScratchFile(QStringLiteral("a.inc"), "int a = 1;\n");
        writeScratchFile(QStringLiteral("b.inc"), "\n#include \"a.inc\"\nint b = 2;\n#include \"b.inc\"\n");
        writeScratchFile(QStringLiteral("c.inc"), "\n#include \"b.inc\"\n#include \"missing.inc\"\n");
        return true;
    }();
    (void)prepared;
    QString text = QStringLiteral("\n") + QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    text.replace(QLatin1Char('/'), QLatin1Char('_')).replace(QLatin1Char('\\'), QLatin1Char('_'));
    const bool hadInclude = text.contains(QLatin1String("#include"));
    const QString before = text;
    QStringList included;
    preprocessScriptIncludes(QDir(fuzzScratchFolder()).filePath(QStringLiteral("main.rs")), included, text);
    if (!hadInclude && text != before)
        fuzzFailure("a text without includes was changed");
    static const QRegularExpression includeLine(QStringLiteral("\\n\\s*#include\\s+\"[^\"]+\"\\s*\\n"));
    if (includeLine.match(text).hasMatch())
        fuzzFailure("an include line is left");
    return 0;
}
