#pragma once

#include <QMainWindow>

class QMdiArea;
class QPlainTextEdit;

/// The editor's main window: a multiple-document area, the message log dock
/// and the status bar. Its geometry and dock state persist in the settings.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Creates the window and restores its saved geometry and state.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// The multiple-document area holding the views.
    QMdiArea* mdiArea() const { return m_mdiArea; }
    /// Text of the message log panel.
    QString logText() const;

public slots:
    /// Appends one accepted log message to the message log panel.
    void appendLogMessage(int level, const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void restoreSettings();
    void saveSettings() const;

    QMdiArea* m_mdiArea;
    QPlainTextEdit* m_logView;
};
