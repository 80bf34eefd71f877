// The help browser's generated reference and search, the about box, the tips
// and the update check against a local HTTP server.
#include "base/settings.h"
#include "panels/aboutdialog.h"
#include "panels/helpbrowser.h"
#include "panels/preferencesdialog.h"
#include "panels/scriptapicatalog.h"
#include "panels/tipsdialog.h"
#include "panels/updatecheck.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextBrowser>
#include <QtTest/QTest>

namespace
{
/// A one-file HTTP server on the loopback interface: every request gets the
/// same status and body.
class VersionServer
{
public:
    VersionServer(int status, const QByteArray& body)
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost, 0));
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this, status, body] {
            QTcpSocket* socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, status, body] {
                m_requests.append(socket->readAll());
                const QByteArray reason = status == 200 ? "OK" : "Not Found";
                socket->write("HTTP/1.1 " + QByteArray::number(status) + " " + reason + "\r\nContent-Type: text/plain\r\n"
                              "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
                socket->disconnectFromHost();
            });
        });
    }
    QUrl url() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/plax/version.txt").arg(m_server.serverPort())); }
    const QList<QByteArray>& requests() const { return m_requests; }

private:
    QTcpServer m_server;
    QList<QByteArray> m_requests;
};

struct CheckResult
{
    UpdateCheck::Outcome outcome = UpdateCheck::Outcome::Failed;
    QString version;
    QString message;
};

CheckResult check(UpdateCheck& checker, const std::function<void()>& start)
{
    QSignalSpy spy(&checker, &UpdateCheck::finished);
    start();
    EXPECT_TRUE(spy.count() > 0 || spy.wait(10000));
    CheckResult result;
    if (!spy.isEmpty()) {
        result.outcome = spy.first().at(0).value<UpdateCheck::Outcome>();
        result.version = spy.first().at(1).toString();
        result.message = spy.first().at(2).toString();
    }
    return result;
}
} // namespace

TEST(HelpBrowser, ReferenceListsTheRegisteredApiAndSearchFilters)
{
    const ScriptApiCatalog& catalog = ScriptApiCatalog::instance();
    HelpBrowser help;
    const QString page = help.browser()->toPlainText();
    EXPECT_TRUE(page.contains("plaxscript reference")) << "the introduction with the examples";
    EXPECT_TRUE(page.contains("b.setAngle(dr(45));"));
    int declarations = 0;
    for (const auto& entry : catalog.functions())
        declarations += int(entry.declarations.size());
    for (const QString& type : catalog.typesWithMembers()) {
        declarations += int(catalog.properties(type).size());
        for (const auto& entry : catalog.methods(type))
            declarations += int(entry.declarations.size());
    }
    EXPECT_EQ(help.shownEntries(), declarations) << "every registered declaration is in the reference";
    for (const char* needle : {"body getBody(int)", "void fixture::setDensity(float)", "string getCurrentActionMenuFolder()",
                               "void setExportPropertyExcluded(const string&in, bool)"})
        EXPECT_TRUE(page.contains(needle)) << needle;

    QTest::keyClicks(help.searchField(), "density");
    const QString found = help.browser()->toPlainText();
    EXPECT_GT(help.shownEntries(), 0);
    EXPECT_LT(help.shownEntries(), declarations);
    EXPECT_TRUE(found.contains("setDensity"));
    EXPECT_FALSE(found.contains("getBody(int)"));
    EXPECT_FALSE(found.contains("plaxscript reference")) << "a search shows only matching entries";

    help.searchField()->setText("zzzz nothing");
    EXPECT_EQ(help.shownEntries(), 0);
    EXPECT_TRUE(help.browser()->toPlainText().contains("Nothing matches"));
    help.searchField()->clear();
    EXPECT_EQ(help.shownEntries(), declarations);
}

TEST(AboutAndTips, AboutNamesTheLibrariesAndTipsCanBeTurnedOff)
{
    const QString about = AboutDialog::versionText();
    EXPECT_TRUE(about.contains(QStringLiteral("Qt %1").arg(qVersion())));
    EXPECT_TRUE(about.contains("Box2D 2.4.1"));
    EXPECT_TRUE(about.contains("AngelScript 2.35"));
    EXPECT_TRUE(about.contains("QScintilla 2."));
    EXPECT_TRUE(about.contains("RapidJSON 1."));
    EXPECT_TRUE(about.contains("P.L.A.X " + UpdateCheck::currentVersion()));

    openAppSettings()->clear();
    EXPECT_TRUE(TipsDialog::showAtStartup()) << "on by default";
    {
        TipsDialog tips;
        const int first = tips.currentTip();
        tips.nextTip();
        EXPECT_EQ(tips.currentTip(), (first + 1) % TipsDialog::tips().size());
        tips.showCheckBox()->setChecked(false);
    }
    EXPECT_FALSE(TipsDialog::showAtStartup());
    TipsDialog again;
    EXPECT_FALSE(again.showCheckBox()->isChecked());
    EXPECT_NE(again.currentTip(), 0) << "the next start shows the next tip";
    openAppSettings()->clear();
}

TEST(UpdateCheck, ComparesVersionNumbers)
{
    EXPECT_LT(UpdateCheck::compareVersions("1.8.0", "1.10.0"), 0);
    EXPECT_GT(UpdateCheck::compareVersions("2", "1.99.99"), 0);
    EXPECT_EQ(UpdateCheck::compareVersions("1.8", "1.8.0"), 0);
    EXPECT_EQ(UpdateCheck::versionInText("1.9.3\nnotes follow\n"), "1.9.3");
    EXPECT_EQ(UpdateCheck::versionInText("v2.0"), "2.0");
    EXPECT_TRUE(UpdateCheck::versionInText("<html>not found</html>").isEmpty());
}

TEST(UpdateCheck, ReadsTheVersionFileFromTheAddressInThePreferences)
{
    openAppSettings()->clear();
    UpdateCheck checker;
    CheckResult none = check(checker, [&] { checker.startFromSettings(); });
    EXPECT_EQ(none.outcome, UpdateCheck::Outcome::Failed) << "no address, no check";

    VersionServer newer(200, "99.0.1\n");
    openAppSettings()->setValue(PreferenceKeys::kUpdateUrl, newer.url().toString());
    CheckResult found = check(checker, [&] { checker.startFromSettings(); });
    EXPECT_EQ(found.outcome, UpdateCheck::Outcome::Newer) << found.message.toStdString();
    EXPECT_EQ(found.version, "99.0.1");
    EXPECT_TRUE(found.message.contains("99.0.1"));
    ASSERT_EQ(newer.requests().size(), 1);
    EXPECT_TRUE(newer.requests().first().startsWith("GET /plax/version.txt HTTP/1.1"));

    VersionServer same(200, UpdateCheck::currentVersion().toUtf8());
    CheckResult upToDate = check(checker, [&] { checker.start(same.url()); });
    EXPECT_EQ(upToDate.outcome, UpdateCheck::Outcome::UpToDate) << upToDate.message.toStdString();

    VersionServer garbage(200, "<html>hello</html>");
    EXPECT_EQ(check(checker, [&] { checker.start(garbage.url()); }).outcome, UpdateCheck::Outcome::Failed);
    VersionServer missing(404, "1.0.0");
    EXPECT_EQ(check(checker, [&] { checker.start(missing.url()); }).outcome, UpdateCheck::Outcome::Failed);

    quint16 closedPort = 0;
    {
        QTcpServer probe;
        ASSERT_TRUE(probe.listen(QHostAddress::LocalHost, 0));
        closedPort = probe.serverPort();
    }
    CheckResult refused = check(checker, [&] { checker.start(QUrl(QStringLiteral("http://127.0.0.1:%1/v").arg(closedPort))); });
    EXPECT_EQ(refused.outcome, UpdateCheck::Outcome::Failed);
    openAppSettings()->clear();
}
