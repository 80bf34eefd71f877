#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>

class QTemporaryDir;
class QWidget;

/// Helpers for tests that drive the real editor window.
///
/// The dialog helpers never leave a test hanging: when what they wait for
/// does not come, or something else comes instead, the test fails with the
/// title and text of what was shown and that dialog is closed. A helper still
/// waiting when its test ends fails the test program.
namespace GuiTesting
{
/// What a message box showed and was answered with.
struct BoxSeen
{
    bool seen = false;
    QString title;
    QString text;
};

/// The title and text of a dialog as a person reads them (a message box's
/// text, or the texts of a dialog's labels), for failure messages.
QString describeDialog(const QWidget* dialog);

/// Answers the next modal message box by pressing `button`, recording its
/// title and text into `seen`. Call before the code that shows the box.
void answerNextMessageBox(QMessageBox::StandardButton button, BoxSeen* seen = nullptr, int timeoutMs = 20000);

/// Answers the next modal message box by pressing its button labelled
/// `buttonText` (for boxes with buttons of their own), recording its title
/// and text into `seen`.
void pressInNextMessageBox(const QString& buttonText, BoxSeen* seen = nullptr, int timeoutMs = 20000);

/// Hands the next modal dialog to `handle`, which must close it. Call before
/// the code that shows it. `what` names the expected kind in failures;
/// `accept` says whether a dialog is the expected one.
void handleNextModal(const char* what, const std::function<bool(QWidget*)>& accept,
                     const std::function<void(QWidget*)>& handle, int timeoutMs = 20000);

/// Hands the next modal dialog, which must be a `Dialog`, to `handle`; see
/// handleNextModal.
template <class Dialog>
void handleNextDialog(const std::function<void(Dialog*)>& handle, int timeoutMs = 20000)
{
    handleNextModal(
        Dialog::staticMetaObject.className(), [](QWidget* w) { return qobject_cast<Dialog*>(w) != nullptr; },
        [handle](QWidget* w) { handle(qobject_cast<Dialog*>(w)); }, timeoutMs);
}

/// Chooses the entry at `index` of the next popup menu, recording the texts
/// of its entries into `seen`; a negative index closes the menu without
/// choosing. Call before the code that shows it.
void chooseInNextMenu(int index, QStringList* seen = nullptr, int timeoutMs = 20000);

/// While it lives, any modal dialog that opens fails the test with its title
/// and text and is closed: for code that must not ask anything. Code that
/// asks does so before it returns, so checking after the call is enough.
class NoDialogExpected
{
public:
    NoDialogExpected();
    ~NoDialogExpected();
    NoDialogExpected(const NoDialogExpected&) = delete;
    NoDialogExpected& operator=(const NoDialogExpected&) = delete;

    /// How many dialogs were refused so far.
    int refused() const { return m_refused; }

private:
    class QTimer* m_timer;
    int m_refused = 0;
};

/// Installed once by the test entry point: fails and closes a modal dialog
/// or popup menu that nobody answers for a long time, and fails the program
/// when a test ends with a dialog helper still waiting.
void installDialogSafetyNet();
/// Whether some test ended with a dialog helper still waiting.
bool helpersLeftWaiting();

/// Copies the bundled example scene into `dir` under `name`; returns its path.
QString copyExample(const QTemporaryDir& dir, const QString& name = QStringLiteral("demo.plax"));
/// Writes a text file into `dir`, creating its folder; returns its path.
QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content);
/// Delivers every event posted so far (zero-time timers among them), and
/// whatever those deliveries do before they return.
void deliverPostedEvents();
/// Processes events until `condition` holds or `timeoutMs` passes; returns the condition.
bool waitFor(const std::function<bool()>& condition, int timeoutMs = 20000);
} // namespace GuiTesting
