// The message log panel on its own: which lines it shows at each level, how
// many it keeps, and that a lower level brings back lines logged earlier.
#include "base/log.h"
#include "base/settings.h"
#include "panels/messagelogpanel.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QToolButton>
#include <QtTest/QTest>

TEST(MessageLogPanel, EachLevelShowsItselfAndWhatIsMoreSevere)
{
    openAppSettings()->clear();
    MessageLogPanel panel;
    const std::pair<int, const char*> lines[] = {{LOG_DEBUG, "d"},     {LOG_INFO, "i"},    {LOG_SYSTEM, "s"},
                                                 {LOG_SCRIPT, "p"},    {LOG_WARNING, "w"}, {LOG_ERROR, "e"},
                                                 {LOG_FATAL, "f"}};
    for (const auto& [level, text] : lines)
        panel.append(level, QString::fromLatin1(text));
    const auto shownWords = [&panel] {
        QStringList words;
        for (const QString& line : panel.shownText().split('\n', Qt::SkipEmptyParts))
            words.append(line.section(": ", 1));
        return words.join(QString());
    };
    EXPECT_EQ(panel.minimumLevel(), LOG_INFO);
    EXPECT_EQ(shownWords(), "ispwef");
    panel.setMinimumLevel(LOG_DEBUG);
    EXPECT_EQ(shownWords(), "dispwef");
    EXPECT_EQ(panel.levelBox()->currentData().toInt(), LOG_DEBUG) << "the box follows";
    panel.levelBox()->setCurrentIndex(panel.levelBox()->findData(LOG_ERROR));
    EXPECT_EQ(panel.minimumLevel(), LOG_ERROR);
    EXPECT_EQ(shownWords(), "ef");
    // New lines below the level are kept but not shown.
    panel.append(LOG_INFO, "later");
    EXPECT_EQ(shownWords(), "ef");
    panel.setMinimumLevel(LOG_INFO);
    EXPECT_EQ(shownWords(), "ispweflater");
    EXPECT_TRUE(panel.shownText().startsWith("[  INFO   ]: i"));
}

TEST(MessageLogPanel, KeepsTheNewestLinesAndClearEmptiesIt)
{
    openAppSettings()->clear();
    MessageLogPanel panel;
    for (int i = 0; i < MessageLogPanel::kMaxLines + 10; ++i)
        panel.append(i % 2 ? LOG_INFO : LOG_DEBUG, QString::number(i));
    const QStringList all = panel.allText().split('\n');
    ASSERT_EQ(all.size(), MessageLogPanel::kMaxLines);
    EXPECT_TRUE(all.front().endsWith(": 10"));
    EXPECT_TRUE(all.back().endsWith(QStringLiteral(": %1").arg(MessageLogPanel::kMaxLines + 9)));
    panel.setMinimumLevel(LOG_DEBUG);
    EXPECT_EQ(panel.shownText().split('\n').size(), MessageLogPanel::kMaxLines);

    auto* clear = panel.findChild<QToolButton*>("MessageLogClear");
    ASSERT_NE(clear, nullptr);
    QTest::mouseClick(clear, Qt::LeftButton);
    EXPECT_TRUE(panel.allText().isEmpty());
    EXPECT_TRUE(panel.shownText().isEmpty());
}
