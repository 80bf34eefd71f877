#include "support/guitesting.h"

#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>

#include <memory>

namespace
{
constexpr int kPollMs = 20;

// A helper waiting for a dialog: polled by its timer, stopped at its
// deadline, or left over when its test ends.
struct Waiter
{
    QTimer* timer = nullptr;
    QElapsedTimer clock;
    QString what;
};

QList<Waiter*>& waiters()
{
    static QList<Waiter*> list;
    return list;
}

bool s_leftWaiting = false;

void finish(Waiter* waiter)
{
    waiters().removeOne(waiter);
    waiter->timer->stop();
    waiter->timer->deleteLater();
    delete waiter;
}

// Starts polling `poll` every few milliseconds until it returns true.
void startWaiter(const QString& what, const std::function<bool(Waiter*)>& poll)
{
    auto* waiter = new Waiter;
    waiter->timer = new QTimer(qApp);
    waiter->what = what;
    waiter->clock.start();
    waiters().append(waiter);
    QObject::connect(waiter->timer, &QTimer::timeout, waiter->timer, [waiter, poll] {
        if (poll(waiter))
            finish(waiter);
    });
    waiter->timer->start(kPollMs);
}

void closeDialog(QWidget* widget)
{
    if (auto* dialog = qobject_cast<QDialog*>(widget))
        dialog->reject();
    if (widget->isVisible())
        widget->close();
}

// Fails the test saying why and what the dialog shows, and closes it.
void refuse(QWidget* widget, const QString& why)
{
    ADD_FAILURE() << why.toStdString() << ": " << GuiTesting::describeDialog(widget).toStdString();
    closeDialog(widget);
}

// At the end of every test: a helper still waiting means the dialog it was
// set up for never came.
class WaiterCheck : public ::testing::EmptyTestEventListener
{
    void OnTestEnd(const ::testing::TestInfo& test) override
    {
        const QList<Waiter*> left = waiters();
        for (Waiter* waiter : left) {
            std::fprintf(stderr, "%s.%s: still waiting for %s when the test ended\n", test.test_suite_name(),
                         test.name(), waiter->what.toUtf8().constData());
            s_leftWaiting = true;
            finish(waiter);
        }
    }
};
} // namespace

QString GuiTesting::describeDialog(const QWidget* dialog)
{
    QStringList texts;
    if (const auto* box = qobject_cast<const QMessageBox*>(dialog)) {
        texts << box->text();
        if (!box->informativeText().isEmpty())
            texts << box->informativeText();
    } else {
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            if (!label->text().isEmpty())
                texts << label->text();
        }
    }
    return QStringLiteral("%1 '%2': %3")
        .arg(QString::fromLatin1(dialog->metaObject()->className()), dialog->windowTitle(), texts.join(QStringLiteral(" | ")));
}

void GuiTesting::handleNextModal(const char* what, const std::function<bool(QWidget*)>& accept,
                                 const std::function<void(QWidget*)>& handle, int timeoutMs)
{
    const QString expected = QStringLiteral("expected a modal %1").arg(QString::fromLatin1(what));
    startWaiter(expected, [=](Waiter* waiter) {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal) {
            if (waiter->clock.elapsed() < timeoutMs)
                return false;
            ADD_FAILURE() << expected.toStdString() << " within " << timeoutMs << " ms; none came";
            return true;
        }
        if (!accept(modal)) {
            refuse(modal, expected + QStringLiteral(", but this came"));
            return true;
        }
        QPointer<QWidget> shown(modal);
        handle(modal);
        if (shown && shown->isVisible() && QApplication::activeModalWidget() == shown) {
            ADD_FAILURE() << "the handler left the dialog open: " << describeDialog(shown).toStdString();
            closeDialog(shown);
        }
        return true;
    });
}

void GuiTesting::answerNextMessageBox(QMessageBox::StandardButton button, BoxSeen* seen, int timeoutMs)
{
    handleNextModal(
        "QMessageBox", [](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; },
        [button, seen](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            if (seen) {
                seen->seen = true;
                seen->title = box->windowTitle();
                seen->text = box->text();
            }
            if (QAbstractButton* b = box->button(button)) {
                b->click();
            } else {
                ADD_FAILURE() << "the message box has no button " << int(button) << ": "
                              << describeDialog(box).toStdString();
                closeDialog(box);
            }
        },
        timeoutMs);
}

void GuiTesting::pressInNextMessageBox(const QString& buttonText, BoxSeen* seen, int timeoutMs)
{
    handleNextModal(
        "QMessageBox", [](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; },
        [buttonText, seen](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            if (seen) {
                seen->seen = true;
                seen->title = box->windowTitle();
                seen->text = box->text();
            }
            for (QAbstractButton* button : box->buttons()) {
                if (button->text() == buttonText) {
                    button->click();
                    return;
                }
            }
            ADD_FAILURE() << "the message box has no button '" << buttonText.toStdString()
                          << "': " << describeDialog(box).toStdString();
            closeDialog(box);
        },
        timeoutMs);
}

void GuiTesting::chooseInNextMenu(int index, QStringList* seen, int timeoutMs)
{
    startWaiter(QStringLiteral("a popup menu"), [=](Waiter* waiter) {
        QWidget* popup = QApplication::activePopupWidget();
        if (!popup) {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                refuse(modal, QStringLiteral("expected a popup menu, but this came"));
                return true;
            }
            if (waiter->clock.elapsed() < timeoutMs)
                return false;
            ADD_FAILURE() << "expected a popup menu within " << timeoutMs << " ms; none came";
            return true;
        }
        auto* menu = qobject_cast<QMenu*>(popup);
        if (!menu) {
            ADD_FAILURE() << "expected a popup menu; a " << popup->metaObject()->className() << " came";
            popup->close();
            return true;
        }
        QList<QAction*> entries;
        for (QAction* action : menu->actions()) {
            if (!action->isSeparator())
                entries.append(action);
        }
        if (seen) {
            for (QAction* action : entries)
                seen->append(action->text());
        }
        if (index < 0) {
            menu->close();
        } else if (index >= entries.size()) {
            ADD_FAILURE() << "the menu has no entry " << index << "; it has " << entries.size();
            menu->close();
        } else {
            menu->setActiveAction(entries[index]);
            QTest::keyClick(menu, Qt::Key_Return);
        }
        return true;
    });
}

GuiTesting::NoDialogExpected::NoDialogExpected() : m_timer(new QTimer)
{
    QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            ++m_refused;
            refuse(modal, QStringLiteral("no dialog was expected, but this came"));
        }
    });
    m_timer->start(kPollMs);
}

GuiTesting::NoDialogExpected::~NoDialogExpected()
{
    delete m_timer;
}

void GuiTesting::installDialogSafetyNet()
{
    ::testing::UnitTest::GetInstance()->listeners().Append(new WaiterCheck);
    // A dialog or menu that nobody answers would block its test until the
    // test's time limit; this one fails it sooner, saying what was shown.
    static QPointer<QWidget> open;
    static QElapsedTimer openSince;
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [] {
        QWidget* shown = QApplication::activeModalWidget();
        if (!shown)
            shown = QApplication::activePopupWidget();
        if (shown != open) {
            open = shown;
            openSince.start();
            return;
        }
        if (shown && waiters().isEmpty() && openSince.elapsed() > 30000) {
            refuse(shown, QStringLiteral("nothing answered this dialog for 30 s"));
            open = nullptr;
        }
    });
    timer->start(500);
}

bool GuiTesting::helpersLeftWaiting()
{
    return s_leftWaiting;
}

QString GuiTesting::copyExample(const QTemporaryDir& dir, const QString& name)
{
    const QString target = dir.filePath(name);
    QFile::remove(target);
    EXPECT_TRUE(QFile::copy(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"), target)) << target.toStdString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

QString GuiTesting::writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content)
{
    return TestFiles::write(dir.filePath(name), content);
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

void GuiTesting::deliverPostedEvents()
{
    // Posted events are delivered in order: once this marker arrives, every
    // event posted before it has been handled.
    bool delivered = false;
    QTimer::singleShot(0, qApp, [&delivered] { delivered = true; });
    while (!delivered)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
}
