#include "panels/updatecheck.h"

#include "base/log.h"
#include "base/settings.h"
#include "base/version.h"
#include "panels/preferencesdialog.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>

UpdateCheck::UpdateCheck(QObject* parent) : QObject(parent), m_network(new QNetworkAccessManager(this))
{
    setObjectName(QStringLiteral("UpdateCheck"));
}

QString UpdateCheck::currentVersion()
{
    return QStringLiteral("%1.%2.%3").arg(Version::kMajor).arg(Version::kMinor).arg(Version::kPatch);
}

int UpdateCheck::compareVersions(const QString& a, const QString& b)
{
    const QStringList left = a.split(QLatin1Char('.'));
    const QStringList right = b.split(QLatin1Char('.'));
    for (qsizetype i = 0; i < qMax(left.size(), right.size()); ++i) {
        const int l = i < left.size() ? left[i].toInt() : 0;
        const int r = i < right.size() ? right[i].toInt() : 0;
        if (l != r)
            return l < r ? -1 : 1;
    }
    return 0;
}

QString UpdateCheck::versionInText(const QByteArray& text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*v?(\\d+(?:\\.\\d+){0,3})\\s*$"));
    const QString firstLine = QString::fromUtf8(text).section(QLatin1Char('\n'), 0, 0);
    const QRegularExpressionMatch match = pattern.match(firstLine);
    return match.hasMatch() ? match.captured(1) : QString();
}

void UpdateCheck::startFromSettings()
{
    const QString address = openAppSettings()->value(QLatin1String(PreferenceKeys::kUpdateUrl)).toString().trimmed();
    if (address.isEmpty()) {
        emit finished(Outcome::Failed, QString(),
                      tr("No address for the update check is set (Preferences, Help and updates)."));
        return;
    }
    start(QUrl::fromUserInput(address));
}

void UpdateCheck::start(const QUrl& url)
{
    if (m_reply)
        return;
    if (!url.isValid()) {
        emit finished(Outcome::Failed, QString(), tr("The update address '%1' is not valid.").arg(url.toString()));
        return;
    }
    plaxLog(LOG_INFO, QStringLiteral("Checking for updates at %1").arg(url.toString()));
    QNetworkRequest request(url);
    request.setTransferTimeout(10000);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    m_reply = m_network->get(request);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateCheck::replyFinished);
}

void UpdateCheck::replyFinished()
{
    QNetworkReply* reply = m_reply;
    m_reply = nullptr;
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        const QString message = tr("The update check failed: %1").arg(reply->errorString());
        plaxLog(LOG_WARNING, message);
        emit finished(Outcome::Failed, QString(), message);
        return;
    }
    const QString version = versionInText(reply->read(4096));
    if (version.isEmpty()) {
        const QString message = tr("The update check found no version number at %1.").arg(reply->url().toString());
        plaxLog(LOG_WARNING, message);
        emit finished(Outcome::Failed, QString(), message);
        return;
    }
    const bool newer = compareVersions(version, currentVersion()) > 0;
    const QString message = newer ? tr("P.L.A.X %1 is available (this is %2).").arg(version, currentVersion())
                                  : tr("P.L.A.X %1 is the newest version.").arg(currentVersion());
    plaxLog(LOG_INFO, message);
    emit finished(newer ? Outcome::Newer : Outcome::UpToDate, version, message);
}
