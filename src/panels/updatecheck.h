#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

/// Asks whether a newer version exists: reads a small text file whose first
/// line is the newest version number ("1.9.0") from the address set in the
/// preferences and compares it with this program's version. Off at start-up
/// unless the preferences turn it on; never blocks the interface.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    /// What a check found.
    enum class Outcome
    {
        UpToDate,   ///< the file names this version or an older one
        Newer,      ///< the file names a newer version
        Failed,     ///< no address, no answer or no version in the answer
    };
    Q_ENUM(Outcome)

    /// A checker.
    explicit UpdateCheck(QObject* parent = nullptr);

    /// Starts a check of `url`; finished() follows.
    void start(const QUrl& url);
    /// Starts a check of the address of the preferences (Failed without one).
    void startFromSettings();
    /// True while a check waits for its answer.
    bool isRunning() const { return m_reply != nullptr; }

    /// Compares two dotted version numbers: negative, 0 or positive.
    static int compareVersions(const QString& a, const QString& b);
    /// This program's version as "major.minor.patch".
    static QString currentVersion();
    /// The version number in a version file's text, empty when there is none.
    static QString versionInText(const QByteArray& text);

signals:
    /// The check ended: the outcome, the version found (if any) and a
    /// sentence for the user.
    void finished(UpdateCheck::Outcome outcome, const QString& version, const QString& message);

private:
    void replyFinished();

    QNetworkAccessManager* m_network;
    QNetworkReply* m_reply = nullptr;
};
