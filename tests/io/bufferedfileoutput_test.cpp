// Where the buffered output puts its bytes: regular files are replaced whole
// on commit, devices and named pipes are written in place and stay what they are.
#include "io/bufferedfileoutput.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace
{
bool isCharacterDevice(const char* path)
{
    struct stat info = {};
    return ::lstat(path, &info) == 0 && S_ISCHR(info.st_mode);
}

bool isFifo(const QString& path)
{
    struct stat info = {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISFIFO(info.st_mode);
}

// A reader at the other end of a named pipe, collecting what arrives until
// the writer closes it.
class PipeReader
{
public:
    explicit PipeReader(const QString& path) : m_path(QFile::encodeName(path).toStdString())
    {
        m_thread = std::thread([this] {
            const int fd = ::open(m_path.c_str(), O_RDONLY);
            if (fd < 0)
                return;
            char chunk[4096];
            for (ssize_t got; (got = ::read(fd, chunk, sizeof chunk)) > 0;)
                m_received.append(chunk, qsizetype(got));
            ::close(fd);
        });
    }

    // Waits for the reader; a reader still waiting for a writer (the output
    // never opened the pipe) is let go by opening and closing the other end.
    QByteArray finish()
    {
        const int fd = ::open(m_path.c_str(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0)
            ::close(fd);
        m_thread.join();
        return m_received;
    }

private:
    std::string m_path;
    std::thread m_thread;
    QByteArray m_received;
};
} // namespace

TEST(BufferedFileOutput, ARegularFileIsReplacedOnlyOnCommit)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("scene.json");
    {
        QFile old(path);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
    }
    {
        BufferedFileOutput out(path);
        ASSERT_TRUE(out.isOpen());
        EXPECT_FALSE(out.writesInPlace());
        out.write("new text", 8);
        EXPECT_EQ(TestFiles::read(path), "old") << "nothing reaches the target before commit";
    }
    EXPECT_EQ(TestFiles::read(path), "old") << "without commit the file stays as it was";
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"scene.json"})) << "no temporary file is left";

    BufferedFileOutput out(path);
    // More than one buffer's worth, so that full buffers are handed on as well.
    const QByteArray text(200000, 'x');
    out.write(text.constData(), size_t(text.size()));
    out.Put('!');
    ASSERT_TRUE(out.commit());
    EXPECT_EQ(TestFiles::read(path), text + '!');
}

TEST(BufferedFileOutput, ANamedPipeIsWrittenInPlaceAndStaysAPipe)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_TRUE(BufferedFileOutput::isSpecialFile(path));
    EXPECT_FALSE(BufferedFileOutput::isSpecialFile(dir.path())) << "a folder is not written in place";
    EXPECT_FALSE(BufferedFileOutput::isSpecialFile(dir.filePath("missing.json")));

    PipeReader reader(path);
    const QByteArray text = QByteArray("{\"body\": []}\n").repeated(10000);
    bool committed = false;
    {
        BufferedFileOutput out(path);
        ASSERT_TRUE(out.isOpen());
        EXPECT_TRUE(out.writesInPlace());
        out.write(text.constData(), size_t(text.size()));
        committed = out.commit();
    }
    EXPECT_TRUE(committed);
    EXPECT_EQ(reader.finish(), text);
    EXPECT_TRUE(isFifo(path)) << "the pipe was not replaced by a file";
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::System), QStringList({"pipe"}));
}

TEST(BufferedFileOutput, DevNullTakesTheBytesAndStaysADevice)
{
    ASSERT_TRUE(isCharacterDevice("/dev/null"));
    BufferedFileOutput out(QStringLiteral("/dev/null"));
    ASSERT_TRUE(out.isOpen()) << out.errorString().toStdString();
    EXPECT_TRUE(out.writesInPlace());
    const QByteArray text(100000, 'y');
    out.write(text.constData(), size_t(text.size()));
    EXPECT_TRUE(out.commit());
    EXPECT_TRUE(isCharacterDevice("/dev/null"));
}
