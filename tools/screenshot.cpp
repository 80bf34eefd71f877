// Developer tool: opens scenes in the real editor window and saves a picture
// of the window, so that the interface can be looked at on a machine without
// a screen (run it under xvfb-run; see tools/README.md).
//
//   plax-screenshot OUT.png [--size WxH | --first-start] [--script FILE.rs]
//                   [--key KEYS] [--action OBJECTNAME] [--tips] [--samples N] [--wait MS] SCENE...
#include "app/mainwindow.h"
#include "app/editorworkspace.h"
#include "app/scripttooling.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "script/documentscripting.h"
#include "support/tempsettings.h"
#include "views/editorview.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QKeySequence>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QOpenGLWidget>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <cstdio>

int main(int argc, char** argv)
{
    TemporarySettingsHome home;
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty()) {
        std::fprintf(stderr, "usage: plax-screenshot OUT.png [--size WxH] [--script FILE] [--key KEYS] [--wait MS] SCENE...\n");
        return 2;
    }
    const QString out = args.takeFirst();
    QSize size(1400, 900);
    bool firstStart = false;
    bool tips = false;
    QString script;
    QStringList keys;
    int waitMs = 500;
    QStringList scenes;
    while (!args.isEmpty()) {
        const QString a = args.takeFirst();
        if (a == QLatin1String("--size") && !args.isEmpty()) {
            const QStringList wh = args.takeFirst().split(QLatin1Char('x'));
            if (wh.size() == 2)
                size = QSize(wh[0].toInt(), wh[1].toInt());
        } else if (a == QLatin1String("--first-start")) {
            firstStart = true;
        } else if (a == QLatin1String("--tips")) {
            tips = true;
        } else if (a == QLatin1String("--samples") && !args.isEmpty()) {
            openAppSettings()->setValue(QLatin1String(DocumentView::kSamplesKey), args.takeFirst().toInt());
        } else if (a == QLatin1String("--script") && !args.isEmpty()) {
            script = args.takeFirst();
        } else if (a == QLatin1String("--key") && !args.isEmpty()) {
            keys.append(args.takeFirst());
        } else if (a == QLatin1String("--action") && !args.isEmpty()) {
            keys.append(QStringLiteral("action:") + args.takeFirst());
        } else if (a == QLatin1String("--wait") && !args.isEmpty()) {
            waitMs = args.takeFirst().toInt();
        } else {
            scenes.append(a);
        }
    }

    MainWindow window;
    // A first start keeps the size the window gives itself on this screen.
    if (!firstStart)
        window.resize(size);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        std::fprintf(stderr, "the window was not shown\n");
    for (const QString& scene : scenes)
        window.workspace()->openFile(scene);
    if (!script.isEmpty()) {
        QFile file(script);
        if (EditorDocument* document = window.workspace()->activeDocument(); document && file.open(QIODevice::ReadOnly))
            document->scripting().runOneShot(QString::fromUtf8(file.readAll()), QString());
    }
    if (tips) {
        if (ScriptTooling* tooling = ScriptTooling::of(&window))
            tooling->startUp();
    }
    QTest::qWait(200);
    // The picture: the window with each OpenGL view's frame buffer, rendered
    // now, drawn over its place (the window's own grab composes them from an
    // earlier frame), and a dialog open over it drawn where it stands.
    bool taken = false;
    bool saved = false;
    const auto take = [&] {
        if (taken)
            return;
        taken = true;
        QImage picture = window.grab().toImage();
        QPainter painter(&picture);
        for (QOpenGLWidget* gl : window.findChildren<QOpenGLWidget*>()) {
            if (gl->isVisible())
                painter.drawImage(gl->mapTo(&window, QPoint(0, 0)), gl->grabFramebuffer());
        }
        // Other windows of the program (the tips) are drawn where they stand.
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top != &window && top->isVisible() && !qobject_cast<QDockWidget*>(top) && top->isWindow() &&
                top->windowType() == Qt::Dialog)
                painter.drawImage(window.mapFromGlobal(top->mapToGlobal(QPoint(0, 0))), top->grab().toImage());
        }
        // Floating docks are windows of their own: drawn where they stand.
        for (QDockWidget* dock : window.findChildren<QDockWidget*>()) {
            if (dock->isFloating() && dock->isVisible())
                painter.drawImage(window.mapFromGlobal(dock->mapToGlobal(QPoint(0, 0))), dock->grab().toImage());
        }
        if (QWidget* modal = QApplication::activeModalWidget())
            painter.drawImage(window.mapFromGlobal(modal->mapToGlobal(QPoint(0, 0))), modal->grab().toImage());
        painter.end();
        saved = picture.save(out);
        if (saved)
            std::printf("wrote %s (%dx%d)\n", qPrintable(out), picture.width(), picture.height());
    };
    for (const QString& key : keys) {
        if (key.startsWith(QLatin1String("action:"))) {
            QAction* action = window.action(key.mid(7));
            if (!action) {
                std::fprintf(stderr, "no action %s\n", qPrintable(key.mid(7)));
                continue;
            }
            // An action that opens a modal dialog runs its own event loop
            // until the dialog closes: the picture is taken from inside it.
            QTimer::singleShot(waitMs + 100, &window, [&] {
                if (QWidget* modal = QApplication::activeModalWidget()) {
                    take();
                    modal->close();
                }
            });
            action->trigger();
            QTest::qWait(100);
            continue;
        }
        QWidget* target = window.mdiArea()->activeSubWindow() ? window.mdiArea()->activeSubWindow()->widget() : &window;
        target->setFocus();
        const QKeySequence sequence(key);
        for (int i = 0; i < sequence.count(); ++i)
            QTest::keyClick(target, sequence[i].key(), sequence[i].keyboardModifiers());
        QTest::qWait(50);
    }
    QTest::qWait(waitMs);
    take();
    if (!saved) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(out));
        return 1;
    }
    if (QMdiSubWindow* sub = window.mdiArea()->activeSubWindow()) {
        if (auto* view = qobject_cast<EditorView*>(sub->widget()); view && qEnvironmentVariableIsSet("PLAX_SHOT_VIEW"))
            view->grabFramebuffer().save(qEnvironmentVariable("PLAX_SHOT_VIEW"));
        if (auto* view = qobject_cast<EditorView*>(sub->widget()))
            std::printf("view: %zu labels built, %d drawn, %d left out, geometry built in %.1f ms, %d samples\n",
                        view->geometry().labels.size(), view->lastLabelCount(), view->lastHiddenLabelCount(),
                        view->lastBuildMilliseconds(), view->lastFrameSamples());
    }
    // Where the space goes: the window on its screen, the scene area in the window.
    const QRect screen = window.screen()->availableGeometry();
    const QWidget* scene = window.mdiArea()->activeSubWindow() ? window.mdiArea()->activeSubWindow()->widget()
                                                               : window.mdiArea();
    const double share = double(scene->width()) * scene->height() / (double(window.width()) * window.height());
    std::printf("screen %dx%d, window %dx%d at %d,%d, scene %dx%d (%.0f%% of the window)\n", screen.width(),
                screen.height(), window.width(), window.height(), window.x(), window.y(), scene->width(),
                scene->height(), 100 * share);
    for (QDockWidget* dock : window.findChildren<QDockWidget*>()) {
        if (dock->isVisible())
            std::printf("  dock %s %dx%d at %d,%d\n", qPrintable(dock->objectName()), dock->width(), dock->height(),
                        dock->x(), dock->y());
    }
    return 0;
}
