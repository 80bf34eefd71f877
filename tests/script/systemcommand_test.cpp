// System commands run after an export: placeholder resolution and how a
// command is started and reported.
#include "scripttesting.h"

#include "hooks/systemcommand.h"
#include "hooks/systemhookprocess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

TEST(SystemCommandPlaceholders, EachIsReplacedInOrderWithBlanksAllowedInsideTheBraces)
{
    const PlaceholderValues values = PlaceholderValues::of("/games/level one/scene.plax", "/out/json/level.json");
    EXPECT_EQ(values.plaxDir, "/games/level one");
    EXPECT_EQ(values.plaxFile, "scene.plax");
    EXPECT_EQ(values.exportDir, "/out/json");
    EXPECT_EQ(values.exportFile, "level.json");

    EXPECT_EQ(SystemCommand::resolve("cp %{EXPORTDIR}/%{EXPORTFILE} %{PLAXDIR}/%{ PLAXFILE }.bak", values, false),
              "cp /out/json/level.json /games/level one/scene.plax.bak");
    EXPECT_EQ(SystemCommand::resolve("%{ EXPORTFILE}%{EXPORTFILE }%{  EXPORTFILE  }", values, false),
              "level.jsonlevel.jsonlevel.json");
    // Lower case and other names are not placeholders.
    EXPECT_EQ(SystemCommand::resolve("%{plaxdir} %{HOME} %PLAXDIR", values, false), "%{plaxdir} %{HOME} %PLAXDIR");
    // A value that looks like a placeholder is not replaced again.
    const PlaceholderValues tricky = PlaceholderValues::of("/a/%{EXPORTFILE}.plax", "/b/x.json");
    EXPECT_EQ(SystemCommand::resolve("%{PLAXFILE}", tricky, false), "%{EXPORTFILE}.plax");

    const PlaceholderValues native = values.withSeparator(QLatin1Char('\\'));
    EXPECT_EQ(native.plaxDir, "\\games\\level one");
    EXPECT_EQ(SystemCommand::resolve("%{PLAXDIR}", values, true), QDir::toNativeSeparators("/games/level one"));

    EXPECT_EQ(SystemCommand::placeholderNames(),
              QStringList({"%{PLAXDIR}", "%{EXPORTDIR}", "%{PLAXFILE}", "%{EXPORTFILE}"}));
    EXPECT_EQ(SystemCommand::placeholderLabel("%{PLAXDIR}"), "Folder containing .plax file");
    EXPECT_EQ(SystemCommand::placeholderLabel("%{EXPORTDIR}"), "Folder containing exported file");
    EXPECT_EQ(SystemCommand::placeholderLabel("%{PLAXFILE}"), "The .plax file name");
    EXPECT_EQ(SystemCommand::placeholderLabel("%{EXPORTFILE}"), "The exported file name");
}

#ifndef Q_OS_WIN
TEST(SystemCommandPlaceholders, ValuesReachTheShellOnlyAsParameters)
{
    // Outside quotes, inside double quotes and inside single quotes.
    EXPECT_EQ(SystemCommand::shellScript("cat %{EXPORTDIR}/%{EXPORTFILE}"), "cat \"${2}\"/\"${4}\"");
    EXPECT_EQ(SystemCommand::shellScript("echo \"in %{PLAXFILE}\""), "echo \"in ${3}\"");
    EXPECT_EQ(SystemCommand::shellScript("echo 'in %{PLAXFILE}'"), "echo 'in '\"${3}\"''");
    EXPECT_EQ(SystemCommand::shellScript("echo \\%{PLAXFILE}"), "echo \\%{PLAXFILE}");

    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString hostile = QStringLiteral("a b'c\"d;touch INJECTED;$(touch INJECTED2).json");
    const PlaceholderValues values = PlaceholderValues::of(dir.filePath("s.plax"), dir.filePath(hostile));
    for (const char* command : {"echo %{EXPORTFILE} > out1.txt", "echo \"%{EXPORTFILE}\" > out2.txt",
                                "echo '%{EXPORTFILE}' > out3.txt"}) {
        SystemHookProcess process(SystemCommand::prepare(command, "", values, true));
        EXPECT_TRUE(process.run(10000)) << command << process.errorText().toStdString();
    }
    for (const char* out : {"out1.txt", "out2.txt", "out3.txt"})
        EXPECT_EQ(readText(dir.filePath(out)), hostile + "\n") << out;
    EXPECT_FALSE(QFile::exists(dir.filePath("INJECTED")));
    EXPECT_FALSE(QFile::exists(dir.filePath("INJECTED2")));
}

TEST(SystemHookProcessReport, FailureLogsTheCommandTheReasonAndTheOutput)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const PlaceholderValues values = PlaceholderValues::of(dir.filePath("s.plax"), dir.filePath("e.json"));
    NotifierScope notifier(true);
    LogCapture log;
    SystemHookProcess failing(SystemCommand::prepare("echo partial output; exit 4", "", values, false));
    EXPECT_FALSE(failing.run(10000));
    EXPECT_EQ(failing.exitCode(), 4);
    EXPECT_EQ(failing.output(), "partial output");
    EXPECT_TRUE(log.has(LOG_ERROR, "Error executing system command [echo partial output; exit 4]: "
                                   "The command exited with code 4"));
    EXPECT_TRUE(log.has(LOG_ERROR, "partial output"));
    ASSERT_EQ(notifier.boxes().size(), 1);
    EXPECT_TRUE(notifier.boxes()[0].contains("partial output"));

    SystemHookProcess missingFolder(SystemCommand::prepare("true", "no/such/folder", values, false));
    EXPECT_FALSE(missingFolder.run(10000));
    EXPECT_TRUE(missingFolder.errorText().contains("does not exist"));

    SystemHookProcess fine(SystemCommand::prepare("echo fine from %{PLAXFILE}", "", values, false));
    EXPECT_TRUE(fine.run(10000));
    EXPECT_EQ(fine.exitCode(), 0);
    EXPECT_EQ(fine.output(), "fine from s.plax");
}
#endif
