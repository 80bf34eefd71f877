#include "support/guitesting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>

void GuiTesting::answerNextMessageBox(QMessageBox::StandardButton button, BoxSeen* seen, int timeoutMs)
{
    auto* timer = new QTimer(qApp);
    auto* clock = new QElapsedTimer;
    clock->start();
    QObject::connect(timer, &QTimer::timeout, timer, [timer, clock, button, seen, timeoutMs] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box && clock->elapsed() < timeoutMs)
            return;
        timer->stop();
        timer->deleteLater();
        delete clock;
        if (!box)
            return;
        if (seen) {
            seen->seen = true;
            seen->title = box->windowTitle();
            seen->text = box->text();
        }
        if (QAbstractButton* b = box->button(button))
            b->click();
        else
            box->reject();
    });
    timer->start(20);
}

void GuiTesting::chooseInNextMenu(int index, QStringList* seen, int timeoutMs)
{
    auto* timer = new QTimer(qApp);
    auto* clock = new QElapsedTimer;
    clock->start();
    QObject::connect(timer, &QTimer::timeout, timer, [timer, clock, index, seen, timeoutMs] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu && clock->elapsed() < timeoutMs)
            return;
        timer->stop();
        timer->deleteLater();
        delete clock;
        if (!menu)
            return;
        QList<QAction*> entries;
        for (QAction* action : menu->actions()) {
            if (!action->isSeparator())
                entries.append(action);
        }
        if (seen) {
            for (QAction* action : entries)
                seen->append(action->text());
        }
        if (index < 0 || index >= entries.size()) {
            menu->close();
            return;
        }
        menu->setActiveAction(entries[index]);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    timer->start(20);
}

QString GuiTesting::copyExample(const QTemporaryDir& dir, const QString& name)
{
    const QString target = dir.filePath(name);
    QFile::remove(target);
    QFile::copy(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"), target);
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

QString GuiTesting::writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
    return path;
}

bool GuiTesting::waitFor(const std::function<bool()>& condition, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QTest::qWait(10);
    }
    return true;
}
