#include "app/scripttooling.h"

#include "api/scriptqueries.h"
#include "app/actionicons.h"
#include "app/editorworkspace.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "engine/scriptoutput.h"
#include "engine/scriptstate.h"
#include "engine/scriptuihooks.h"
#include "panels/collisionfiltertable.h"
#include "panels/customactionmenus.h"
#include "panels/custompropertytable.h"
#include "panels/exportedpropertytable.h"
#include "panels/helpbrowser.h"
#include "panels/scripteditor.h"
#include "panels/scripteditorpanel.h"
#include "panels/scriptlibrary.h"
#include "panels/scriptquerydialogs.h"

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStatusBar>

#include <algorithm>

ScriptTooling::ScriptTooling(const ScriptToolingPlaces& places)
    : QObject(places.window), m_places(places), m_window(places.window),
      m_customMenus(new CustomActionMenus([workspace = places.workspace] { return workspace->activeDocument(); },
                                          QLatin1String(CustomActionMenuLoader::kDefaultBaseFolder), this))
{
    createDocks();
    installHooks();
    EditorWorkspace* workspace = m_places.workspace;
    connect(workspace, &EditorWorkspace::activeDocumentChanged, this, &ScriptTooling::activeDocumentChanged);
    connect(workspace, &EditorWorkspace::documentReloaded, this, [this, workspace](EditorDocument* document) {
        if (document == workspace->activeDocument()) {
            activeDocumentChanged(nullptr);
            activeDocumentChanged(document);
        }
    });
    // After a run its output (or its errors) comes to the front.
    connect(m_editor, &ScriptEditorPanel::runFinished, this, [this] {
        if (QDockWidget* output = m_places.outputDock; output && output->isVisible())
            output->raise();
    });
    connect(m_customMenus, &CustomActionMenus::statusMessage, this, [this](const QString& text) {
        if (text.isEmpty())
            m_window->statusBar()->clearMessage();
        else
            m_window->statusBar()->showMessage(text);
    });
    activeDocumentChanged(workspace->activeDocument());
}

ScriptTooling::~ScriptTooling()
{
    ScriptUi::setHooks({});
    ScriptQueryHooks::install({});
}

QDockWidget* ScriptTooling::addDock(QWidget* widget, const QString& objectName, const QString& title,
                                    Qt::DockWidgetArea area, const QKeySequence& key)
{
    auto* dock = new QDockWidget(m_window);
    dock->hide();
    dock->setObjectName(objectName);
    dock->setAccessibleName(title.arg(QString()).remove(QStringLiteral(" ()")));
    dock->setWidget(widget);
    // Side by side along the bottom, one above the other at the sides.
    m_window->addDockWidget(area, dock, area == Qt::BottomDockWidgetArea ? Qt::Horizontal : Qt::Vertical);
    QAction* toggle = dock->toggleViewAction();
    toggle->setObjectName(objectName + QStringLiteral("Toggle"));
    toggle->setShortcut(key);
    dock->setWindowTitle(title.arg(key.toString(QKeySequence::NativeText)));
    m_docks.append(dock);
    return dock;
}

void ScriptTooling::createDocks()
{
    m_library = new ScriptLibrary(m_window);
    m_editor = new ScriptEditorPanel(m_window);
    m_editor->setLibrary(m_library);
    m_help = new HelpBrowser(m_window);
    m_customProperties = new CustomPropertyTable(m_window);
    m_collisionFilter = new CollisionFilterTable(m_window);
    m_exportedProperties = new ExportedPropertyTable(m_window);

    // Where they open, and which show on a first start, is the main
    // window's standard layout (DockLayout); a saved window state shows
    // them as they were left.
    m_editorDock = addDock(m_editor, QStringLiteral("ScriptEditorDock"), tr("Script editor (%1)"), Qt::BottomDockWidgetArea,
            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    m_libraryDock = addDock(m_library, QStringLiteral("ScriptLibraryDock"), tr("Script library (%1)"), Qt::LeftDockWidgetArea,
            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L));
    m_helpDock = addDock(m_help, QStringLiteral("HelpDock"), tr("P.L.A.X help (%1)"), Qt::RightDockWidgetArea,
                         QKeySequence(Qt::Key_F1));
    QDockWidget* custom = addDock(m_customProperties, QStringLiteral("CustomPropertiesDock"),
                                  tr("Custom properties (%1)"), Qt::RightDockWidgetArea,
                                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U));
    QDockWidget* collision = addDock(m_collisionFilter, QStringLiteral("CollisionFilterDock"),
                                     tr("Collision filter (%1)"), Qt::RightDockWidgetArea,
                                     QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K));
    QDockWidget* exported = addDock(m_exportedProperties, QStringLiteral("ExportedPropertiesDock"),
                                    tr("Exported properties (%1)"), Qt::RightDockWidgetArea,
                                    QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_X));
    // The script editor sits beside the script output; the tables share one place.
    m_window->tabifyDockWidget(custom, collision);
    m_window->tabifyDockWidget(collision, exported);
    m_tableAndHelpDocks = {custom, collision, exported, m_helpDock};
}

void ScriptTooling::populate(QMenu* view, QMenu* before, QMenu* help, QAction* about)
{
    QMenuBar* bar = m_window->menuBar();
    QAction* beforeAction = before ? before->menuAction() : nullptr;

    m_customMenu = new QMenu(tr("&Actions"), m_window);
    m_customMenu->setObjectName(QStringLiteral("CustomMenu"));
    m_customMenu->setAccessibleName(tr("Custom actions"));
    m_customMenu->setToolTipsVisible(true);
    bar->insertMenu(beforeAction, m_customMenu);
    connect(m_customMenu, &QMenu::aboutToShow, this, &ScriptTooling::fillCustomMenu);
    m_layoutMenu = new QMenu(tr("Action menu &layout"), m_window);
    m_layoutMenu->setObjectName(QStringLiteral("ActionMenuLayoutMenu"));
    connect(m_layoutMenu, &QMenu::aboutToShow, this, [this] { m_customMenus->buildLayoutMenu(m_layoutMenu); });
    fillCustomMenu();

    QMenu* scripts = new QMenu(tr("&Scripts"), m_window);
    scripts->setObjectName(QStringLiteral("ScriptsMenu"));
    bar->insertMenu(beforeAction, scripts);
    scripts->addAction(m_editor->runAction());
    scripts->addAction(m_editor->runSelectionAction());
    scripts->addAction(m_editor->abortAction());
    scripts->addAction(m_editor->compileAction());
    scripts->addSeparator();
    for (QAction* action : m_library->fileActions()) {
        action->setShortcutContext(Qt::WindowShortcut);
        scripts->addAction(action);
    }
    for (QAction* action : {m_editor->runAction(), m_editor->runSelectionAction(), m_editor->abortAction(),
                            m_editor->compileAction()})
        action->setShortcutContext(Qt::WindowShortcut);

    view->addSeparator();
    for (QDockWidget* dock : m_docks)
        view->addAction(dock->toggleViewAction());

    QAction* showHelp = ActionIcons::makeAction(m_window, "actionHelp", tr("P.L.A.X &help"), QKeySequence(),
                                                tr("The script reference and how to use scripts"));
    connect(showHelp, &QAction::triggered, this, &ScriptTooling::showHelp);
    help->insertAction(about, showHelp);
}

void ScriptTooling::showHelp()
{
    QDockWidget* dock = m_helpDock;
    // Hidden help opens as a window of reading size over the editor
    // (squeezed among the side docks it would show a few lines);
    // dragged back into the window it stays docked.
    if (!dock->isVisible() && !dock->isFloating()) {
        dock->setFloating(true);
        const QSize size(std::min(760, m_window->width() - 80), std::min(680, m_window->height() - 80));
        dock->resize(size);
        dock->move(m_window->geometry().center() - QPoint(size.width() / 2, size.height() / 2));
    }
    dock->show();
    dock->raise();
    m_help->searchField()->setFocus();
}

void ScriptTooling::fillCustomMenu()
{
    m_customMenu->clear();
    m_customMenus->buildCustomMenu(m_customMenu);
    m_customMenu->addSeparator();
    m_customMenu->addMenu(m_layoutMenu);
    QAction* reload = m_customMenu->addAction(tr("&Reload action menus"));
    reload->setObjectName(QStringLiteral("actionReloadActionMenus"));
    reload->setToolTip(tr("Read the layouts in config/actionMenu again"));
    connect(reload, &QAction::triggered, this, [this] {
        m_customMenus->clearCustomMenuActions();
        m_customMenus->loadCustomMenuActions();
    });
}

void ScriptTooling::installHooks()
{
    ScriptUiHooks hooks;
    hooks.showBusy = [this](const QString& text) {
        m_window->statusBar()->showMessage(text);
        if (m_editor->isRunning())
            m_editor->setBusy(true, text);
    };
    hooks.hideBusy = [this] { m_window->statusBar()->clearMessage(); };
    QPlainTextEdit* output = m_places.output;
    hooks.clearOutput = [output] { output->clear(); };
    QMdiArea* sceneArea = m_places.sceneArea;
    hooks.setRepaintSuppressed = [sceneArea](bool suppressed) { sceneArea->setUpdatesEnabled(!suppressed); };
    ScriptEditor* editor = m_editor->editor();
    hooks.markErrorRow = [editor](int row) {
        QMetaObject::invokeMethod(editor, [editor, row] { editor->markErrorRow(row); }, Qt::QueuedConnection);
    };
    ScriptLibrary* library = m_library;
    hooks.currentLibraryScriptFile = [library] { return library->currentFile(); };
    ScriptUi::setHooks(std::move(hooks));
    installScriptQueryDialogs(m_window);

    // While the live script builds, what it logs belongs in the script output.
    ScriptEditorPanel* panel = m_editor;
    QMainWindow* window = m_window;
    const auto appendLog = m_places.appendLog;
    Log::setListener([panel, window, appendLog](int level, const QString& text) {
        panel->noteLogMessage(level, text);
        // The engine's "Compiling void main()" only names where errors were
        // found; it stays in the log.
        static const QRegularExpression compilingNote(QStringLiteral("^Line -?\\d+, col \\d+: Compiling "));
        if (ScriptState::scriptOutputFlag() == 1 && level >= LOG_WARNING && !compilingNote.match(text).hasMatch()) {
            ScriptOutput::append(level >= LOG_ERROR ? QColor(200, 0, 0) : QColor(160, 110, 0), text);
            return;
        }
        QMetaObject::invokeMethod(window, [appendLog, level, text] { appendLog(level, text); }, Qt::AutoConnection);
    });
}

void ScriptTooling::activeDocumentChanged(EditorDocument* document)
{
    m_editor->setDocument(document);
    m_customProperties->setDocument(document);
    m_collisionFilter->setDocument(document);
    m_exportedProperties->setDocument(document);
}
