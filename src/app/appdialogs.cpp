#include "app/appdialogs.h"

#include "app/actionicons.h"
#include "base/log.h"
#include "base/settings.h"
#include "panels/aboutdialog.h"
#include "panels/preferencesdialog.h"
#include "panels/tipsdialog.h"
#include "panels/updatecheck.h"

#include <QAction>
#include <QDesktopServices>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <QWindow>

AppDialogs::AppDialogs(QMainWindow* window, QWidget* sceneArea)
    : QObject(window), m_window(window), m_sceneArea(sceneArea), m_updateCheck(new UpdateCheck(this))
{
    connect(m_updateCheck, &UpdateCheck::finished, this,
            [this](UpdateCheck::Outcome outcome, const QString&, const QString& message) {
                m_window->statusBar()->showMessage(message, 10000);
                if (!m_updateCheckQuiet || outcome == UpdateCheck::Outcome::Newer)
                    QMessageBox::information(m_window, tr("Check for updates"), message);
                m_updateCheckQuiet = false;
            });
}

void AppDialogs::populate(QMenu* edit, QMenu* help, QAction* about)
{
    QAction* preferences = ActionIcons::makeAction(m_window, "actionPreferences", tr("&Preferences..."),
                                                   QKeySequence(Qt::CTRL | Qt::Key_Comma),
                                                   tr("Colours, snapping, autosave and more"));
    connect(preferences, &QAction::triggered, this, &AppDialogs::showPreferences);
    edit->addSeparator();
    edit->addAction(preferences);

    QAction* tips =
        ActionIcons::makeAction(m_window, "actionTips", tr("&Tip of the day..."), QKeySequence(), tr("Show a tip"));
    connect(tips, &QAction::triggered, this, [this] { showTips(false); });
    QAction* updates = ActionIcons::makeAction(m_window, "actionCheckForUpdates", tr("Check for &updates"),
                                               QKeySequence(), tr("Ask whether a newer version exists"));
    connect(updates, &QAction::triggered, this, [this] {
        m_updateCheckQuiet = false;
        m_updateCheck->startFromSettings();
    });
    QAction* feedback = ActionIcons::makeAction(m_window, "actionFeedback", tr("Send &feedback..."), QKeySequence(),
                                                tr("Open the project's issue page in the browser"));
    connect(feedback, &QAction::triggered, this, &AppDialogs::sendFeedback);
    help->insertActions(about, {tips, updates, feedback});
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

void AppDialogs::startUp()
{
    if (TipsDialog::showAtStartup())
        showTipsOnceShown(kTipsWaitSteps);
    if (openAppSettings()->value(QLatin1String(PreferenceKeys::kCheckForUpdates), false).toBool()) {
        m_updateCheckQuiet = true;
        m_updateCheck->startFromSettings();
    }
}

void AppDialogs::showTipsOnceShown(int stepsLeft)
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

TipsDialog* AppDialogs::tipsWindow() const
{
    return m_tips;
}

TipsDialog* AppDialogs::showTips(bool quietly)
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
        const QPoint corner =
            m_sceneArea->mapToGlobal(QPoint(m_sceneArea->width(), m_sceneArea->height())) - QPoint(16, 16);
        const QSize size = m_tips->frameGeometry().size();
        m_tips->move(corner - QPoint(size.width(), size.height()));
    }
    m_tips->raise();
    if (!quietly)
        m_tips->activateWindow();
    return m_tips;
}

void AppDialogs::showPreferences()
{
    PreferencesDialog dialog(m_window);
    dialog.exec();
    // OK and Apply both write the settings; the views and the autosave read them again.
    emit preferencesChanged();
}

void AppDialogs::showWorkingDirectoryPreferences()
{
    PreferencesDialog dialog(m_window);
    dialog.showWorkingDirectory();
    dialog.exec();
    emit preferencesChanged();
}

bool AppDialogs::sendFeedback()
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
