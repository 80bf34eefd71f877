#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What a file (a scene, a hook configuration) would make the program run:
/// scripts and system commands. Files come from other people, so in the
/// editor nothing a file names runs until the user has agreed once for that
/// file; the agreement is remembered in the settings for the file's absolute
/// path together with a digest of what it names, so a changed list asks again.
struct TrustRequest
{
    /// Absolute path of the file that names the scripts and commands.
    QString file;
    /// Digest of what the file names (see ScriptTrust::digest).
    QByteArray digest;
    /// Script files that would run.
    QStringList scripts;
    /// System commands that would run, as the user will see them.
    QStringList commands;

    /// True when the file names nothing to run.
    bool isEmpty() const { return scripts.isEmpty() && commands.isEmpty(); }
};

/// The decision whether a file's scripts and commands may run.
class ScriptTrust
{
public:
    /// Settings group holding the remembered agreements.
    static constexpr const char* kSettingsGroup = "scripttrust";

    /// Decides whether the request may run. A request naming nothing may. In
    /// command-line mode everything runs that the command line asked for (the
    /// places that run them name each in the verbose output). In the editor, an agreement remembered for the file and digest
    /// decides; otherwise the user is asked (UserNotifier::ask, default no)
    /// which scripts and commands would run, and a yes is remembered.
    static bool decide(const TrustRequest& request);
    /// True when the user agreed to exactly this file and digest before.
    static bool isRemembered(const QString& file, const QByteArray& digest);
    /// Remembers an agreement (the user's own edits count as one).
    static void remember(const QString& file, const QByteArray& digest);
    /// A digest of the given texts, in order.
    static QByteArray digest(const QStringList& parts);
    /// The question put to the user.
    static QString questionText(const TrustRequest& request);
};
