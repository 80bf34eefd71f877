#pragma once

#include <QIcon>
#include <QString>

class QAction;
class QToolBar;

/// Icons and tooltips of the toolbar actions.
namespace ActionIcons
{
/// The desktop icon theme's icon `themeName` when the theme has it, else
/// ours, ":/icons/<ownName>.png" (with its larger drawing "<ownName>-24.png"
/// when there is one).
QIcon themed(const QString& themeName, const QString& ownName);
/// Our own icon only (for things no icon theme names, like the edit modes).
QIcon own(const QString& ownName);
/// The tooltip of an action naming its shortcut: "What it does (Ctrl+S)".
/// The action's status tip (else its text without "&") is the description.
QString toolTipWithShortcut(const QAction& action);
/// Gives every action on the toolbar the tooltip of toolTipWithShortcut(),
/// now and whenever the action's text or shortcut changes.
void nameShortcutsInToolTips(QToolBar& toolbar);
} // namespace ActionIcons
