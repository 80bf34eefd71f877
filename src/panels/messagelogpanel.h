#pragma once

#include <QString>
#include <QWidget>

#include <deque>

class QComboBox;
class QPlainTextEdit;

/// The message log dock's contents: the log lines of this run, shown from a
/// chosen level up. Users see INFO and above; the level box (or the
/// debug-output preference, which starts the panel at DEBUG) shows the
/// developers' DEBUG lines too. The panel keeps the latest lines of every
/// level, so that a lower level shows what was logged before it was chosen.
class MessageLogPanel : public QWidget
{
    Q_OBJECT

public:
    /// Lines kept (of every level together); older ones are dropped.
    static constexpr int kMaxLines = 5000;

    /// An empty panel starting at the level the preferences ask for.
    explicit MessageLogPanel(QWidget* parent = nullptr);

    /// The level a panel starts at: DEBUG with the debug-output preference, else INFO.
    static int startLevel();

    /// Adds one log message.
    void append(int level, const QString& text);
    /// The lowest level shown.
    int minimumLevel() const { return m_minimumLevel; }
    /// Shows the lines from `level` up (one of the log levels).
    void setMinimumLevel(int level);
    /// The text shown now, one "[label]: text" line per message.
    QString shownText() const;
    /// Every kept line whatever the filter, in the same form.
    QString allText() const;
    /// After the preferences were written: a changed debug-output preference
    /// moves the filter to its level (DEBUG or INFO); a level chosen in the box
    /// stays otherwise.
    void followPreferences();
    /// The level box.
    QComboBox* levelBox() const { return m_levelBox; }

private:
    struct Line
    {
        int level;
        QString text;
    };
    static QString format(const Line& line);
    void refill();

    QComboBox* m_levelBox;
    QPlainTextEdit* m_view;
    std::deque<Line> m_lines;
    int m_minimumLevel;
    int m_preferredLevel;
};
