#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QMainWindow;
class QMenu;
class QWidget;
class TipsDialog;
class UpdateCheck;

/// The main window's dialogs that are not about scenes or scripts:
/// preferences, about, the tip of the day, the update check and feedback,
/// with their menu entries.
class AppDialogs : public QObject
{
    Q_OBJECT

public:
    /// Dialogs over `window`; the tips stand in the lower right corner of
    /// `sceneArea` (the area of the scene views).
    AppDialogs(QMainWindow* window, QWidget* sceneArea);

    /// Puts Preferences at the end of `edit`, and the tips, the update check
    /// and feedback into `help` before `about`, which from then on opens the
    /// about box listing the libraries in use.
    void populate(QMenu* edit, QMenu* help, QAction* about);

    /// At start-up: the tips (unless turned off), shown without blocking
    /// once the main window is up, and the update check (when turned on).
    void startUp();
    /// Shows the tip window (one at a time; it never blocks the editor).
    /// `quietly` leaves the keyboard with the main window (at start-up);
    /// otherwise the tips take it (Help > Tip of the day).
    TipsDialog* showTips(bool quietly);
    /// The tip window while it is open, else null.
    TipsDialog* tipsWindow() const;
    /// The update check.
    UpdateCheck* updateCheck() const { return m_updateCheck; }

    /// Opens the preferences dialog (modal).
    void showPreferences();
    /// Opens the preferences dialog (modal) on the working-directory field.
    void showWorkingDirectoryPreferences();
    /// Opens the project's issue page in the browser; false without one.
    bool sendFeedback();

signals:
    /// The preferences dialog wrote new settings.
    void preferencesChanged();

private:
    void showTipsOnceShown(int stepsLeft);

    /// How long the start-up tips wait for the main window to show: steps of a tenth of a second.
    static constexpr int kTipsWaitSteps = 100;
    static constexpr int kTipsWaitStepMs = 100;

    QMainWindow* m_window;
    QWidget* m_sceneArea;
    UpdateCheck* m_updateCheck;
    bool m_updateCheckQuiet = false;
    QPointer<TipsDialog> m_tips;
};
