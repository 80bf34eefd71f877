#pragma once

#include <QString>

#include <functional>

/// How the core tells an interactive user about something. The core has no
/// widgets: the interface installs a handler that shows message boxes; without
/// one (batch mode, tests) nothing is shown and callers fall back to the log.
namespace UserNotifier
{
/// Kinds of boxes the interface can show.
enum class Kind
{
    Information,
    Warning,
    Critical,
};

/// Shows a box; installed by the main window.
using Handler = std::function<void(Kind kind, const QString& title, const QString& text)>;
/// Asks a yes/no question; returns the answer.
using QuestionHandler = std::function<bool(const QString& title, const QString& text)>;

/// Installs (or clears with empty functions) the interface's handlers.
void setHandlers(Handler show, QuestionHandler ask);
/// True when an interactive main window can show boxes.
bool isInteractive();
/// Shows a box when interactive; returns whether it was shown.
bool show(Kind kind, const QString& title, const QString& text);
/// Asks when interactive; returns the default answer otherwise.
bool ask(const QString& title, const QString& text, bool defaultAnswer);
} // namespace UserNotifier
