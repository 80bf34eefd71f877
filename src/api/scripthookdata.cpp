#include "api/scripthookdata.h"

namespace
{
ScriptHookData& currentData()
{
    static ScriptHookData s_data;
    return s_data;
}
} // namespace

const ScriptHookData& ScriptHookData::current()
{
    return currentData();
}

ScriptHookDataScope::ScriptHookDataScope(ScriptHookData data) : m_previous(std::move(currentData()))
{
    currentData() = std::move(data);
}

ScriptHookDataScope::~ScriptHookDataScope()
{
    currentData() = std::move(m_previous);
}
