#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>

class QTemporaryDir;

/// Helpers for tests that drive the real editor window.
namespace GuiTesting
{
/// What a message box showed and was answered with.
struct BoxSeen
{
    bool seen = false;
    QString title;
    QString text;
};

/// Answers the next modal message box (shown within `timeoutMs`) by pressing
/// `button`, recording its title and text into `seen`. Call before the code
/// that shows the box.
void answerNextMessageBox(QMessageBox::StandardButton button, BoxSeen* seen = nullptr, int timeoutMs = 5000);
/// Chooses the entry at `index` of the next popup menu (shown within
/// `timeoutMs`), recording the texts of its entries into `seen`; a negative
/// index closes the menu without choosing. Call before the code that shows it.
void chooseInNextMenu(int index, QStringList* seen = nullptr, int timeoutMs = 5000);
/// Copies the bundled example scene into `dir` under `name`; returns its path.
QString copyExample(const QTemporaryDir& dir, const QString& name = QStringLiteral("demo.plax"));
/// Writes a text file; returns its path.
QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content);
/// Processes events until `condition` holds or `timeoutMs` passes; returns the condition.
bool waitFor(const std::function<bool()>& condition, int timeoutMs = 5000);
} // namespace GuiTesting
