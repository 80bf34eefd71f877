#include "engine/scriptmodules.h"

#include <QRegularExpression>

namespace ScriptModules
{
QString moduleName(ScriptModuleKind kind, int documentIdentity)
{
    switch (kind) {
    case ScriptModuleKind::Live: return QStringLiteral("(plaxscript live %1)").arg(documentIdentity);
    case ScriptModuleKind::OneShot: return QStringLiteral("(plaxscript one shot)");
    case ScriptModuleKind::CustomLabels: return QStringLiteral("(plaxscript custom labels %1)").arg(documentIdentity);
    case ScriptModuleKind::PropertyExportFilter:
        return QStringLiteral("(plaxscript property export filter %1)").arg(documentIdentity);
    case ScriptModuleKind::PropertyDisplayFilter:
        return QStringLiteral("(plaxscript property display filter %1)").arg(documentIdentity);
    }
    return QString();
}

bool hasMain(const QString& text)
{
    static const QRegularExpression s_mainPattern(QStringLiteral("\\b(void)\\s+(main)\\s*\\(\\s*\\)"));
    return s_mainPattern.match(text).hasMatch();
}

QString wrapInMain(const QString& text)
{
    return QStringLiteral("void main(){\n") + text + QStringLiteral("\n}");
}

QString wrapInOneShot(const QString& text)
{
    return QStringLiteral("void plaxscript_oneshot(){\n") + text + QStringLiteral("\n}");
}
} // namespace ScriptModules
