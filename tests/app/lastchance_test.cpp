// An unhandled exception ends plax through the last-chance handler: the
// process exits with a failure code and leaves a trace file named by the
// time it died, with the exception's text, and a line in the log.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "support/logcapture.h"
#include "support/testfiles.h"

namespace
{
struct Death
{
    int exitCode = -1;
    QStringList traceFiles;
    QDateTime before;
    QDateTime after;
};

// Runs the probe (plax's start-up with a throwing log listener) in `dir` on
// a batch request whose input is missing, so that an error is logged.
Death runProbe(const QTemporaryDir& dir, const char* how)
{
    QProcess probe;
    probe.setWorkingDirectory(dir.path());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("PLAX_PROBE_THROW", how);
    env.insert("XDG_CONFIG_HOME", dir.filePath("config-home"));
    probe.setProcessEnvironment(env);
    Death death;
    death.before = QDateTime::currentDateTime().addSecs(-1);
    probe.start(QStringLiteral(PLAX_LASTCHANCE_PROBE), {"-i", "missing.plax"});
    EXPECT_TRUE(probe.waitForFinished(60000));
    death.after = QDateTime::currentDateTime().addSecs(1);
    death.exitCode = probe.exitStatus() == QProcess::NormalExit ? probe.exitCode() : -1;
    death.traceFiles = QDir(dir.path()).entryList({"plax-exception-trace-*"}, QDir::Files);
    return death;
}

// The trace file's name holds the time: year, month, day, hour, minute and
// second, each at least two digits.
void expectTimestampedName(const Death& death)
{
    ASSERT_EQ(death.traceFiles.size(), 1) << death.traceFiles.join(' ').toStdString();
    const QRegularExpressionMatch name =
        QRegularExpression(R"(^plax-exception-trace-(\d{8}-\d{6})\.log$)").match(death.traceFiles.first());
    ASSERT_TRUE(name.hasMatch()) << death.traceFiles.first().toStdString();
    const QDateTime stamp = QDateTime::fromString(name.captured(1), "yyyyMMdd-HHmmss");
    ASSERT_TRUE(stamp.isValid()) << name.captured(1).toStdString();
    EXPECT_GE(stamp, death.before.addMSecs(-death.before.time().msec()));
    EXPECT_LE(stamp, death.after);
}
} // namespace

TEST(LastChance, AnExceptionWithTextWritesTheTraceFileAndExitsWithFailure)
{
    QTemporaryDir dir;
    const Death death = runProbe(dir, "text");
    EXPECT_EQ(death.exitCode, 1);
    expectTimestampedName(death);
    if (!death.traceFiles.isEmpty()) {
        EXPECT_EQ(TestFiles::read(dir.filePath(death.traceFiles.first())),
                  "Exiting due to exception - thrown on the main thread.\n\n");
    }
    EXPECT_TRUE(TestFiles::readText(dir.filePath("plax.log"))
                    .contains("* FATAL  ]: Exiting due to exception - thrown on the main thread.\n"));
}

TEST(LastChance, AnExceptionWithoutTextIsNamedAsSuch)
{
    QTemporaryDir dir;
    const Death death = runProbe(dir, "nothing");
    EXPECT_EQ(death.exitCode, 1);
    expectTimestampedName(death);
    EXPECT_TRUE(TestFiles::readText(dir.filePath("plax.log")).contains("* FATAL  ]: Exiting due to exception.\n"));
}

TEST(LastChance, AnExceptionLeavingAWorkerThreadEndsTheProcessTheSameWay)
{
    QTemporaryDir dir;
    const Death death = runProbe(dir, "thread");
    EXPECT_EQ(death.exitCode, 1);
    expectTimestampedName(death);
    if (!death.traceFiles.isEmpty()) {
        EXPECT_EQ(TestFiles::read(dir.filePath(death.traceFiles.first())),
                  "Exiting due to exception - thrown on a worker thread.\n\n");
    }
}
