#include "app/editorworkspace.h"

#include "app/recentfiles.h"
#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "script/documentscripting.h"
#include "script/documentscripts.h"
#include "document/imagedata.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"
#include "views/editorview.h"
#include "views/playerview.h"
#include "views/texturecache.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QProgressDialog>
#include <QUndoGroup>

EditorWorkspace::EditorWorkspace(QMdiArea* area, QWidget* dialogParent)
    : QObject(area), m_area(area), m_dialogParent(dialogParent), m_undoGroup(new QUndoGroup(this))
{
    connect(m_area, &QMdiArea::subWindowActivated, this, &EditorWorkspace::onSubWindowActivated);
}

EditorWorkspace::~EditorWorkspace()
{
    // Views refer to their documents: they go first, without questions.
    for (auto& [document, entry] : m_documentToViewMap) {
        for (DocumentView* view : entry.views) {
            view->setCloseGuard({});
            view->disconnect(this);
            if (auto* window = qobject_cast<QMdiSubWindow*>(view->parentWidget()))
                delete window;
            else
                delete view;
        }
        entry.views.clear();
    }
    for (EditorDocument* document : m_order)
        m_undoGroup->removeStack(&document->undoStack());
    m_documentToViewMap.clear();
}

QList<EditorDocument*> EditorWorkspace::documents() const
{
    return m_order;
}

QList<DocumentView*> EditorWorkspace::views(EditorDocument* document) const
{
    auto it = m_documentToViewMap.find(document);
    return it == m_documentToViewMap.end() ? QList<DocumentView*>() : it->second.views;
}

EditorDocument* EditorWorkspace::documentForFile(const QString& path) const
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    for (EditorDocument* document : m_order) {
        if (!document->filePath().isEmpty() && document->filePath() == absolute)
            return document;
    }
    return nullptr;
}

DocumentView* EditorWorkspace::activeView() const
{
    QMdiSubWindow* window = m_area->activeSubWindow();
    return window ? qobject_cast<DocumentView*>(window->widget()) : nullptr;
}

EditorDocument* EditorWorkspace::activeDocument() const
{
    DocumentView* view = activeView();
    return view ? &view->document() : nullptr;
}

QString EditorWorkspace::displayName(const EditorDocument& document)
{
    return document.filePath().isEmpty() ? tr("untitled") : QFileInfo(document.filePath()).fileName();
}

void EditorWorkspace::collectError(const QString& text)
{
    if (!m_collected.contains(text))
        m_collected.append(text);
}

void EditorWorkspace::showError(const QString& text) const
{
    QMessageBox::critical(m_dialogParent, QStringLiteral("P.L.A.X"), text);
}

EditorView* EditorWorkspace::openFile(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (EditorDocument* open = documentForFile(absolute)) {
        const auto answer = QMessageBox::question(
            m_dialogParent, tr("File already open"),
            tr("The file '%1' is already open.\nWould you like to open another view of it?").arg(absolute),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return nullptr;
        EditorView* copyFrom = nullptr;
        for (DocumentView* view : views(open)) {
            if ((copyFrom = qobject_cast<EditorView*>(view)))
                break;
        }
        EditorView* view = openEditorView(open, copyFrom);
        attachObjects(m_documentToViewMap.at(open));
        return view;
    }

    auto document = std::make_unique<EditorDocument>();
    m_collecting = true;
    m_collected.clear();
    const bool loaded = QFileInfo(absolute).isFile() && document->load(absolute);
    m_collecting = false;
    if (!loaded) {
        QString text = QFileInfo::exists(absolute) ? tr("Could not open '%1'.").arg(absolute)
                                                   : tr("The file '%1' does not exist.").arg(absolute);
        if (!m_collected.isEmpty())
            text += QStringLiteral("\n\n") + m_collected.join(QLatin1Char('\n'));
        m_collected.clear();
        plaxLog(LOG_ERROR, tr("Failed to open '%1'").arg(absolute));
        showError(text);
        return nullptr;
    }
    m_collected.clear();
    plaxLog(LOG_INFO, "Opened '%s'", qPrintable(absolute));
    for (const auto& image : document->world().images())
        refreshImageData(*image, absolute);
    EditorDocument* added = addDocument(std::move(document));
    EditorView* view = openEditorView(added);
    attachObjects(m_documentToViewMap.at(added));
    // Asks, once per scene file, before running what the scene names.
    added->scripting().documentScripts().prepare();
    if (view)
        view->sceneChanged();
    emit recentFilesChanged(RecentFiles::add(absolute));
    return view;
}

EditorView* EditorWorkspace::openRecovered(const QString& backupPath, const QString& originalPath)
{
    auto document = std::make_unique<EditorDocument>();
    if (!document->loadRecovered(backupPath, originalPath)) {
        showError(tr("Could not recover '%1'.").arg(backupPath));
        return nullptr;
    }
    plaxLog(LOG_INFO, QStringLiteral("Recovered '%1' from '%2'").arg(originalPath, backupPath));
    for (const auto& image : document->world().images())
        refreshImageData(*image, document->filePath());
    EditorDocument* added = addDocument(std::move(document));
    EditorView* view = openEditorView(added);
    attachObjects(m_documentToViewMap.at(added));
    // Asks, once per scene file, before running what the scene names.
    added->scripting().documentScripts().prepare();
    return view;
}

EditorView* EditorWorkspace::newScene()
{
    EditorDocument* document = addDocument(std::make_unique<EditorDocument>());
    return openEditorView(document);
}

EditorDocument* EditorWorkspace::addDocument(std::unique_ptr<EditorDocument> document)
{
    EditorDocument* raw = document.get();
    OpenDocument entry;
    entry.document = std::move(document);
    entry.textures = std::make_shared<TextureCache>();
    m_documentToViewMap.emplace(raw, std::move(entry));
    m_order.append(raw);
    connect(&raw->undoStack(), &QUndoStack::cleanChanged, this, &EditorWorkspace::updateWindowTitles);
    connect(&raw->undoStack(), &QUndoStack::indexChanged, this, &EditorWorkspace::updateWindowTitles);
    m_undoGroup->addStack(&raw->undoStack());
    return raw;
}

void EditorWorkspace::attachObjects(OpenDocument& entry)
{
    if (entry.document->world().objects().empty())
        return;
    QProgressDialog progress(tr("Opening objects..."), QString(), 0, 0, m_dialogParent);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    progress.setValue(0);
    entry.objects.reset();
    entry.objects = std::make_unique<SceneObjectsAttachment>(*entry.document, ObjectManager::instance());
    for (DocumentView* view : entry.views) {
        if (auto* editor = qobject_cast<EditorView*>(view))
            editor->sceneChanged();
    }
}

EditorView* EditorWorkspace::openEditorView(EditorDocument* document, EditorView* viewToCopy)
{
    auto it = m_documentToViewMap.find(document);
    if (it == m_documentToViewMap.end())
        return nullptr;
    auto* view = new EditorView(*document, it->second.textures);
    if (viewToCopy)
        view->copyViewSettings(*viewToCopy);
    m_undoGroup->addStack(&document->undoStack());
    const bool maximized = m_area->activeSubWindow() && m_area->activeSubWindow()->isMaximized();
    QMdiSubWindow* window = m_area->addSubWindow(view);
    window->setWindowIcon(QIcon(QStringLiteral(":/icons/window16.png")));
    window->setWindowTitle(displayName(*document));
    view->setCloseGuard([this](DocumentView* v) { return confirmClose(v); });
    connect(view, &DocumentView::documentViewClosing, this, &EditorWorkspace::documentViewClosing);
    connect(view, &EditorView::openPlayerView, this, &EditorWorkspace::openPlayerView);
    it->second.views.append(view);
    if (maximized || m_area->subWindowList().size() == 1)
        window->showMaximized();
    else
        window->show();
    m_area->setActiveSubWindow(window);
    const QString name = document->filePath().isEmpty() ? displayName(*document) : document->filePath();
    plaxLog(LOG_INFO, "%d views now open for file '%s'", int(it->second.views.size()), qPrintable(name));
    plaxLog(LOG_INFO, tr("Opened editor view of '%1'").arg(name));
    updateWindowTitles();
    emit editorViewOpened(view);
    return view;
}

PlayerView* EditorWorkspace::openPlayerView(EditorView* from)
{
    if (!from)
        return nullptr;
    EditorDocument* document = &from->document();
    auto it = m_documentToViewMap.find(document);
    if (it == m_documentToViewMap.end())
        return nullptr;
    if (openAppSettings()->value(QStringLiteral("workspace/reuseexistingplayerviews"), false).toBool()) {
        for (DocumentView* open : it->second.views) {
            if (auto* player = qobject_cast<PlayerView*>(open)) {
                if (auto* window = qobject_cast<QMdiSubWindow*>(player->parentWidget()))
                    m_area->setActiveSubWindow(window);
                player->reload();
                return player;
            }
        }
    }
    auto* view = new PlayerView(*document, it->second.textures);
    view->setView(from->camera().center, from->camera().height);
    const bool maximized = m_area->activeSubWindow() && m_area->activeSubWindow()->isMaximized();
    QMdiSubWindow* window = m_area->addSubWindow(view);
    window->setWindowIcon(QIcon(QStringLiteral(":/icons/window16greenoff.png")));
    window->setWindowTitle(displayName(*document));
    view->setCloseGuard([this](DocumentView* v) { return confirmClose(v); });
    connect(view, &DocumentView::documentViewClosing, this, &EditorWorkspace::documentViewClosing);
    it->second.views.append(view);
    if (maximized)
        window->showMaximized();
    else
        window->show();
    m_area->setActiveSubWindow(window);
    view->setFocus();
    const QString name = document->filePath().isEmpty() ? displayName(*document) : document->filePath();
    plaxLog(LOG_INFO, "%d views now open for file '%s'", int(it->second.views.size()), qPrintable(name));
    plaxLog(LOG_INFO, tr("Opened player view of '%1'").arg(name));
    updateWindowTitles();
    emit playerViewOpened(view);
    return view;
}

bool EditorWorkspace::confirmClose(DocumentView* view)
{
    EditorDocument* document = &view->document();
    if (views(document).size() > 1 || !document->isModified())
        return true;
    const auto answer = QMessageBox::question(
        m_dialogParent, tr("Unsaved document"), tr("Save changes to '%1' before closing?").arg(displayName(*document)),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::Discard)
        return true;
    if (document->filePath().isEmpty()) {
        // The main window offers "Save as" for new scenes; here the user must save first.
        showError(tr("'%1' has no file yet: save it with Save As before closing.").arg(displayName(*document)));
        return false;
    }
    return saveDocument(document);
}

void EditorWorkspace::documentViewClosing(DocumentView* view)
{
    EditorDocument* document = &view->document();
    auto it = m_documentToViewMap.find(document);
    Q_ASSERT_X(it != m_documentToViewMap.end(), "documentViewClosing", "it != m_documentToViewMap.end()");
    if (it == m_documentToViewMap.end())
        return;
    it->second.views.removeAll(view);
    const QString name = document->filePath().isEmpty() ? displayName(*document) : document->filePath();
    plaxLog(LOG_INFO, "%d views now open for file '%s'", int(it->second.views.size()), qPrintable(name));
    plaxLog(LOG_INFO, tr("Closed %1 view of '%2'").arg(view->kindWord(), name));
    view->disconnect(this);
    if (it->second.views.isEmpty())
        destroyDocument(document);
}

void EditorWorkspace::destroyDocument(EditorDocument* document)
{
    emit documentClosing(document);
    if (m_active == document) {
        m_active = nullptr;
        emit activeDocumentChanged(nullptr);
    }
    m_undoGroup->removeStack(&document->undoStack());
    m_order.removeAll(document);
    auto it = m_documentToViewMap.find(document);
    // Instances release their object documents before the scene goes.
    it->second.objects.reset();
    m_documentToViewMap.erase(it);
}

bool EditorWorkspace::saveDocument(EditorDocument* document, const QString& path)
{
    if (!document)
        return false;
    const QString target = path.isEmpty() ? document->filePath() : QFileInfo(path).absoluteFilePath();
    if (target.isEmpty())
        return false;
    if (!document->save(target)) {
        showError(tr("Could not save '%1'. The file on disk was not changed.").arg(target));
        return false;
    }
    plaxLog(LOG_INFO, "Saved '%s'", qPrintable(target));
    emit documentSaved(document);
    emit recentFilesChanged(RecentFiles::add(target));
    updateWindowTitles();
    return true;
}

bool EditorWorkspace::reopenActive(bool confirm)
{
    EditorDocument* document = activeDocument();
    if (!document || document->filePath().isEmpty())
        return false;
    // Nothing is lost by reloading a document that is its file.
    if (confirm && document->isModified()) {
        const auto answer = QMessageBox::question(
            m_dialogParent, tr("Re-open file"),
            tr("This will cause all unsaved changes to be lost.\nDo you wish to continue?"),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return false;
    }
    OpenDocument& entry = m_documentToViewMap.at(document);
    entry.objects.reset();
    const QString path = document->filePath();
    if (!document->load(path)) {
        plaxLog(LOG_ERROR, "Failed to reopen file '%s'", qPrintable(path));
        attachObjects(entry);
        return false;
    }
    plaxLog(LOG_INFO, "Reopened '%s'", qPrintable(path));
    document->scripting().documentScripts().prepare();
    for (const auto& image : document->world().images())
        refreshImageData(*image, path);
    attachObjects(entry);
    for (DocumentView* view : entry.views) {
        if (auto* editor = qobject_cast<EditorView*>(view))
            editor->sceneChanged();
    }
    emit documentReloaded(document);
    updateWindowTitles();
    return true;
}

bool EditorWorkspace::closeAll()
{
    for (QMdiSubWindow* window : m_area->subWindowList()) {
        if (!window->close())
            return false;
    }
    return true;
}

void EditorWorkspace::updateWindowTitles()
{
    auto* stack = qobject_cast<QUndoStack*>(sender());
    for (QMdiSubWindow* window : m_area->subWindowList()) {
        auto* view = qobject_cast<DocumentView*>(window->widget());
        if (!view || (stack && &view->document().undoStack() != stack))
            continue;
        const EditorDocument& document = view->document();
        window->setWindowTitle(QStringLiteral("%1%2").arg(displayName(document),
                                                          document.isModified() ? QStringLiteral("*") : QString()));
    }
}

void EditorWorkspace::openRecentFile()
{
    if (auto* action = qobject_cast<QAction*>(sender()))
        openFile(action->data().toString());
}

void EditorWorkspace::onSubWindowActivated(QMdiSubWindow* window)
{
    auto* view = window ? qobject_cast<DocumentView*>(window->widget()) : nullptr;
    EditorDocument* document = view ? &view->document() : nullptr;
    if (document)
        m_undoGroup->setActiveStack(&document->undoStack());
    else if (m_area->subWindowList().isEmpty())
        m_undoGroup->setActiveStack(nullptr);
    if (document == m_active || (!document && !m_area->subWindowList().isEmpty()))
        return;
    m_active = document;
    emit activeDocumentChanged(document);
}
