#include "document/editordocument.h"

#include "base/flags.h"
#include "base/log.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "script/documentscripting.h"

#include <QFileInfo>

#include <atomic>

namespace
{
std::atomic<int> s_nextIdentity{1};
}

EditorDocument* EditorDocument::s_currentScriptContextDocument = nullptr;

EditorDocument::EditorDocument() : m_world(std::make_unique<MetaWorld>()), m_identity(s_nextIdentity++)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Constructing EditorDocument %08X", unsigned(reinterpret_cast<quintptr>(this)));
    m_scripting = std::make_unique<DocumentScripting>(*this);
}

EditorDocument::~EditorDocument()
{
    // The engine goes first: releasing it discards modules that refer to the scene.
    m_scripting.reset();
}

bool EditorDocument::load(const QString& path)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Reading file for EditorDocument %08X (%s)", unsigned(reinterpret_cast<quintptr>(this)),
                qPrintable(path));
    std::unique_ptr<MetaWorld> loaded = loadSceneFile(path);
    if (!loaded)
        return false;
    m_world = std::move(loaded);
    m_filePath = QFileInfo(path).absoluteFilePath();
    m_scripting->scriptLog().start(m_filePath);
    return true;
}

bool EditorDocument::save(const QString& path) const
{
    return saveSceneFile(*m_world, path);
}
