#include "engine/scriptuihooks.h"

namespace
{
ScriptUiHooks& installed()
{
    static ScriptUiHooks s_hooks;
    return s_hooks;
}
} // namespace

namespace ScriptUi
{
void setHooks(ScriptUiHooks hooks)
{
    installed() = std::move(hooks);
}

const ScriptUiHooks& hooks()
{
    return installed();
}
} // namespace ScriptUi
