#pragma once

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QLabel;

/// "Tip of the day": one tip at a time with previous and next, and a check
/// box that turns the tips at start-up off (setting "help/showtipsatstartup").
class TipsDialog : public QDialog
{
    Q_OBJECT

public:
    /// Settings key of the start-up choice (default true).
    static constexpr const char* kShowAtStartupKey = "help/showtipsatstartup";
    /// Settings key of the next tip's number.
    static constexpr const char* kNextTipKey = "help/nexttip";

    /// The dialog, starting at the tip after the one shown last time.
    explicit TipsDialog(QWidget* parent = nullptr);
    /// Whether tips are shown at start-up.
    static bool showAtStartup();
    /// Every tip.
    static QStringList tips();
    /// The tip shown now.
    int currentTip() const { return m_index; }
    /// The check box "Show tips at start-up".
    QCheckBox* showCheckBox() const { return m_show; }

public slots:
    /// Shows the next (or previous) tip.
    void nextTip();
    void previousTip();

private:
    void showTip(int index);

    QLabel* m_text;
    QCheckBox* m_show;
    int m_index = 0;
};
