#pragma once

#include <QList>

class QDockWidget;
class QMainWindow;

/// The main window's standard arrangement, shown on a first start and by
/// View > Reset layout: the scene takes the middle and most of the window;
/// the items (with the undo stack as a tab behind them) and the properties
/// share the right side; the message log and the script output are tabs at
/// the bottom; the toolbars stand in one row at the top. The script editor,
/// script library, help and the tables are closed, each one shortcut away,
/// and open in their places: the editor at the bottom left, the library on
/// the left, the tables as tabs beside the properties.
namespace DockLayout
{
/// The docks the arrangement places by role (a null one is left out).
struct Docks
{
    QDockWidget* items = nullptr;
    QDockWidget* properties = nullptr;
    QDockWidget* log = nullptr;
    QDockWidget* undo = nullptr;
    QDockWidget* scriptOutput = nullptr;
    QDockWidget* scriptEditor = nullptr;
    QDockWidget* scriptLibrary = nullptr;
    /// Tabs behind the properties, in order (the tables and the help).
    QList<QDockWidget*> behindProperties;
};

/// The docks and toolbars of `window` put in their standard places, shown
/// or hidden; then sized as by resize(). Docks of the window that `docks`
/// does not name wait, closed, on the right.
void apply(QMainWindow& window, const Docks& docks);
/// Sizes the docks for the window's current size: the side a fifth of the
/// width, the bottom a fifth of the height, each within sensible bounds.
void resize(QMainWindow& window, const Docks& docks);
} // namespace DockLayout
