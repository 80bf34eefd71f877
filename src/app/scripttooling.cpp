#include "app/scripttooling.h"

#include "app/editorworkspace.h"
#include "app/mainwindow.h"
#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "panels/aboutdialog.h"
#include "panels/collisionfiltertable.h"
#include "panels/customactionmenus.h"
#include "panels/custompropertytable.h"
#include "panels/exportedpropertytable.h"
#include "panels/helpbrowser.h"
#include "panels/preferencesdialog.h"
#include "panels/scripteditor.h"
#include "panels/scripteditorpanel.h"
#include "panels/scriptlibrary.h"
#include "panels/scriptquerydialogs.h"
#include "panels/tipsdialog.h"
#include "panels/updatecheck.h"
#include "script/scriptoutput.h"
#include "script/scriptqueries.h"
#include "script/scriptstate.h"
#include "script/scriptuihooks.h"

#include <QAction>
#include <QDesktopServices>
#include <QDockWidget>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTimer>
#include <QWindow>

#include <algorithm>

namespace
{
QMenu* menuOf(QAction* action)
{
    if (!action)
        return nullptr;
    for (QObject* object : action->associatedObjects()) {
        if (auto* menu = qobject_cast<QMenu*>(object))
            return menu;
    }
    return nullptr;
}

QAction* makeAction(QObject* parent, const char* name, const QString& text, const QKeySequence& key,
                    const QString& tip)
{
    auto* action = new QAction(text, parent);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setToolTip(key.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
    action->setStatusTip(tip);
    return action;
}
} // namespace

ScriptTooling::ScriptTooling(MainWindow* window)
    : QObject(window), m_window(window),
      m_customMenus(new CustomActionMenus([window] { return window->workspace()->activeDocument(); },
                                          QLatin1String(CustomActionMenuLoader::kDefaultBaseFolder), this)),
      m_updateCheck(new UpdateCheck(this))
{
    setObjectName(QStringLiteral("ScriptTooling"));
    createDocks();
    createMenus();
    installHooks();
    connect(window->workspace(), &EditorWorkspace::activeDocumentChanged, this, &ScriptTooling::activeDocumentChanged);
    connect(window->workspace(), &EditorWorkspace::documentReloaded, this, [this](EditorDocument* document) {
        if (document == m_window->workspace()->activeDocument()) {
            activeDocumentChanged(nullptr);
            activeDocumentChanged(document);
        }
    });
    // After a run its output (or its errors) comes to the front.
    connect(m_editor, &ScriptEditorPanel::runFinished, this, [this] {
        if (auto* output = m_window->findChild<QDockWidget*>(QStringLiteral("ScriptDock")); output && output->isVisible())
            output->raise();
    });
    connect(m_customMenus, &CustomActionMenus::statusMessage, this, [this](const QString& text) {
        if (text.isEmpty())
            m_window->statusBar()->clearMessage();
        else
            m_window->statusBar()->showMessage(text);
    });
    connect(m_updateCheck, &UpdateCheck::finished, this,
            [this](UpdateCheck::Outcome outcome, const QString&, const QString& message) {
                m_window->statusBar()->showMessage(message, 10000);
                if (!m_updateCheckQuiet || outcome == UpdateCheck::Outcome::Newer)
                    QMessageBox::information(m_window, tr("Check for updates"), message);
                m_updateCheckQuiet = false;
            });
    activeDocumentChanged(window->workspace()->activeDocument());
}

ScriptTooling::~ScriptTooling()
{
    ScriptUi::setHooks({});
    ScriptQueryHooks::install({});
}

ScriptTooling* ScriptTooling::of(const MainWindow* window)
{
    return window ? window->findChild<ScriptTooling*>(QStringLiteral("ScriptTooling"), Qt::FindDirectChildrenOnly)
                  : nullptr;
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

    QDockWidget* editor = addDock(m_editor, QStringLiteral("ScriptEditorDock"), tr("Script editor (%1)"),
                                  Qt::BottomDockWidgetArea, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    QDockWidget* library = addDock(m_library, QStringLiteral("ScriptLibraryDock"), tr("Script library (%1)"),
                                   Qt::LeftDockWidgetArea, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L));
    QDockWidget* help = addDock(m_help, QStringLiteral("HelpDock"), tr("P.L.A.X help (%1)"), Qt::RightDockWidgetArea,
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
    // Where they open, and which show on a first start, is the main
    // window's standard layout (DockLayout); a saved window state shows
    // them as they were left.
    (void)editor;
    (void)library;
    (void)help;
}

void ScriptTooling::createMenus()
{
    QMenuBar* bar = m_window->menuBar();
    QMenu* window = menuOf(m_window->action(QStringLiteral("actionTile")));
    QAction* before = window ? window->menuAction() : nullptr;

    m_customMenu = new QMenu(tr("&Actions"), m_window);
    m_customMenu->setObjectName(QStringLiteral("CustomMenu"));
    m_customMenu->setAccessibleName(tr("Custom actions"));
    m_customMenu->setToolTipsVisible(true);
    bar->insertMenu(before, m_customMenu);
    connect(m_customMenu, &QMenu::aboutToShow, this, &ScriptTooling::fillCustomMenu);
    m_layoutMenu = new QMenu(tr("Action menu &layout"), m_window);
    m_layoutMenu->setObjectName(QStringLiteral("ActionMenuLayoutMenu"));
    connect(m_layoutMenu, &QMenu::aboutToShow, this, [this] { m_customMenus->buildLayoutMenu(m_layoutMenu); });
    fillCustomMenu();

    QMenu* scripts = new QMenu(tr("&Scripts"), m_window);
    scripts->setObjectName(QStringLiteral("ScriptsMenu"));
    bar->insertMenu(before, scripts);
    scripts->addAction(m_editor->runAction());
    scripts->addAction(m_editor->runSelectionAction());
    scripts->addAction(m_editor->abortAction());
    scripts->addAction(m_editor->compileAction());
    scripts->addSeparator();
    for (const char* name : {"actionScriptNew", "actionScriptOpen", "actionScriptSave", "actionScriptSaveAs"}) {
        if (auto* action = m_library->findChild<QAction*>(QLatin1String(name))) {
            action->setShortcutContext(Qt::WindowShortcut);
            scripts->addAction(action);
        }
    }
    for (QAction* action : {m_editor->runAction(), m_editor->runSelectionAction(), m_editor->abortAction(),
                            m_editor->compileAction()})
        action->setShortcutContext(Qt::WindowShortcut);

    if (QMenu* view = menuOf(m_window->action(QStringLiteral("ItemsDockToggle")))) {
        view->addSeparator();
        for (const char* name : {"ScriptEditorDock", "ScriptLibraryDock", "HelpDock", "CustomPropertiesDock",
                                 "CollisionFilterDock", "ExportedPropertiesDock"}) {
            if (auto* dock = m_window->findChild<QDockWidget*>(QLatin1String(name)))
                view->addAction(dock->toggleViewAction());
        }
    }

    QAction* preferences = makeAction(m_window, "actionPreferences", tr("&Preferences..."),
                                      QKeySequence(Qt::CTRL | Qt::Key_Comma), tr("Colours, snapping, autosave and more"));
    connect(preferences, &QAction::triggered, this, &ScriptTooling::showPreferences);
    if (QMenu* edit = menuOf(m_window->action(QStringLiteral("actionUndo")))) {
        edit->addSeparator();
        edit->addAction(preferences);
    } else {
        scripts->addAction(preferences);
    }

    QAction* about = m_window->action(QStringLiteral("actionAbout"));
    QMenu* help = menuOf(about);
    if (!help) {
        help = bar->addMenu(tr("&Help"));
        help->setObjectName(QStringLiteral("HelpMenu"));
    }
    QAction* showHelp = makeAction(m_window, "actionHelp", tr("P.L.A.X &help"), QKeySequence(),
                                   tr("The script reference and how to use scripts"));
    connect(showHelp, &QAction::triggered, this, [this] {
        if (auto* dock = m_window->findChild<QDockWidget*>(QStringLiteral("HelpDock"))) {
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
    });
    QAction* tips = makeAction(m_window, "actionTips", tr("&Tip of the day..."), QKeySequence(), tr("Show a tip"));
    connect(tips, &QAction::triggered, this, [this] { showTips(false); });
    QAction* updates = makeAction(m_window, "actionCheckForUpdates", tr("Check for &updates"), QKeySequence(),
                                  tr("Ask whether a newer version exists"));
    connect(updates, &QAction::triggered, this, [this] {
        m_updateCheckQuiet = false;
        m_updateCheck->startFromSettings();
    });
    QAction* feedback = makeAction(m_window, "actionFeedback", tr("Send &feedback..."), QKeySequence(),
                                   tr("Open the project's issue page in the browser"));
    connect(feedback, &QAction::triggered, this, &ScriptTooling::sendFeedback);
    help->insertActions(about, {showHelp, tips, updates, feedback});
    if (about) {
        help->insertSeparator(about);
        // The about box lists the libraries in use.
        disconnect(about, &QAction::triggered, nullptr, nullptr);
        connect(about, &QAction::triggered, this, [this] {
            AboutDialog dialog(m_window);
            dialog.exec();
        });
    }
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
    hooks.clearOutput = [this] {
        if (auto* output = m_window->findChild<QPlainTextEdit*>(QStringLiteral("ScriptOutput")))
            output->clear();
    };
    hooks.setRepaintSuppressed = [this](bool suppressed) { m_window->mdiArea()->setUpdatesEnabled(!suppressed); };
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
    MainWindow* window = m_window;
    Log::setListener([panel, window](int level, const QString& text) {
        panel->noteLogMessage(level, text);
        // The engine's "Compiling void main()" only names where errors were
        // found; it stays in the log.
        static const QRegularExpression compilingNote(QStringLiteral("^Line -?\\d+, col \\d+: Compiling "));
        if (ScriptState::scriptOutputFlag() == 1 && level >= LOG_WARNING && !compilingNote.match(text).hasMatch()) {
            ScriptOutput::append(level >= LOG_ERROR ? QColor(200, 0, 0) : QColor(160, 110, 0), text);
            return;
        }
        QMetaObject::invokeMethod(window, "appendLogMessage", Qt::AutoConnection, Q_ARG(int, level),
                                  Q_ARG(QString, text));
    });
}

void ScriptTooling::activeDocumentChanged(EditorDocument* document)
{
    m_editor->setDocument(document);
    m_customProperties->setDocument(document);
    m_collisionFilter->setDocument(document);
    m_exportedProperties->setDocument(document);
}

void ScriptTooling::startUp()
{
    if (TipsDialog::showAtStartup())
        showTipsOnceShown(kTipsWaitSteps);
    if (openAppSettings()->value(QLatin1String(PreferenceKeys::kCheckForUpdates), false).toBool()) {
        m_updateCheckQuiet = true;
        m_updateCheck->startFromSettings();
    }
}

void ScriptTooling::showTipsOnceShown(int stepsLeft)
{
    // The tips come after the window is up, so they stand beside it rather
    // than in its place; a window that never shows gets none.
    QWindow* handle = m_window->windowHandle();
    if (m_window->isVisible() && handle && handle->isExposed()) {
        showTips(true);
        return;
    }
    if (stepsLeft > 0)
        QTimer::singleShot(kTipsWaitStepMs, this, [this, stepsLeft] { showTipsOnceShown(stepsLeft - 1); });
}

TipsDialog* ScriptTooling::tipsWindow() const
{
    return m_tips;
}

TipsDialog* ScriptTooling::showTips(bool quietly)
{
    const bool fresh = !m_tips;
    if (fresh) {
        m_tips = new TipsDialog(m_window);
        m_tips->setAttribute(Qt::WA_DeleteOnClose);
        m_tips->setModal(false);
    }
    // At start-up the keyboard stays with the editor: the first key typed
    // is the editor's, not the tip's.
    m_tips->setAttribute(Qt::WA_ShowWithoutActivating, quietly);
    m_tips->show();
    if (fresh) {
        // In the lower right corner of the scene area, away from the menus and
        // panels (placed once shown, at the size it took).
        QWidget* area = m_window->mdiArea();
        const QPoint corner = area->mapToGlobal(QPoint(area->width(), area->height())) - QPoint(16, 16);
        const QSize size = m_tips->frameGeometry().size();
        m_tips->move(corner - QPoint(size.width(), size.height()));
    }
    m_tips->raise();
    if (!quietly)
        m_tips->activateWindow();
    return m_tips;
}

void ScriptTooling::showPreferences()
{
    PreferencesDialog dialog(m_window);
    dialog.exec();
    // OK and Apply both write the settings; the views and the autosave read them again.
    emit preferencesChanged();
}

void ScriptTooling::showWorkingDirectoryPreferences()
{
    PreferencesDialog dialog(m_window);
    dialog.showWorkingDirectory();
    dialog.exec();
    emit preferencesChanged();
}

bool ScriptTooling::sendFeedback()
{
    const QString page = openAppSettings()
                             ->value(QLatin1String(PreferenceKeys::kIssuePage), PreferenceKeys::defaultIssuePage())
                             .toString()
                             .trimmed();
    if (page.isEmpty()) {
        QMessageBox::information(m_window, tr("Send feedback"),
                                 tr("No issue page is set. Enter its address in Preferences, Help and updates."));
        return false;
    }
    plaxLog(LOG_INFO, QStringLiteral("Opening the issue page %1").arg(page));
    return QDesktopServices::openUrl(QUrl::fromUserInput(page));
}
