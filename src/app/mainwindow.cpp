#include "app/mainwindow.h"

#include "app/actionicons.h"
#include "app/autosave.h"
#include "app/docklayout.h"
#include "app/editactions.h"
#include "app/playeractions.h"
#include "app/editorworkspace.h"
#include "app/exportactions.h"
#include "app/recentfiles.h"
#include "app/scripttooling.h"
#include "base/log.h"
#include "base/notify.h"
#include "base/settings.h"
#include "base/version.h"
#include "document/editordocument.h"
#include "panels/customactionmenus.h"
#include "panels/itemstree.h"
#include "panels/messagelogpanel.h"
#include "panels/propertiespanel.h"
#include "script/scriptoutput.h"
#include "views/editorview.h"
#include "views/playerview.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUndoGroup>
#include <QUndoView>

namespace
{
const char* kOpenFilter = "Readable files (*.plax *.json);;P.L.A.X files (*.plax files);;JSON files (*.json);;All files (*.*)";
const char* kLastOpenDocuments = "workspace/lastopendocuments";

bool isSceneFile(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("plax") || suffix == QLatin1String("json");
}

EditorView* editorViewOf(QMdiArea* area)
{
    QMdiSubWindow* window = area->activeSubWindow();
    return window ? qobject_cast<EditorView*>(window->widget()) : nullptr;
}
} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_mdiArea(new QMdiArea(this)), m_logPanel(new MessageLogPanel(this)),
      m_scriptOutput(new QPlainTextEdit(this)), m_itemsTree(new ItemsTree(this)),
      m_properties(new PropertiesPanel(this)), m_undoView(new QUndoView(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("P.L.A.X"));
    setAcceptDrops(true);
    m_mdiArea->setObjectName(QStringLiteral("DocumentArea"));
    setCentralWidget(m_mdiArea);
    m_workspace = new EditorWorkspace(m_mdiArea, this);
    m_autoSaver = new AutoSaver(m_workspace);
    m_editActions = new EditActions(this, m_workspace);
    m_playerActions = new PlayerActions(this, m_workspace);
    m_exportActions = new ExportActions(this, m_workspace);
    connect(m_exportActions, &ExportActions::statusMessage, this,
            [this](const QString& text, int timeoutMs) { statusBar()->showMessage(text, timeoutMs); });
    connect(m_playerActions, &PlayerActions::statusMessage, this,
            [this](const QString& text, int timeoutMs) { statusBar()->showMessage(text, timeoutMs); });
    connect(m_workspace, &EditorWorkspace::playerViewOpened, m_playerActions, &PlayerActions::watch);
    connect(m_editActions, &EditActions::statusMessage, this,
            [this](const QString& text, int timeoutMs) { statusBar()->showMessage(text, timeoutMs); });
    connect(m_workspace, &EditorWorkspace::editorViewOpened, this, &MainWindow::connectEditorView);

    createPanels();
    createMenus();
    installNotifier();
    m_scriptTooling = new ScriptTooling(this);
    connect(m_scriptTooling, &ScriptTooling::preferencesChanged, this, [this] {
        m_autoSaver->settingsChanged();
        m_logPanel->followPreferences();
        for (QMdiSubWindow* window : m_mdiArea->subWindowList()) {
            if (auto* view = qobject_cast<EditorView*>(window->widget()))
                view->reloadSettings();
        }
    });

    // Last in the View menu, after every dock's entry.
    m_viewMenu->addSeparator();
    QAction* reset = m_viewMenu->addAction(tr("&Reset layout"));
    reset->setObjectName(QStringLiteral("actionResetLayout"));
    reset->setStatusTip(tr("Put the panels and toolbars back where they were at the first start"));
    connect(reset, &QAction::triggered, this, &MainWindow::resetLayout);

    connect(m_workspace, &EditorWorkspace::activeDocumentChanged, this, &MainWindow::activeDocumentChanged);
    connect(m_workspace, &EditorWorkspace::recentFilesChanged, this, &MainWindow::updateRecentFilesMenu);
    connect(m_workspace, &EditorWorkspace::documentReloaded, this, [this](EditorDocument* document) {
        if (document == m_workspace->activeDocument())
            activeDocumentChanged(document);
    });
    connect(m_mdiArea, &QMdiArea::subWindowActivated, this, [this] {
        updateDockTitles();
        m_editActions->update();
        m_playerActions->update();
        m_exportActions->update();
    });
    updateRecentFilesMenu(RecentFiles::load());
    activeDocumentChanged(nullptr);

    restoreSettings();
}

MainWindow::~MainWindow()
{
    Log::setListener({});
    UserNotifier::setHandlers({}, {});
    ScriptOutput::setSink({});
    // Views go before the workspace's documents.
    delete m_workspace;
}

void MainWindow::installNotifier()
{
    Log::setListener([this](int level, const QString& text) {
        QMetaObject::invokeMethod(this, "appendLogMessage", Qt::AutoConnection, Q_ARG(int, level),
                                  Q_ARG(QString, text));
    });
    UserNotifier::setHandlers(
        [this](UserNotifier::Kind kind, const QString& title, const QString& text) {
            if (m_workspace->isCollectingErrors() && kind != UserNotifier::Kind::Information) {
                m_workspace->collectError(text);
                return;
            }
            switch (kind) {
            case UserNotifier::Kind::Information: QMessageBox::information(this, title, text); break;
            case UserNotifier::Kind::Warning: QMessageBox::warning(this, title, text); break;
            case UserNotifier::Kind::Critical: QMessageBox::critical(this, title, text); break;
            }
        },
        [this](const QString& title, const QString& text) {
            return QMessageBox::question(this, title, text) == QMessageBox::Yes;
        });
    ScriptOutput::setSink([this](const QList<ScriptOutputLine>& lines) {
        for (const ScriptOutputLine& line : lines) {
            m_scriptOutput->appendHtml(QStringLiteral("<span style=\"color:%1\">%2</span>")
                                           .arg(line.colour.name(), line.text.toHtmlEscaped()));
        }
    });
    auto* flushTimer = new QTimer(this);
    connect(flushTimer, &QTimer::timeout, this, [] { ScriptOutput::flush(); });
    flushTimer->start(200);
}

QDockWidget* MainWindow::addPanel(QWidget* widget, const QString& objectName, Qt::DockWidgetArea area,
                                  const QKeySequence& key)
{
    auto* dock = new QDockWidget(this);
    dock->setObjectName(objectName);
    dock->setWidget(widget);
    addDockWidget(area, dock);
    QAction* toggle = dock->toggleViewAction();
    toggle->setObjectName(objectName + QStringLiteral("Toggle"));
    toggle->setShortcut(key);
    return dock;
}

void MainWindow::createPanels()
{
    m_scriptOutput->setReadOnly(true);
    m_scriptOutput->setObjectName(QStringLiteral("ScriptOutput"));
    m_scriptOutput->setMaximumBlockCount(5000);
    m_undoView->setGroup(m_workspace->undoGroup());
    m_undoView->setObjectName(QStringLiteral("UndoView"));

    m_itemsDock = addPanel(m_itemsTree, QStringLiteral("ItemsDock"), Qt::LeftDockWidgetArea, QKeySequence(Qt::Key_F2));
    m_propertiesDock =
        addPanel(m_properties, QStringLiteral("PropertiesDock"), Qt::RightDockWidgetArea, QKeySequence(Qt::Key_F3));
    m_undoDock = addPanel(m_undoView, QStringLiteral("UndoDock"), Qt::RightDockWidgetArea, QKeySequence(Qt::Key_F6));
    m_scriptDock =
        addPanel(m_scriptOutput, QStringLiteral("ScriptDock"), Qt::BottomDockWidgetArea, QKeySequence(Qt::Key_F4));
    m_logDock = addPanel(m_logPanel, QStringLiteral("MessageLogDock"), Qt::BottomDockWidgetArea, QKeySequence(Qt::Key_F8));
    tabifyDockWidget(m_scriptDock, m_logDock);
    m_undoDock->setWindowTitle(tr("Undo stack"));
    updateDockTitles();
}

void MainWindow::createMenus()
{
    const auto make = [this](QMenu* menu, const QString& name, const QString& text, const QKeySequence& key,
                             auto slot) {
        QAction* action = menu->addAction(text);
        action->setObjectName(name);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };

    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* newAction = make(file, "actionNew", tr("&New scene"), QKeySequence::New, [this] { m_workspace->newScene(); });
    QAction* openAction = make(file, "actionOpen", tr("&Open..."), QKeySequence::Open, [this] { openFileDialog(); });
    m_recentMenu = file->addMenu(tr("Open &recent"));
    m_recentMenu->setObjectName(QStringLiteral("RecentFilesMenu"));
    make(file, "actionReopen", tr("Re-&open"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R),
         [this] { m_workspace->reopenActive(true); });
    file->addSeparator();
    QAction* saveAction = make(file, "actionSave", tr("&Save"), QKeySequence::Save, [this] { save(); });
    newAction->setIcon(ActionIcons::themed(QStringLiteral("document-new"), QStringLiteral("document-new")));
    newAction->setStatusTip(tr("Start a new, empty scene"));
    openAction->setIcon(ActionIcons::themed(QStringLiteral("document-open"), QStringLiteral("document-open")));
    openAction->setStatusTip(tr("Open scene files"));
    saveAction->setIcon(ActionIcons::themed(QStringLiteral("document-save"), QStringLiteral("document-save")));
    saveAction->setStatusTip(tr("Save the scene of the active view"));
    make(file, "actionSaveAs", tr("Save &as..."), QKeySequence::SaveAs, [this] { saveAs(); });
    file->addSeparator();
    m_exportActions->populateFile(file);
    file->addSeparator();
    make(file, "actionCloseView", tr("&Close view"), QKeySequence(Qt::CTRL | Qt::Key_W),
         [this] { m_mdiArea->closeActiveSubWindow(); });
    make(file, "actionExit", tr("E&xit"), QKeySequence::Quit, [this] { close(); });

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    QAction* undo = m_workspace->undoGroup()->createUndoAction(this, tr("&Undo"));
    undo->setObjectName(QStringLiteral("actionUndo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = m_workspace->undoGroup()->createRedoAction(this, tr("&Redo"));
    redo->setObjectName(QStringLiteral("actionRedo"));
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    undo->setIcon(ActionIcons::themed(QStringLiteral("edit-undo"), QStringLiteral("edit-undo")));
    undo->setStatusTip(tr("Take back the last change"));
    redo->setIcon(ActionIcons::themed(QStringLiteral("edit-redo"), QStringLiteral("edit-redo")));
    redo->setStatusTip(tr("Make the change taken back last again"));
    edit->addAction(undo);
    edit->addAction(redo);

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    make(m_viewMenu, "actionZoomToFit", tr("Zoom to &fit"), QKeySequence(Qt::Key_Home), [this] {
        if (EditorView* view = editorViewOf(m_mdiArea))
            view->zoomToFit();
    });
    make(m_viewMenu, "actionNewView", tr("New &editor view"), QKeySequence(Qt::CTRL | Qt::Key_E), [this] {
        if (EditorView* view = editorViewOf(m_mdiArea))
            m_workspace->openEditorView(&view->document(), view);
    });
    QAction* labels = make(m_viewMenu, "actionShowLabels", tr("Show item &labels"), QKeySequence(Qt::CTRL | Qt::Key_L),
                           [this](bool on) {
                               openAppSettings()->setValue(QLatin1String(EditorView::kShowLabelsKey), on);
                               for (QMdiSubWindow* window : m_mdiArea->subWindowList()) {
                                   if (auto* view = qobject_cast<EditorView*>(window->widget()))
                                       view->setShowLabels(on);
                               }
                           });
    labels->setCheckable(true);
    labels->setChecked(openAppSettings()->value(QLatin1String(EditorView::kShowLabelsKey), true).toBool());
    m_viewMenu->addSeparator();
    for (QDockWidget* dock : {m_itemsDock, m_propertiesDock, m_scriptDock, m_undoDock, m_logDock})
        m_viewMenu->addAction(dock->toggleViewAction());
    auto* toolbar = addToolBar(tr("File"));
    toolbar->setObjectName(QStringLiteral("FileToolBar"));
    toolbar->addAction(newAction);
    toolbar->addAction(openAction);
    toolbar->addAction(saveAction);
    toolbar->addSeparator();
    toolbar->addAction(undo);
    toolbar->addAction(redo);
    QAction* toolbarToggle = toolbar->toggleViewAction();
    toolbarToggle->setObjectName(QStringLiteral("FileToolBarToggle"));
    toolbarToggle->setShortcut(QKeySequence(Qt::Key_F9));
    m_viewMenu->addAction(toolbarToggle);

    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    m_modeToolBar = addToolBar(tr("Edit modes"));
    m_modeToolBar->setObjectName(QStringLiteral("EditModesToolBar"));
    m_editActions->populate(edit, tools, m_modeToolBar);
    tools->addSeparator();
    m_exportActions->populateTools(tools);
    QMenu* player = tools->addMenu(tr("&Player"));
    player->setObjectName(QStringLiteral("PlayerMenu"));
    QToolBar* playerBar = addToolBar(tr("Player"));
    playerBar->setObjectName(QStringLiteral("PlayerToolBar"));
    m_playerActions->populate(player, playerBar);
    for (QToolBar* bar : {toolbar, m_modeToolBar, playerBar}) {
        bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
        ActionIcons::nameShortcutsInToolTips(*bar);
    }
    QAction* modesToggle = m_modeToolBar->toggleViewAction();
    modesToggle->setObjectName(QStringLiteral("EditModesToolBarToggle"));
    modesToggle->setShortcut(QKeySequence(Qt::Key_F10));
    m_viewMenu->addAction(modesToggle);
    QAction* playerToggle = playerBar->toggleViewAction();
    playerToggle->setObjectName(QStringLiteral("PlayerToolBarToggle"));
    playerToggle->setShortcut(QKeySequence(Qt::Key_F11));
    m_viewMenu->addAction(playerToggle);

    QMenu* window = menuBar()->addMenu(tr("&Window"));
    make(window, "actionTile", tr("&Tile"), QKeySequence(), [this] { m_mdiArea->tileSubWindows(); });
    make(window, "actionCascade", tr("&Cascade"), QKeySequence(), [this] { m_mdiArea->cascadeSubWindows(); });
    make(window, "actionNextWindow", tr("&Next"), QKeySequence::NextChild, [this] { m_mdiArea->activateNextSubWindow(); });
    make(window, "actionPreviousWindow", tr("&Previous"), QKeySequence::PreviousChild,
         [this] { m_mdiArea->activatePreviousSubWindow(); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    make(help, "actionAbout", tr("&About P.L.A.X"), QKeySequence(), [this] {
        QMessageBox::about(this, tr("About P.L.A.X"),
                           tr("P.L.A.X %1.%2.%3\nAn editor for Box2D scenes.")
                               .arg(Version::kMajor)
                               .arg(Version::kMinor)
                               .arg(Version::kPatch));
    });
}

QAction* MainWindow::action(const QString& objectName) const
{
    return findChild<QAction*>(objectName);
}

QString MainWindow::logText() const
{
    return m_logPanel->allText();
}

void MainWindow::appendLogMessage(int level, const QString& text)
{
    if (level >= LOG_ERROR && m_workspace && m_workspace->isCollectingErrors())
        m_workspace->collectError(text);
    m_logPanel->append(level, text);
}

void MainWindow::activeDocumentChanged(EditorDocument* document)
{
    m_itemsTree->setDocument(document);
    m_properties->setDocument(document);
    updateDockTitles();
    disconnect(m_stackConnection);
    if (document) {
        m_stackConnection =
            connect(&document->undoStack(), &QUndoStack::indexChanged, m_editActions, &EditActions::update);
    }
    m_editActions->update();
    m_playerActions->update();
    m_exportActions->update();
}

void MainWindow::connectEditorView(EditorView* view)
{
    connect(view, &EditorView::statusMessage, this, [this](const QString& text, int timeoutMs) {
        if (text.isEmpty())
            statusBar()->clearMessage();
        else
            statusBar()->showMessage(text, timeoutMs);
    });
    connect(view, &EditorView::contextMenuRequested, this,
            [this, view](const QPoint& globalPos, Vec2 world) { showContextMenu(view, globalPos, world); });
    connect(view, &EditorView::sceneFilesDropped, this, [this](const QStringList& files) {
        for (const QString& file : files)
            m_workspace->openFile(file);
    });
    connect(view, &EditorView::editModeChanged, m_editActions, &EditActions::update);
}

void MainWindow::showContextMenu(EditorView* view, const QPoint& globalPos, Vec2 world)
{
    if (m_workspace->activeView() != view)
        return;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("EditorContextMenu"));
    menu.setAccessibleName(tr("Editor view menu"));
    m_editActions->fillContextMenu(&menu, world);
    // The custom action menus follow the editor's own entries.
    menu.addSeparator();
    plaxLog(LOG_DEBUG, "buildCustomMenu coming from EditorView::mouseUp");
    if (CustomActionMenus* custom = m_scriptTooling->customMenus())
        custom->buildCustomMenu(&menu);
    menu.exec(globalPos);
}

void MainWindow::updateDockTitles()
{
    DocumentView* view = m_workspace->activeView();
    QString suffix;
    if (view) {
        if (auto* window = qobject_cast<QMdiSubWindow*>(view->parentWidget()))
            suffix = QStringLiteral(" - %1").arg(window->windowTitle());
    }
    const auto title = [&suffix](QDockWidget* dock, const QString& text) {
        const QString key = dock->toggleViewAction()->shortcut().toString(QKeySequence::NativeText);
        dock->setWindowTitle(text.arg(key) + suffix);
    };
    title(m_itemsDock, tr("Items (%1)"));
    title(m_propertiesDock, tr("Properties (%1)"));
    title(m_scriptDock, tr("Script (%1)"));
    m_logDock->setWindowTitle(
        tr("Message log (%1)").arg(m_logDock->toggleViewAction()->shortcut().toString(QKeySequence::NativeText)));
}

void MainWindow::updateRecentFilesMenu(const QStringList& files)
{
    m_recentMenu->clear();
    for (int i = 0; i < files.size(); ++i) {
        QAction* action = m_recentMenu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(files[i]));
        action->setData(files[i]);
        connect(action, &QAction::triggered, m_workspace, &EditorWorkspace::openRecentFile);
    }
    m_recentMenu->setEnabled(!files.isEmpty());
}

void MainWindow::openFileDialog()
{
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Open file"), QString(), QString::fromLatin1(kOpenFilter));
    for (const QString& file : files)
        m_workspace->openFile(file);
}

bool MainWindow::save()
{
    EditorDocument* document = m_workspace->activeDocument();
    if (!document)
        return false;
    if (document->filePath().isEmpty())
        return saveAs();
    return m_workspace->saveDocument(document);
}

bool MainWindow::saveAs()
{
    EditorDocument* document = m_workspace->activeDocument();
    if (!document)
        return false;
    QString path = QFileDialog::getSaveFileName(this, tr("Save as"), document->filePath(),
                                                tr("P.L.A.X files (*.plax)"));
    if (path.isEmpty())
        return false;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".plax");
    const bool saved = m_workspace->saveDocument(document, path);
    m_workspace->updateWindowTitles();
    updateDockTitles();
    return saved;
}

QStringList MainWindow::openDocumentPaths() const
{
    QStringList paths;
    for (EditorDocument* document : m_workspace->documents()) {
        if (!document->filePath().isEmpty())
            paths.append(document->filePath());
    }
    return paths;
}

void MainWindow::openStartupDocuments(const QStringList& files)
{
    QStringList paths = files;
    const QString fromEnvironment = qEnvironmentVariable("PLAX_OPEN");
    auto settings = openAppSettings();
    // Files named on the command line replace both other sources.
    if (paths.isEmpty() && !fromEnvironment.isEmpty())
        paths = fromEnvironment.split(QDir::listSeparator(), Qt::SkipEmptyParts);
    else if (paths.isEmpty() && settings->value(QLatin1String(SettingsKeys::kReopenRecentDocuments), true).toBool())
        paths = settings->value(QLatin1String(kLastOpenDocuments)).toStringList();
    for (const QString& path : paths) {
        if (QFileInfo::exists(path))
            m_workspace->openFile(path);
        else
            plaxLog(LOG_WARNING, QStringLiteral("Could not reopen '%1': the file is gone").arg(path));
    }

    const QList<AutoSaver::Recoverable> recoverable = AutoSaver::findRecoverable();
    if (recoverable.isEmpty())
        return;
    QStringList names;
    for (const AutoSaver::Recoverable& r : recoverable)
        names.append(r.originalPath.isEmpty() ? tr("(a new scene)") : r.originalPath);
    const auto answer = QMessageBox::question(
        this, tr("Recover documents"),
        tr("Unsaved changes of these documents were kept by autosave:\n%1\nWould you like to recover them?")
            .arg(names.join(QLatin1Char('\n'))),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    for (const AutoSaver::Recoverable& r : recoverable) {
        if (answer == QMessageBox::Yes)
            m_workspace->openRecovered(r.backupPath, r.originalPath);
        else {
            AutoSaver::discardBackup(r.backupPath);
        }
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const QStringList open = openDocumentPaths();
    if (!m_workspace->closeAll()) {
        event->ignore();
        return;
    }
    openAppSettings()->setValue(QLatin1String(kLastOpenDocuments), open);
    saveSettings();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile() && isSceneFile(url.toLocalFile())) {
            event->acceptProposedAction();
            return;
        }
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile() && isSceneFile(url.toLocalFile()))
            m_workspace->openFile(url.toLocalFile());
    }
    event->acceptProposedAction();
}

void MainWindow::restoreSettings()
{
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("mainwindow"));
    const QByteArray geometry = settings->value(QStringLiteral("geometry")).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry))
        placeOnScreen();
    const bool restored = restoreState(settings->value(QStringLiteral("savestate")).toByteArray(), 0);
    if (settings->value(QStringLiteral("maximized"), false).toBool())
        setWindowState(windowState() | Qt::WindowMaximized);
    settings->endGroup();
    if (!restored) {
        // A first start: the standard arrangement, sized once the window has its size.
        DockLayout::apply(*this);
        m_sizeDocksWhenShown = true;
    }
}

void MainWindow::placeOnScreen()
{
    // Most of the screen, centred: the scene view is the largest part of it.
    const QScreen* shownOn = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!shownOn)
        return;
    const QRect available = shownOn->availableGeometry();
    const QSize size(available.width() * 92 / 100, available.height() * 92 / 100);
    setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
}

void MainWindow::resetLayout()
{
    DockLayout::apply(*this);
    // The docks take their sizes when the layout has settled in the window.
    QTimer::singleShot(0, this, [this] { DockLayout::resize(*this); });
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!m_sizeDocksWhenShown)
        return;
    m_sizeDocksWhenShown = false;
    QTimer::singleShot(0, this, [this] { DockLayout::resize(*this); });
}

void MainWindow::saveSettings() const
{
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("mainwindow"));
    settings->setValue(QStringLiteral("geometry"), saveGeometry());
    settings->setValue(QStringLiteral("savestate"), saveState(0));
    settings->setValue(QStringLiteral("maximized"), isMaximized());
    settings->setValue(QStringLiteral("size"), size());
    settings->endGroup();
}
