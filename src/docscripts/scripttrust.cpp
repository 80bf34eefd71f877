#include "docscripts/scripttrust.h"

#include "base/flags.h"
#include "base/log.h"
#include "base/notify.h"
#include "base/settings.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QSettings>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("ScriptTrust", text);
}

// Settings keys cannot hold every character of a path: the key is a digest of it.
QString keyFor(const QString& file)
{
    const QByteArray hash = QCryptographicHash::hash(file.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QStringLiteral("%1/%2").arg(QLatin1String(ScriptTrust::kSettingsGroup), QString::fromLatin1(hash));
}
} // namespace

QByteArray ScriptTrust::digest(const QStringList& parts)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& part : parts) {
        const QByteArray bytes = part.toUtf8();
        // The length first, so that ("ab", "c") and ("a", "bc") differ.
        hash.addData(QByteArray::number(bytes.size()) + ':');
        hash.addData(bytes);
    }
    return hash.result().toHex();
}

bool ScriptTrust::isRemembered(const QString& file, const QByteArray& digest)
{
    return openAppSettings()->value(keyFor(file)).toByteArray() == digest;
}

void ScriptTrust::remember(const QString& file, const QByteArray& digest)
{
    openAppSettings()->setValue(keyFor(file), digest);
}

QString ScriptTrust::questionText(const TrustRequest& request)
{
    QString list;
    for (const QString& script : request.scripts)
        list += tr("script '%1'").arg(script) + QLatin1Char('\n');
    for (const QString& command : request.commands)
        list += tr("system command: %1").arg(command) + QLatin1Char('\n');
    return tr("The file '%1' asks to run:\n\n%2\nScripts and system commands can change or delete files on this "
              "computer. Let them run only if you trust where the file came from.\n\nRun them?")
        .arg(request.file, list);
}

bool ScriptTrust::decide(const TrustRequest& request)
{
    if (request.isEmpty())
        return true;
    // The command line names what to run: the user asked for it there.
    if (AppFlags::isBatchMode())
        return true;
    if (isRemembered(request.file, request.digest))
        return true;
    const bool yes = UserNotifier::ask(tr("Run scripts from this file?"), questionText(request), false);
    if (yes) {
        remember(request.file, request.digest);
        plaxLog(LOG_INFO, QStringLiteral("Allowed the scripts and commands of '%1'").arg(request.file));
    } else {
        plaxLog(LOG_WARNING,
                QStringLiteral("Not running the scripts and commands of '%1': not allowed").arg(request.file));
    }
    return yes;
}
