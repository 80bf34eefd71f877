#include "app/docklayout.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QToolBar>

#include <algorithm>

namespace
{
QDockWidget* dock(QMainWindow& window, const char* name)
{
    return window.findChild<QDockWidget*>(QLatin1String(name));
}

// Every listed dock that exists, in order.
QList<QDockWidget*> docks(QMainWindow& window, std::initializer_list<const char*> names)
{
    QList<QDockWidget*> found;
    for (const char* name : names) {
        if (QDockWidget* d = dock(window, name))
            found.append(d);
    }
    return found;
}

// Tabs `rest` behind `first`, in order.
void tabify(QMainWindow& window, QDockWidget* first, const QList<QDockWidget*>& rest)
{
    QDockWidget* previous = first;
    for (QDockWidget* d : rest) {
        window.tabifyDockWidget(previous, d);
        previous = d;
    }
}
} // namespace

namespace DockLayout
{
void apply(QMainWindow& window)
{
    const QList<QDockWidget*> all = window.findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QDockWidget* d : all) {
        d->setFloating(false);
        window.removeDockWidget(d);
    }
    window.setCorner(Qt::TopRightCorner, Qt::RightDockWidgetArea);
    window.setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    window.setCorner(Qt::TopLeftCorner, Qt::LeftDockWidgetArea);
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);

    QDockWidget* items = dock(window, "ItemsDock");
    QDockWidget* properties = dock(window, "PropertiesDock");
    QDockWidget* log = dock(window, "MessageLogDock");
    QDockWidget* editor = dock(window, "ScriptEditorDock");
    QDockWidget* library = dock(window, "ScriptLibraryDock");
    const QList<QDockWidget*> behindItems = docks(window, {"UndoDock"});
    const QList<QDockWidget*> behindProperties =
        docks(window, {"CustomPropertiesDock", "CollisionFilterDock", "ExportedPropertiesDock", "HelpDock"});
    const QList<QDockWidget*> behindLog = docks(window, {"ScriptDock"});

    if (items && properties) {
        window.addDockWidget(Qt::RightDockWidgetArea, items);
        window.splitDockWidget(items, properties, Qt::Vertical);
        tabify(window, items, behindItems);
        tabify(window, properties, behindProperties);
    }
    if (log) {
        window.addDockWidget(Qt::BottomDockWidgetArea, log);
        if (editor) {
            // The editor opens at the bottom left, beside the output it writes.
            window.addDockWidget(Qt::BottomDockWidgetArea, editor);
            window.splitDockWidget(editor, log, Qt::Horizontal);
        }
        tabify(window, log, behindLog);
    }
    if (library)
        window.addDockWidget(Qt::LeftDockWidgetArea, library);
    // Whatever else a later version adds waits, closed, on the right.
    for (QDockWidget* d : all) {
        if (window.dockWidgetArea(d) == Qt::NoDockWidgetArea)
            window.addDockWidget(Qt::RightDockWidgetArea, d);
    }

    const QList<QDockWidget*> shown = {items, properties, log};
    QList<QDockWidget*> open = shown + behindItems + behindLog;
    for (QDockWidget* d : all)
        d->setVisible(open.contains(d));
    for (QDockWidget* d : shown) {
        if (d)
            d->raise();
    }

    for (QToolBar* bar : window.findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly)) {
        window.addToolBar(Qt::TopToolBarArea, bar);
        bar->show();
    }
    resize(window);
}

void resize(QMainWindow& window)
{
    QDockWidget* items = dock(window, "ItemsDock");
    QDockWidget* properties = dock(window, "PropertiesDock");
    QDockWidget* log = dock(window, "MessageLogDock");
    const int side = std::clamp(window.width() / 5, 240, 380);
    const int bottom = std::clamp(window.height() / 5, 130, 240);
    if (items && properties && items->isVisible() && properties->isVisible()) {
        window.resizeDocks({items}, {side}, Qt::Horizontal);
        const int column = std::max(200, window.height() - 120);
        window.resizeDocks({items, properties}, {column * 2 / 5, column * 3 / 5}, Qt::Vertical);
    }
    if (log && log->isVisible())
        window.resizeDocks({log}, {bottom}, Qt::Vertical);
}
} // namespace DockLayout
