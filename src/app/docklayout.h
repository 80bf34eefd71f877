#pragma once

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
/// Docks and toolbars of `window` (found by their object names) put in their
/// standard places, shown or hidden; then sized as by resize().
void apply(QMainWindow& window);
/// Sizes the docks for the window's current size: the side a fifth of the
/// width, the bottom a fifth of the height, each within sensible bounds.
void resize(QMainWindow& window);
} // namespace DockLayout
