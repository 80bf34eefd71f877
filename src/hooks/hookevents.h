#pragma once

#include "editing/editmode.h"

#include <QString>

#include <functional>

class ScriptDocument;
struct ScriptHookData;

/// The editor events that scripts can be attached to, in their fixed order.
enum ScriptHookEvent : int
{
    SHE_KEY_0,
    SHE_KEY_1,
    SHE_KEY_2,
    SHE_KEY_3,
    SHE_KEY_4,
    SHE_KEY_5,
    SHE_KEY_6,
    SHE_KEY_7,
    SHE_KEY_8,
    SHE_KEY_9,
    SHE_IMAGES_DROPPED,
    SHE_BODIES_MANIPULATED,
    SHE_FIXTURES_MANIPULATED,
    SHE_JOINTS_MANIPULATED,
    SHE_VERTICES_MANIPULATED,
    SHE_IMAGES_MANIPULATED,
    SHE_SAMPLERS_MANIPULATED,
    SHE_OBJECTS_MANIPULATED,
    SHE_BEFORE_EXPORT,
    SHE_AFTER_EXPORT,
    SHE_MAX
};

/// The name of an event in the hook configuration file ("KEY_0", ...,
/// "AFTER_EXPORT"); empty for a value outside the enumeration.
QString scriptHookEventConfigName(int event);
/// The event of a configuration file name, or SHE_MAX for an unknown name.
ScriptHookEvent scriptHookEventFromConfigName(const QString& name);
/// The name shown to the user ("Keypress: 0", "Images dropped", ...). A value
/// outside the enumeration logs "Error in getScriptHookEventName" and gives "".
QString scriptHookEventName(int event);
/// The event's description for tooltips. A value outside the enumeration
/// logs "Error in getScriptHookEventTooltip" and gives "".
QString scriptHookEventTooltip(int event);
/// The resource path of the event's icon (":/icons/keyboard.png" for the
/// keys, ":/icons/lightning-purple.png" for the rest). A value outside the
/// enumeration logs "Error in getScriptHookEventIcon" and gives "".
QString scriptHookEventIcon(int event);

/// Where the editor raises hook events. Each event is raised at one place
/// (the transform tools, image drops, digit keys, exports) through raise();
/// the hook machinery installs the handler that runs the attached scripts.
/// Without a handler raising does nothing.
namespace HookEvents
{
/// Runs the scripts of an event: given the document, the event and its data.
using Handler = std::function<void(ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& data)>;

/// Installs the handler (an empty one removes it).
void setHandler(Handler handler);
/// Raises an event for a document.
void raise(ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& data);
/// The manipulation event of an edit mode.
ScriptHookEvent manipulationEvent(EditMode mode);
} // namespace HookEvents
