#include "panels/messagelogpanel.h"

#include "base/log.h"
#include "base/settings.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringList>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
struct LevelChoice
{
    int level;
    const char* text;
};

const LevelChoice kLevelChoices[] = {
    {LOG_DEBUG, QT_TRANSLATE_NOOP("MessageLogPanel", "Debug and above")},
    {LOG_INFO, QT_TRANSLATE_NOOP("MessageLogPanel", "Information and above")},
    {LOG_WARNING, QT_TRANSLATE_NOOP("MessageLogPanel", "Warnings and errors")},
    {LOG_ERROR, QT_TRANSLATE_NOOP("MessageLogPanel", "Errors only")},
};
} // namespace

int MessageLogPanel::startLevel()
{
    return openAppSettings()->value(QLatin1String(SettingsKeys::kDebugOutput), false).toBool() ? LOG_DEBUG : LOG_INFO;
}

MessageLogPanel::MessageLogPanel(QWidget* parent)
    : QWidget(parent), m_levelBox(new QComboBox(this)), m_view(new QPlainTextEdit(this)), m_minimumLevel(startLevel()),
      m_preferredLevel(m_minimumLevel)
{
    setObjectName(QStringLiteral("MessageLogPanel"));
    m_view->setObjectName(QStringLiteral("MessageLogText"));
    m_view->setAccessibleName(tr("Messages"));
    m_view->setReadOnly(true);
    m_view->setMaximumBlockCount(kMaxLines);
    m_view->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_levelBox->setObjectName(QStringLiteral("MessageLogLevel"));
    m_levelBox->setAccessibleName(tr("Messages shown"));
    m_levelBox->setToolTip(tr("Which messages the log shows; plax.log holds them all"));
    for (const LevelChoice& choice : kLevelChoices)
        m_levelBox->addItem(tr(choice.text), choice.level);
    m_levelBox->setCurrentIndex(m_levelBox->findData(m_minimumLevel));
    connect(m_levelBox, &QComboBox::currentIndexChanged, this,
            [this](int index) { setMinimumLevel(m_levelBox->itemData(index).toInt()); });
    auto* clear = new QToolButton(this);
    clear->setObjectName(QStringLiteral("MessageLogClear"));
    clear->setText(tr("Clear"));
    clear->setToolTip(tr("Empty the message log (plax.log keeps its lines)"));
    clear->setAutoRaise(true);
    connect(clear, &QToolButton::clicked, this, [this] {
        m_lines.clear();
        m_view->clear();
    });

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(4, 2, 4, 0);
    auto* label = new QLabel(tr("Show:"), this);
    label->setBuddy(m_levelBox);
    bar->addWidget(label);
    bar->addWidget(m_levelBox);
    bar->addStretch(1);
    bar->addWidget(clear);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);
}

QString MessageLogPanel::format(const Line& line)
{
    return QStringLiteral("[%1]: %2").arg(QString::fromLatin1(Log::label(line.level)), line.text);
}

void MessageLogPanel::append(int level, const QString& text)
{
    m_lines.push_back({level, text});
    if (m_lines.size() > size_t(kMaxLines))
        m_lines.pop_front();
    // The view follows new lines only while it is scrolled to the end.
    if (level >= m_minimumLevel)
        m_view->appendPlainText(format(m_lines.back()));
}

void MessageLogPanel::setMinimumLevel(int level)
{
    if (level == m_minimumLevel)
        return;
    m_minimumLevel = level;
    const int index = m_levelBox->findData(level);
    if (index >= 0 && index != m_levelBox->currentIndex())
        m_levelBox->setCurrentIndex(index);
    refill();
}

void MessageLogPanel::followPreferences()
{
    const int preferred = startLevel();
    if (preferred == m_preferredLevel)
        return;
    m_preferredLevel = preferred;
    setMinimumLevel(preferred);
}

void MessageLogPanel::refill()
{
    QStringList shown;
    for (const Line& line : m_lines) {
        if (line.level >= m_minimumLevel)
            shown.append(format(line));
    }
    m_view->setPlainText(shown.join(QLatin1Char('\n')));
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
}

QString MessageLogPanel::shownText() const
{
    return m_view->toPlainText();
}

QString MessageLogPanel::allText() const
{
    QStringList all;
    for (const Line& line : m_lines)
        all.append(format(line));
    return all.join(QLatin1Char('\n'));
}
