#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// The registered plaxscript API in a form the interface can use: type
/// names, global functions and each type's methods and properties, with
/// their full declarations. Built from the same dump as the scripting
/// reference (describeScriptApi), so highlighting, completion and help
/// always match the engine.
class ScriptApiCatalog
{
public:
    /// One function or method name with every declaration carrying it.
    struct Entry
    {
        QString name;
        QStringList declarations;
    };

    /// The catalogue of a fresh engine with the whole API (built once).
    static const ScriptApiCatalog& instance();
    /// A catalogue from dump lines (tests, or another engine).
    explicit ScriptApiCatalog(const QStringList& dumpLines);

    /// Every dump line, sorted.
    const QStringList& dumpLines() const { return m_lines; }
    /// Registered type names (value, handle and add-on types, funcdefs).
    const QStringList& typeNames() const { return m_types; }
    /// Global functions by name.
    const QMap<QString, Entry>& functions() const { return m_functions; }
    /// Methods of a type by name.
    QMap<QString, Entry> methods(const QString& type) const { return m_methods.value(type); }
    /// Every type that has methods or properties.
    QStringList typesWithMembers() const;
    /// Property declarations of a type.
    QStringList properties(const QString& type) const { return m_properties.value(type); }
    /// Names of every method of every type (for completion after a dot).
    QStringList allMethodNames() const;

    /// The name of a function declaration ("vec2 getGravity()" gives
    /// "getGravity", "float body::getAngle()" gives "getAngle").
    static QString functionName(const QString& declaration);

private:
    QStringList m_lines;
    QStringList m_types;
    QMap<QString, Entry> m_functions;
    QMap<QString, QMap<QString, Entry>> m_methods;
    QMap<QString, QStringList> m_properties;
};

/// The reserved words of the AngelScript language.
QStringList angelScriptKeywords();
