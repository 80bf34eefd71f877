#include "panels/scriptapicatalog.h"

#include "api/scriptapi.h"
#include "api/scriptapidump.h"

#include <angelscript.h>

#include <QSet>

ScriptApiCatalog::ScriptApiCatalog(const QStringList& dumpLines) : m_lines(dumpLines)
{
    QSet<QString> types;
    for (const QString& line : m_lines) {
        if (line.startsWith(QLatin1String("type "))) {
            types.insert(line.mid(5).trimmed());
        } else if (line.startsWith(QLatin1String("function: "))) {
            const QString declaration = line.mid(10);
            Entry& entry = m_functions[functionName(declaration)];
            entry.name = functionName(declaration);
            entry.declarations.append(declaration);
        } else if (line.startsWith(QLatin1String("funcdef: "))) {
            types.insert(functionName(line.mid(9)));
        } else {
            const int colon = line.indexOf(QLatin1String(": "));
            if (colon < 0)
                continue;
            const QString head = line.left(colon);
            const QString declaration = line.mid(colon + 2);
            const int space = head.indexOf(QLatin1Char(' '));
            if (space < 0)
                continue;
            const QString type = head.left(space);
            const QString what = head.mid(space + 1);
            if (what == QLatin1String("method")) {
                Entry& entry = m_methods[type][functionName(declaration)];
                entry.name = functionName(declaration);
                entry.declarations.append(declaration);
            } else if (what == QLatin1String("property")) {
                m_properties[type].append(declaration);
            }
        }
    }
    m_types = QStringList(types.begin(), types.end());
    m_types.sort();
}

const ScriptApiCatalog& ScriptApiCatalog::instance()
{
    static const ScriptApiCatalog catalog([] {
        QStringList lines;
        if (AngelScript::asIScriptEngine* engine = AngelScript::asCreateScriptEngine(ANGELSCRIPT_VERSION)) {
            registerScriptApi(engine);
            lines = describeScriptApi(engine);
            engine->ShutDownAndRelease();
        }
        return lines;
    }());
    return catalog;
}

QStringList ScriptApiCatalog::typesWithMembers() const
{
    QSet<QString> types;
    for (auto it = m_methods.constBegin(); it != m_methods.constEnd(); ++it)
        types.insert(it.key());
    for (auto it = m_properties.constBegin(); it != m_properties.constEnd(); ++it)
        types.insert(it.key());
    QStringList list(types.begin(), types.end());
    list.sort();
    return list;
}

QStringList ScriptApiCatalog::allMethodNames() const
{
    QSet<QString> names;
    for (const auto& methods : m_methods) {
        for (auto it = methods.constBegin(); it != methods.constEnd(); ++it) {
            if (!it.key().startsWith(QLatin1String("op")))
                names.insert(it.key());
        }
    }
    for (const QStringList& properties : m_properties) {
        for (const QString& declaration : properties)
            names.insert(declaration.section(QLatin1Char(' '), -1));
    }
    QStringList list(names.begin(), names.end());
    list.sort();
    return list;
}

QString ScriptApiCatalog::functionName(const QString& declaration)
{
    const int paren = declaration.indexOf(QLatin1Char('('));
    QString head = (paren < 0 ? declaration : declaration.left(paren)).trimmed();
    const int scope = head.lastIndexOf(QLatin1String("::"));
    if (scope >= 0)
        head = head.mid(scope + 2);
    const int space = head.lastIndexOf(QLatin1Char(' '));
    return space >= 0 ? head.mid(space + 1) : head;
}

QStringList angelScriptKeywords()
{
    return {QStringLiteral("and"),      QStringLiteral("abstract"),  QStringLiteral("auto"),     QStringLiteral("bool"),
            QStringLiteral("break"),    QStringLiteral("case"),      QStringLiteral("cast"),     QStringLiteral("catch"),
            QStringLiteral("class"),    QStringLiteral("const"),     QStringLiteral("continue"), QStringLiteral("default"),
            QStringLiteral("do"),       QStringLiteral("double"),    QStringLiteral("else"),     QStringLiteral("enum"),
            QStringLiteral("explicit"), QStringLiteral("external"),  QStringLiteral("false"),    QStringLiteral("final"),
            QStringLiteral("float"),    QStringLiteral("for"),       QStringLiteral("from"),     QStringLiteral("funcdef"),
            QStringLiteral("function"), QStringLiteral("get"),       QStringLiteral("if"),       QStringLiteral("import"),
            QStringLiteral("in"),       QStringLiteral("inout"),     QStringLiteral("int"),      QStringLiteral("int8"),
            QStringLiteral("int16"),    QStringLiteral("int32"),     QStringLiteral("int64"),    QStringLiteral("interface"),
            QStringLiteral("is"),       QStringLiteral("mixin"),     QStringLiteral("namespace"), QStringLiteral("not"),
            QStringLiteral("null"),     QStringLiteral("or"),        QStringLiteral("out"),      QStringLiteral("override"),
            QStringLiteral("private"),  QStringLiteral("property"),  QStringLiteral("protected"), QStringLiteral("return"),
            QStringLiteral("set"),      QStringLiteral("shared"),    QStringLiteral("super"),    QStringLiteral("switch"),
            QStringLiteral("this"),     QStringLiteral("true"),      QStringLiteral("try"),      QStringLiteral("typedef"),
            QStringLiteral("uint"),     QStringLiteral("uint8"),     QStringLiteral("uint16"),   QStringLiteral("uint32"),
            QStringLiteral("uint64"),   QStringLiteral("void"),      QStringLiteral("while"),    QStringLiteral("xor")};
}
