#include "app/exportactions.h"

#include "app/editorworkspace.h"
#include "base/log.h"
#include "base/version.h"
#include "document/editordocument.h"
#include "hooks/scripthooksmanager.h"
#include "panels/scenescriptsdialog.h"
#include "panels/scripthooksdialog.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>

ExportActions::ExportActions(QWidget* window, EditorWorkspace* workspace)
    : QObject(window), m_window(window), m_workspace(workspace), m_hooks(std::make_unique<ScriptHooksManager>())
{
}

ExportActions::~ExportActions() = default;

namespace
{
template <class Slot>
QAction* make(QObject* owner, QMenu* menu, const char* name, const QString& text, Slot slot)
{
    QAction* action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    QObject::connect(action, &QAction::triggered, owner, slot);
    return action;
}
} // namespace

void ExportActions::populateFile(QMenu* file)
{
    m_documentActions = {
        make(this, file, "actionExportRawInfo", tr("Export &raw info..."), [this] { exportWithDialog(ExportKind::RawInfo); }),
        make(this, file, "actionExportSource", tr("Export C++ so&urce..."),
             [this] { exportWithDialog(ExportKind::SourceCode); }),
        make(this, file, "actionSceneScripts", tr("Scene scripts and export &command..."),
             [this] {
                 EditorDocument* document = m_workspace->activeDocument();
                 if (!document)
                     return;
                 SceneScriptsDialog dialog(*document, exportPathOf(*document), m_window);
                 dialog.exec();
             }),
    };
    update();
}

void ExportActions::populateTools(QMenu* tools)
{
    QAction* hooks = make(this, tools, "actionScriptHooks", tr("Script &hooks..."), [this] {
        // Someone may have edited the file meanwhile.
        m_hooks->load();
        ScriptHooksDialog dialog(*m_hooks, m_window);
        dialog.exec();
    });
    hooks->setIcon(QIcon(QStringLiteral(":/icons/lightning-purple.png")));
}

void ExportActions::update()
{
    const bool any = m_workspace->activeDocument() != nullptr;
    for (QAction* action : m_documentActions)
        action->setEnabled(any);
}

QString ExportActions::exportPathOf(EditorDocument& document) const
{
    const QString last = m_lastExport.value(&document);
    if (!last.isEmpty())
        return last;
    if (document.filePath().isEmpty())
        return QString();
    const QFileInfo scene(document.filePath());
    return scene.absoluteDir().filePath(scene.completeBaseName() + QStringLiteral(".json"));
}

void ExportActions::exportWithDialog(ExportKind kind)
{
    EditorDocument* document = m_workspace->activeDocument();
    if (!document)
        return;
    QString suggestion = exportPathOf(*document);
    if (kind == ExportKind::SourceCode && !suggestion.isEmpty())
        suggestion = QFileInfo(suggestion).absoluteDir().filePath(QFileInfo(suggestion).completeBaseName() + ".cpp");
    const QString path =
        kind == ExportKind::RawInfo
            ? QFileDialog::getSaveFileName(m_window, tr("Export raw info"), suggestion,
                                           tr("JSON files (*.json);;All files (*.*)"))
            : QFileDialog::getSaveFileName(m_window, tr("Export C++ source"), suggestion,
                                           tr("C++ files (*.cpp *.h *.inl);;All files (*.*)"));
    if (!path.isEmpty())
        exportTo(kind, path);
}

bool ExportActions::exportTo(ExportKind kind, const QString& path)
{
    EditorDocument* document = m_workspace->activeDocument();
    if (!document)
        return false;
    if (Version::kTrial) {
        const QString text = kind == ExportKind::RawInfo ? tr("Exporting raw info is disabled in the trial version.")
                                                         : tr("Exporting source code is disabled in the trial version.");
        QMessageBox::warning(m_window, QStringLiteral("P.L.A.X"), text);
        return false;
    }
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (kind == ExportKind::RawInfo)
        m_lastExport.insert(document, absolute);
    if (!exportDocument(*document, kind, absolute)) {
        QMessageBox::critical(m_window, QStringLiteral("P.L.A.X"), tr("Could not export to '%1'.").arg(absolute));
        return false;
    }
    plaxLog(LOG_INFO, QStringLiteral("Exported '%1'").arg(absolute));
    emit statusMessage(tr("Exported '%1'").arg(absolute), 4000);
    return true;
}
