// Developer tool: opens scenes in the real editor window and saves a picture
// of the window, so that the interface can be looked at on a machine without
// a screen (run it under xvfb-run; see tools/README.md).
//
//   plax-screenshot OUT.png [--size WxH] [--script FILE.rs] [--key KEYS]
//                   [--action OBJECTNAME] [--wait MS] SCENE...
#include "app/mainwindow.h"
#include "app/editorworkspace.h"
#include "document/editordocument.h"
#include "script/documentscripting.h"
#include "support/tempsettings.h"
#include "views/editorview.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QKeySequence>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QOpenGLWidget>
#include <QPainter>
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
    QTest::qWait(200);
    for (const QString& key : keys) {
        if (key.startsWith(QLatin1String("action:"))) {
            if (QAction* action = window.action(key.mid(7)))
                action->trigger();
            else
                std::fprintf(stderr, "no action %s\n", qPrintable(key.mid(7)));
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
    // The window's own grab composes OpenGL views from an earlier frame; draw
    // each view's frame buffer, rendered now, over its place instead.
    QImage picture = window.grab().toImage();
    {
        QPainter painter(&picture);
        for (QOpenGLWidget* gl : window.findChildren<QOpenGLWidget*>()) {
            if (gl->isVisible())
                painter.drawImage(gl->mapTo(&window, QPoint(0, 0)), gl->grabFramebuffer());
        }
    }
    if (!picture.save(out)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(out));
        return 1;
    }
    std::printf("wrote %s (%dx%d)\n", qPrintable(out), picture.width(), picture.height());
    if (QMdiSubWindow* sub = window.mdiArea()->activeSubWindow()) {
        if (auto* view = qobject_cast<EditorView*>(sub->widget()); view && qEnvironmentVariableIsSet("PLAX_SHOT_VIEW"))
            view->grabFramebuffer().save(qEnvironmentVariable("PLAX_SHOT_VIEW"));
        if (auto* view = qobject_cast<EditorView*>(sub->widget()))
            std::printf("view: %zu labels built, %d drawn, geometry built in %.1f ms\n", view->geometry().labels.size(),
                        view->lastLabelCount(), view->lastBuildMilliseconds());
    }
    return 0;
}
