#include "app/mainwindow.h"

#include "base/log.h"
#include "base/settings.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QStatusBar>

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_mdiArea(new QMdiArea(this)), m_logView(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("P.L.A.X"));
    setCentralWidget(m_mdiArea);

    m_logView->setReadOnly(true);
    m_logView->setMaximumBlockCount(5000);
    auto* logDock = new QDockWidget(tr("Message log (%1)").arg(QStringLiteral("F8")), this);
    logDock->setObjectName(QStringLiteral("MessageLogDock"));
    logDock->setWidget(m_logView);
    addDockWidget(Qt::BottomDockWidgetArea, logDock);

    restoreSettings();
}

MainWindow::~MainWindow() = default;

QString MainWindow::logText() const
{
    return m_logView->toPlainText();
}

void MainWindow::appendLogMessage(int level, const QString& text)
{
    m_logView->appendPlainText(QStringLiteral("[%1]: %2").arg(QString::fromLatin1(Log::label(level)), text));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveSettings();
    event->accept();
}

void MainWindow::restoreSettings()
{
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("mainwindow"));
    restoreGeometry(settings->value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings->value(QStringLiteral("savestate")).toByteArray(), 0);
    if (settings->value(QStringLiteral("maximized"), false).toBool())
        setWindowState(windowState() | Qt::WindowMaximized);
    settings->endGroup();
}

void MainWindow::saveSettings() const
{
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("mainwindow"));
    settings->setValue(QStringLiteral("geometry"), saveGeometry());
    settings->setValue(QStringLiteral("savestate"), saveState(0));
    settings->setValue(QStringLiteral("maximized"), isMaximized());
    settings->setValue(QStringLiteral("size"), size());
    settings->endGroup();
}
