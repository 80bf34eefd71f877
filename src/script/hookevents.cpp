#include "script/hookevents.h"

#include "script/scripthookdata.h"

namespace
{
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

ScriptHookEvent manipulationEvent(int mode)
{
    static const ScriptHookEvent events[] = {SHE_BODIES_MANIPULATED, SHE_FIXTURES_MANIPULATED,
                                             SHE_VERTICES_MANIPULATED, SHE_JOINTS_MANIPULATED,
                                             SHE_IMAGES_MANIPULATED, SHE_SAMPLERS_MANIPULATED,
                                             SHE_OBJECTS_MANIPULATED};
    return mode >= 0 && mode < 7 ? events[mode] : SHE_BODIES_MANIPULATED;
}
} // namespace HookEvents
