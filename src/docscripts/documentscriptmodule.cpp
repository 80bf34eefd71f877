#include "docscripts/documentscriptmodule.h"

#include "base/log.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "engine/scriptpreprocessor.h"

#include <QFile>
#include <QFileInfo>

using namespace AngelScript;

DocumentScriptModule::DocumentScriptModule(ScriptModuleKind kind, std::vector<Lookup> lookups)
    : m_kind(kind), m_lookups(std::move(lookups)), m_functions(m_lookups.size(), nullptr)
{
}

bool DocumentScriptModule::loadLocked(DocumentScripting& scripting, const QString& path)
{
    unloadLocked(scripting);
    m_path = path;
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file for reading: '%1'").arg(path));
        return false;
    }
    QByteArray bytes = file.readAll();
    if (const qsizetype nul = bytes.indexOf('\0'); nul >= 0)
        bytes.truncate(nul);
    QString text = QString::fromUtf8(bytes);
    // The newline lets an include on the first line be found; the line
    // offset takes it out of the reported rows again.
    text.insert(0, QLatin1Char('\n'));
    QStringList included;
    preprocessScriptIncludes(QFileInfo(path).absoluteFilePath(), included, text);

    const QString name = ScriptModules::moduleName(m_kind, scripting.document().identity());
    asIScriptModule* module = scripting.buildModuleLocked(name, text, -1);
    if (!module)
        return false;
    for (size_t i = 0; i < m_lookups.size(); ++i) {
        m_functions[i] = module->GetFunctionByDecl(m_lookups[i].declaration.toUtf8().constData());
        if (m_functions[i])
            plaxLog(LOG_DEBUG, m_lookups[i].foundMessage);
    }
    return true;
}

void DocumentScriptModule::unloadLocked(DocumentScripting& scripting)
{
    std::fill(m_functions.begin(), m_functions.end(), nullptr);
    m_path.clear();
    scripting.discardModule(ScriptModules::moduleName(m_kind, scripting.document().identity()));
}

asIScriptFunction* DocumentScriptModule::function(size_t index) const
{
    return index < m_functions.size() ? m_functions[index] : nullptr;
}

bool DocumentScriptModule::hasFunctions() const
{
    for (asIScriptFunction* function : m_functions) {
        if (function)
            return true;
    }
    return false;
}
