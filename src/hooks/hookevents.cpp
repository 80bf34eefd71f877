#include "hooks/hookevents.h"

#include "api/scripthookdata.h"
#include "base/log.h"

#include <QCoreApplication>

namespace
{
const char* const kConfigNames[SHE_MAX] = {
    "KEY_0", "KEY_1", "KEY_2", "KEY_3", "KEY_4", "KEY_5", "KEY_6", "KEY_7", "KEY_8", "KEY_9",
    "IMAGES_DROPPED", "BODIES_MANIPULATED", "FIXTURES_MANIPULATED", "JOINTS_MANIPULATED",
    "VERTICES_MANIPULATED", "IMAGES_MANIPULATED", "SAMPLERS_MANIPULATED", "OBJECTS_MANIPULATED",
    "BEFORE_EXPORT", "AFTER_EXPORT",
};

// Shown names and descriptions of the events after the ten keys.
struct NamedEvent
{
    const char* name;
    const char* tooltip;
};
const NamedEvent kNamedEvents[SHE_MAX - SHE_IMAGES_DROPPED] = {
    {QT_TRANSLATE_NOOP("ScriptHooks", "Images dropped"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered when images are added to the scene by drag and drop<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Bodies manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after bodies are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Fixtures manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after fixtures are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Joints manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after joints are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Vertices manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after vertices are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Images manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after images are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Samplers manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after samplers are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Objects manipulated"),
     QT_TRANSLATE_NOOP("ScriptHooks", "Triggered after objects are translated, rotated or scaled<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "Before export"),
     QT_TRANSLATE_NOOP("ScriptHooks",
                       "Triggered immediately before performing an export to raw info or .cpp source code<br>")},
    {QT_TRANSLATE_NOOP("ScriptHooks", "After export"),
     QT_TRANSLATE_NOOP("ScriptHooks",
                       "Triggered immediately after performing an export to raw info or .cpp source code<br>")},
};

bool known(int event)
{
    return event >= 0 && event < SHE_MAX;
}

QString tr(const char* text)
{
    return QCoreApplication::translate("ScriptHooks", text);
}

HookEvents::Handler& handler()
{
    static HookEvents::Handler h;
    return h;
}
} // namespace

namespace HookEvents
{
void setHandler(Handler h)
{
    handler() = std::move(h);
}

void raise(ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& data)
{
    if (handler())
        handler()(document, event, data);
}

ScriptHookEvent manipulationEvent(EditMode mode)
{
    switch (mode) {
    case EditMode::Bodies: break;
    case EditMode::Fixtures: return SHE_FIXTURES_MANIPULATED;
    case EditMode::Vertices: return SHE_VERTICES_MANIPULATED;
    case EditMode::Joints: return SHE_JOINTS_MANIPULATED;
    case EditMode::Images: return SHE_IMAGES_MANIPULATED;
    case EditMode::Samplers: return SHE_SAMPLERS_MANIPULATED;
    case EditMode::Objects: return SHE_OBJECTS_MANIPULATED;
    }
    return SHE_BODIES_MANIPULATED;
}
} // namespace HookEvents

QString scriptHookEventConfigName(int event)
{
    if (!known(event)) {
        plaxLog(LOG_ERROR, "Error in getScriptHookEventName");
        return QString();
    }
    return QString::fromLatin1(kConfigNames[event]);
}

ScriptHookEvent scriptHookEventFromConfigName(const QString& name)
{
    for (int i = 0; i < SHE_MAX; ++i) {
        if (name == QLatin1String(kConfigNames[i]))
            return ScriptHookEvent(i);
    }
    return SHE_MAX;
}

QString scriptHookEventName(int event)
{
    if (!known(event)) {
        plaxLog(LOG_ERROR, "Error in getScriptHookEventName");
        return QString();
    }
    if (event <= SHE_KEY_9)
        return tr("Keypress: %1").arg(event - SHE_KEY_0);
    return tr(kNamedEvents[event - SHE_IMAGES_DROPPED].name);
}

QString scriptHookEventTooltip(int event)
{
    if (!known(event)) {
        plaxLog(LOG_ERROR, "Error in getScriptHookEventTooltip");
        return QString();
    }
    if (event <= SHE_KEY_9)
        return tr("Triggered when the %1 key is pressed while editor view has keyboard focus<br>").arg(event - SHE_KEY_0);
    return tr(kNamedEvents[event - SHE_IMAGES_DROPPED].tooltip);
}

QString scriptHookEventIcon(int event)
{
    if (!known(event)) {
        plaxLog(LOG_ERROR, "Error in getScriptHookEventIcon");
        return QString();
    }
    return event <= SHE_KEY_9 ? QStringLiteral(":/icons/keyboard.png") : QStringLiteral(":/icons/lightning-purple.png");
}
