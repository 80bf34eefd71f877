#include "hooks/scripthookstable.h"

#include "base/log.h"
#include "base/notify.h"
#include "io/jsontext.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <rapidjson/document.h>

QStringList ScriptHooksTable::scripts(ScriptHookEvent event) const
{
    return event >= 0 && event < SHE_MAX ? m_scripts[size_t(event)] : QStringList();
}

void ScriptHooksTable::setScripts(ScriptHookEvent event, const QStringList& scripts)
{
    if (event < 0 || event >= SHE_MAX)
        return;
    QStringList kept;
    for (const QString& script : scripts) {
        if (!script.isEmpty())
            kept.append(script);
    }
    m_scripts[size_t(event)] = kept;
}

bool ScriptHooksTable::isEmpty() const
{
    for (const QStringList& list : m_scripts) {
        if (!list.isEmpty())
            return false;
    }
    return true;
}

QStringList ScriptHooksTable::allScripts() const
{
    QStringList all;
    for (const QStringList& list : m_scripts)
        all += list;
    return all;
}

bool ScriptHooksTable::read(const QString& path, QByteArray* content)
{
    m_scripts = {};
    if (content)
        content->clear();
    if (!QFileInfo::exists(path)) {
        // No file simply means no hooks: not worth a warning on every start.
        plaxLog(LOG_INFO, QStringLiteral("Could not find file: '%1'").arg(path));
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file for reading: '%1'").arg(path));
        return false;
    }
    const QByteArray text = file.readAll();
    rapidjson::Document json;
    QString error;
    if (!parseJson(text, &json, &error)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to parse JSON from file '%1' : %2").arg(path, error));
        return false;
    }
    if (content)
        *content = text;
    if (!json.IsObject())
        return true;
    const auto events = json.FindMember("events");
    if (events == json.MemberEnd() || !events->value.IsArray())
        return true;
    for (const rapidjson::Value& entry : events->value.GetArray()) {
        if (!entry.IsObject())
            continue;
        const auto trigger = entry.FindMember("trigger");
        const auto scripts = entry.FindMember("scripts");
        if (trigger == entry.MemberEnd() || !trigger->value.IsString() || scripts == entry.MemberEnd() ||
            !scripts->value.IsArray())
            continue;
        const ScriptHookEvent event = scriptHookEventFromConfigName(QString::fromUtf8(trigger->value.GetString()));
        if (event == SHE_MAX)
            continue;
        QStringList list;
        for (const rapidjson::Value& script : scripts->value.GetArray()) {
            if (script.IsString() && script.GetStringLength() > 0)
                list.append(QString::fromUtf8(script.GetString(), int(script.GetStringLength())));
        }
        m_scripts[size_t(event)] = list;
    }
    return true;
}

QByteArray ScriptHooksTable::toJson() const
{
    static_assert(std::tuple_size_v<decltype(m_scripts)> == SHE_MAX, "one script list per hook event");
    rapidjson::Document json(rapidjson::kObjectType);
    auto& alloc = json.GetAllocator();
    rapidjson::Value events(rapidjson::kArrayType);
    for (int i = 0; i < SHE_MAX; ++i) {
        if (m_scripts[size_t(i)].isEmpty())
            continue;
        rapidjson::Value entry(rapidjson::kObjectType);
        entry.AddMember("trigger", rapidjson::Value(scriptHookEventConfigName(i).toStdString(), alloc), alloc);
        rapidjson::Value scripts(rapidjson::kArrayType);
        for (const QString& script : m_scripts[size_t(i)])
            scripts.PushBack(rapidjson::Value(script.toStdString(), alloc), alloc);
        entry.AddMember("scripts", scripts, alloc);
        events.PushBack(entry, alloc);
    }
    json.AddMember("events", events, alloc);
    return jsonToText(json, true);
}

bool ScriptHooksTable::write(const QString& path) const
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(toJson()) < 0 || !file.commit()) {
        const QString message =
            QCoreApplication::translate("ScriptHooks", "Could not open file '%1' for writing.").arg(path);
        plaxLog(LOG_ERROR, message);
        UserNotifier::show(UserNotifier::Kind::Critical, QStringLiteral("P.L.A.X"), message);
        return false;
    }
    return true;
}
