#include "document/editordocument.h"

#include "api/scriptapi.h"
#include "base/flags.h"
#include "base/log.h"
#include "base/processexit.h"
#include "docscripts/documentscripts.h"
#include "editing/modifiedstate.h"
#include "engine/documentscripting.h"
#include "engine/scriptbackground.h"
#include "io/filereferences.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <QFileInfo>

#include <atomic>

namespace
{
std::atomic<int> s_nextIdentity{1};
}

ScriptDocument* ScriptDocument::s_currentScriptContextDocument = nullptr;

EditorDocument::EditorDocument() : m_world(std::make_unique<MetaWorld>()), m_identity(s_nextIdentity++)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Constructing EditorDocument %08X", unsigned(reinterpret_cast<quintptr>(this)));
    m_scripting = std::make_unique<DocumentScripting>(*this, registerScriptApi);
    m_documentScripts = std::make_unique<DocumentScripts>(*this);
}

EditorDocument::~EditorDocument()
{
    // The commands refer to the document; they go before anything else.
    m_undoStack.clear();
    // The scene's own scripts keep functions of modules on the engine.
    m_documentScripts.reset();
    // The engine goes next: releasing it discards modules that refer to the scene.
    m_scripting.reset();
    if (m_leaveSceneToExit)
        ProcessExit::keepUntilExit(std::move(m_world));
}

bool EditorDocument::load(const QString& path)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Reading file for EditorDocument %08X (%s)", unsigned(reinterpret_cast<quintptr>(this)),
                qPrintable(path));
    std::unique_ptr<MetaWorld> loaded = loadSceneFile(path);
    if (!loaded)
        return false;
    m_undoStack.clear();
    m_selection.clear();
    m_recovered = false;
    m_world = std::move(loaded);
    m_filePath = QFileInfo(path).absoluteFilePath();
    m_scripting->scriptLog().start(m_filePath);
    m_documentScripts->sceneReplaced();
    m_undoStack.setClean();
    return true;
}

bool EditorDocument::save(const QString& path, bool adoptPath)
{
    if (!saveSceneFile(*m_world, path))
        return false;
    if (adoptPath) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        if (absolute != m_filePath) {
            // The file holds its references relative to its own folder; the
            // model follows, so that they resolve from the new path too.
            rebaseFileReferences(*m_world, QFileInfo(absolute).absolutePath());
            m_filePath = absolute;
            m_scripting->scriptLog().start(m_filePath);
        }
        m_undoStack.setClean();
        m_recovered = false;
        m_documentScripts->sceneSaved();
    }
    return true;
}

bool EditorDocument::loadRecovered(const QString& backupPath, const QString& originalPath)
{
    if (!load(backupPath))
        return false;
    m_filePath = originalPath.isEmpty() ? QString() : QFileInfo(originalPath).absoluteFilePath();
    // The copy names files relative to the backups folder; the document
    // resolves them from its own file (a scene never saved holds full paths).
    rebaseFileReferences(*m_world, m_filePath.isEmpty() ? QString() : QFileInfo(m_filePath).absolutePath());
    m_scripting->scriptLog().start(m_filePath);
    m_recovered = true;
    return true;
}

bool EditorDocument::isModified() const
{
    return m_recovered || ::isModified(m_undoStack);
}

bool EditorDocument::runCommandScript(const QString& script, const QString& progressText)
{
    return ScriptBackground::runOneOffScript(*this, script, QString(), progressText);
}

void EditorDocument::appendToScriptLog(const QString& script)
{
    m_scripting->scriptLog().append(script);
}
