#pragma once

#include "engine/scriptmodules.h"

#include <angelscript.h>

#include <QString>

#include <vector>

class DocumentScripting;

/// One of the scripts a document names to customise itself (custom labels,
/// property export filter, property display filter): its file compiled into
/// a module of its own on the document's engine, and the functions it may
/// define looked up once by their exact declarations and kept.
class DocumentScriptModule
{
public:
    /// A function the script may define: its declaration and the line
    /// logged when it is found ("Found script function for ...").
    struct Lookup
    {
        QString declaration;
        QString foundMessage;
    };

    /// A script of `kind` that may define the functions of `lookups`.
    DocumentScriptModule(ScriptModuleKind kind, std::vector<Lookup> lookups);

    /// Loads the file `path` (absolute) into the module, replacing what was
    /// loaded. A file that cannot be read logs "Could not open file for
    /// reading: '%1'"; otherwise its text (as UTF-8 up to its first NUL byte,
    /// with a newline put in front) goes through the include preprocessor
    /// and is built, failures logged as for any module. Then each declared
    /// function is looked up and each one found is logged. Without a module
    /// every function stays null. The caller holds the document's script
    /// mutex. Returns true when the module was built.
    bool loadLocked(DocumentScripting& scripting, const QString& path);
    /// Discards the module and forgets its functions (the caller holds the
    /// script mutex).
    void unloadLocked(DocumentScripting& scripting);

    /// The function of lookup `index`, null when the script does not define it.
    AngelScript::asIScriptFunction* function(size_t index) const;
    /// True when the script defines at least one of the functions.
    bool hasFunctions() const;
    /// The file loaded last (empty when none).
    const QString& path() const { return m_path; }

private:
    ScriptModuleKind m_kind;
    std::vector<Lookup> m_lookups;
    std::vector<AngelScript::asIScriptFunction*> m_functions;
    QString m_path;
};
