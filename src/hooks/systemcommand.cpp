#include "hooks/systemcommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
const char* const kNames[] = {"PLAXDIR", "EXPORTDIR", "PLAXFILE", "EXPORTFILE"};

const QRegularExpression& placeholderPattern()
{
    static const QRegularExpression pattern(QStringLiteral("%\\{\\s*(PLAXDIR|EXPORTDIR|PLAXFILE|EXPORTFILE)\\s*\\}"));
    return pattern;
}

// 0 PLAXDIR, 1 EXPORTDIR, 2 PLAXFILE, 3 EXPORTFILE.
int indexOf(QStringView name)
{
    for (int i = 0; i < 4; ++i) {
        if (name == QLatin1String(kNames[i]))
            return i;
    }
    return 0;
}

QString valueAt(const PlaceholderValues& values, int index)
{
    switch (index) {
    case 0: return values.plaxDir;
    case 1: return values.exportDir;
    case 2: return values.plaxFile;
    default: return values.exportFile;
    }
}
} // namespace

PlaceholderValues PlaceholderValues::of(const QString& sceneFile, const QString& exportFile)
{
    PlaceholderValues values;
    if (!sceneFile.isEmpty()) {
        const QFileInfo info(sceneFile);
        values.plaxDir = info.absolutePath();
        values.plaxFile = info.fileName();
    }
    if (!exportFile.isEmpty()) {
        const QFileInfo info(exportFile);
        values.exportDir = info.absolutePath();
        values.exportFile = info.fileName();
    }
    return values;
}

PlaceholderValues PlaceholderValues::withSeparator(QChar separator) const
{
    PlaceholderValues values = *this;
    for (QString* value : {&values.plaxDir, &values.exportDir, &values.plaxFile, &values.exportFile})
        value->replace(QLatin1Char('/'), separator);
    return values;
}

namespace SystemCommand
{
QStringList placeholderNames()
{
    QStringList names;
    for (const char* name : kNames)
        names.append(QStringLiteral("%{%1}").arg(QLatin1String(name)));
    return names;
}

QString placeholderLabel(const QString& name)
{
    static const char* const labels[] = {
        QT_TRANSLATE_NOOP("SystemCommand", "Folder containing .plax file"),
        QT_TRANSLATE_NOOP("SystemCommand", "Folder containing exported file"),
        QT_TRANSLATE_NOOP("SystemCommand", "The .plax file name"),
        QT_TRANSLATE_NOOP("SystemCommand", "The exported file name"),
    };
    const QRegularExpressionMatch match = placeholderPattern().match(name);
    if (!match.hasMatch())
        return QString();
    return QCoreApplication::translate("SystemCommand", labels[indexOf(match.capturedView(1))]);
}

QString resolve(const QString& text, const PlaceholderValues& values, bool nativeSeparators)
{
    const PlaceholderValues used = nativeSeparators ? values.withSeparator(QDir::separator()) : values;
    QString result;
    qsizetype from = 0;
    QRegularExpressionMatchIterator it = placeholderPattern().globalMatch(text);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        result += QStringView(text).mid(from, match.capturedStart() - from);
        result += valueAt(used, indexOf(match.capturedView(1)));
        from = match.capturedEnd();
    }
    result += QStringView(text).mid(from);
    return result;
}

QString shellScript(const QString& command)
{
    enum class Quote
    {
        None,
        Single,
        Double,
    };
    Quote quote = Quote::None;
    QString script;
    const qsizetype n = command.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = command[i];
        // A backslash outside single quotes takes the next character with it.
        if (c == QLatin1Char('\\') && quote != Quote::Single && i + 1 < n) {
            script += c;
            script += command[i + 1];
            i += 2;
            continue;
        }
        if (c == QLatin1Char('%')) {
            const QRegularExpressionMatch match = placeholderPattern().match(
                command, i, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
            if (match.hasMatch()) {
                const QString parameter = QStringLiteral("${%1}").arg(indexOf(match.capturedView(1)) + 1);
                switch (quote) {
                case Quote::None: script += QLatin1Char('"') + parameter + QLatin1Char('"'); break;
                case Quote::Double: script += parameter; break;
                case Quote::Single: script += QStringLiteral("'\"%1\"'").arg(parameter); break;
                }
                i = match.capturedEnd();
                continue;
            }
        }
        if (c == QLatin1Char('\'') && quote != Quote::Double)
            quote = quote == Quote::Single ? Quote::None : Quote::Single;
        else if (c == QLatin1Char('"') && quote != Quote::Single)
            quote = quote == Quote::Double ? Quote::None : Quote::Double;
        script += c;
        ++i;
    }
    return script;
}

ResolvedSystemCommand prepare(const QString& command, const QString& directory, const PlaceholderValues& values,
                              bool nativeSeparators)
{
    const PlaceholderValues used = nativeSeparators ? values.withSeparator(QDir::separator()) : values;
    ResolvedSystemCommand resolved;
    resolved.display = resolve(command, values, nativeSeparators);
    const QString folder = resolve(directory, values, false).trimmed();
    resolved.workingDirectory = QDir::cleanPath(folder.isEmpty() ? values.exportDir
                                                                 : QDir(values.exportDir).absoluteFilePath(folder));
#ifdef Q_OS_WIN
    // cmd.exe has no parameters to hand values over: each value goes in
    // double quotes, which only '"' and '%' could break out of.
    for (const QString* value : {&used.plaxDir, &used.exportDir, &used.plaxFile, &used.exportFile}) {
        if (value->contains(QLatin1Char('"')) || value->contains(QLatin1Char('%')))
            resolved.error = QCoreApplication::translate("SystemCommand", "A path contains '\"' or '%': %1").arg(*value);
    }
    PlaceholderValues quoted = used;
    for (QString* value : {&quoted.plaxDir, &quoted.exportDir, &quoted.plaxFile, &quoted.exportFile})
        *value = QLatin1Char('"') + *value + QLatin1Char('"');
    resolved.program = QStringLiteral("cmd.exe");
    resolved.arguments = {QStringLiteral("/c"), resolve(command, quoted, false)};
#else
    resolved.program = QStringLiteral("/bin/sh");
    resolved.arguments = {QStringLiteral("-c"), shellScript(command), QStringLiteral("plax-hook"),
                          used.plaxDir,           used.exportDir,       used.plaxFile,
                          used.exportFile};
#endif
    return resolved;
}
} // namespace SystemCommand
