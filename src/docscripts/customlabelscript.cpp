#include "docscripts/customlabelscript.h"

#include "api/scriptcolor.h"
#include "base/log.h"
#include "model/metaitem.h"

#include <algorithm>
#include <cmath>
#include <string>

using namespace AngelScript;

namespace
{
const char* const kKinds[kItemKindCount] = {"body", "fixture", "joint", "image", "sampler", "object"};

std::vector<DocumentScriptModule::Lookup> lookups()
{
    std::vector<DocumentScriptModule::Lookup> list;
    for (const char* kind : kKinds) {
        const QString k = QLatin1String(kind);
        list.push_back({QStringLiteral("void setLabelColors(%1, color &out, color &out)").arg(k),
                        QStringLiteral("Found script function for custom label colors: %1").arg(k)});
        list.push_back({QStringLiteral("void setLabelText(%1, string &out)").arg(k),
                        QStringLiteral("Found script function for custom label text: %1").arg(k)});
    }
    return list;
}

QColor toColor(const ScriptColor& c)
{
    auto unit = [](float v) { return std::isfinite(v) ? std::clamp(double(v), 0.0, 1.0) : 0.0; };
    return QColor::fromRgbF(float(unit(c.r)), float(unit(c.g)), float(unit(c.b)), float(unit(c.a)));
}
} // namespace

CustomLabelScript::CustomLabelScript() : m_module(ScriptModuleKind::CustomLabels, lookups()) {}

bool CustomLabelScript::hasFunctions(ItemKind kind) const
{
    const size_t at = size_t(kind) * 2;
    return m_module.function(at) || m_module.function(at + 1);
}

void CustomLabelScript::reportFailure(const MetaItem& item, const QString& why)
{
    if (m_failureReported)
        return;
    m_failureReported = true;
    plaxLog(LOG_ERROR, QStringLiteral("The custom labels script failed for %1 '%2' (the default label is shown): %3")
                           .arg(itemKindWord(item.kind()), item.name(), why));
}

CustomLabelScript::Pass::Pass(CustomLabelScript& script, ScriptDocument& document)
    : m_script(script), m_call(document, DocumentScriptCall::Lock::Try)
{
}

bool CustomLabelScript::Pass::apply(const MetaItem& item, CustomLabel* label)
{
    if (!isReady())
        return false;
    const size_t at = size_t(item.kind()) * 2;
    bool ran = false;
    if (asIScriptFunction* colors = m_script.m_module.function(at)) {
        ScriptColor background, foreground;
        background.set1(0, 0, 0, 1);
        foreground.set1(1, 1, 1, 1);
        const bool ok = m_call.call(colors, [&](asIScriptContext& context) {
            DocumentScriptCall::setItemArgument(context, 0, item);
            context.SetArgAddress(1, &background);
            context.SetArgAddress(2, &foreground);
        });
        if (ok) {
            label->background = toColor(background);
            label->foreground = toColor(foreground);
            ran = true;
        } else {
            m_script.reportFailure(item, m_call.failure());
        }
    }
    if (asIScriptFunction* textFunction = m_script.m_module.function(at + 1)) {
        std::string text = label->text.toStdString();
        const bool ok = m_call.call(textFunction, [&](asIScriptContext& context) {
            DocumentScriptCall::setItemArgument(context, 0, item);
            context.SetArgAddress(1, &text);
        });
        if (ok) {
            label->text = QString::fromStdString(text);
            ran = true;
        } else {
            m_script.reportFailure(item, m_call.failure());
        }
    }
    return ran;
}
