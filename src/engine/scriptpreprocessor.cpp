#include "engine/scriptpreprocessor.h"

#include "base/flags.h"
#include "base/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
const QRegularExpression& includeLinePattern()
{
    static const QRegularExpression s_pattern(QStringLiteral("\\n\\s*#include\\s+\"[^\"]+\"\\s*\\n"));
    return s_pattern;
}

QString resolveIncludeName(const QString& includerPath, const QString& name)
{
    if (QFileInfo(name).isAbsolute())
        return name;
    return QDir::cleanPath(QFileInfo(includerPath).absoluteDir().filePath(name));
}

QString readIncludedFile(const QString& path)
{
    QFile file(path);
    if (!file.exists()) {
        plaxLog(LOG_WARNING, QStringLiteral("File '%1' does not exist").arg(path));
        return QString();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not open file '%1' for reading").arg(path));
        return QString();
    }
    return QString::fromUtf8(file.readAll());
}

// Replaces every match of the pattern by the same literal text (no
// back-reference expansion, so included text is inserted verbatim).
QString replaceAllLiterally(const QString& text, const QRegularExpression& pattern, const QString& replacement)
{
    QString result;
    qsizetype copiedUpTo = 0;
    QRegularExpressionMatchIterator it = pattern.globalMatch(text);
    while (it.hasNext()) {
        QRegularExpressionMatch match = it.next();
        result += QStringView(text).mid(copiedUpTo, match.capturedStart() - copiedUpTo);
        result += replacement;
        copiedUpTo = match.capturedEnd();
    }
    result += QStringView(text).mid(copiedUpTo);
    return result;
}
} // namespace

void preprocessScriptIncludes(const QString& includerPath, QStringList& alreadyIncluded, QString& text)
{
    const QRegularExpression& pattern = includeLinePattern();
    for (QRegularExpressionMatch match = pattern.match(text); match.hasMatch(); match = pattern.match(text)) {
        QString line = match.captured(0);
        qsizetype open = line.indexOf(QLatin1Char('"'));
        qsizetype close = line.indexOf(QLatin1Char('"'), open + 1);
        QString name = line.mid(open + 1, close - open - 1);
        QString resolved = resolveIncludeName(includerPath, name);
        if (!AppFlags::isBatchMode())
            plaxLog(LOG_DEBUG, QStringLiteral("'%1' including '%2' in script preprocess").arg(includerPath, resolved));

        QString replacement;
        if (!alreadyIncluded.contains(resolved)) {
            alreadyIncluded.append(resolved);
            QString included = readIncludedFile(resolved);
            preprocessScriptIncludes(resolved, alreadyIncluded, included);
            replacement = QStringLiteral("\n%1\n").arg(included);
        } else {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring redundant inclusion of file '%1'").arg(resolved));
            replacement = QStringLiteral("\n\n");
        }
        text = replaceAllLiterally(text, pattern, replacement);
    }
}
