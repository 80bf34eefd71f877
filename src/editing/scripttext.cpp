#include "editing/scripttext.h"

#include "base/log.h"
#include "model/metaitem.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

QString escapeForScriptString(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    escaped.remove(QLatin1Char('\n'));
    escaped.remove(QLatin1String("\\n"));
    escaped.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return escaped;
}

QString scriptGetterName(ItemKind kind)
{
    return QStringLiteral("get") + itemKindDisplayName(kind);
}

QString scriptToObtainMetaItem(const MetaItem* item)
{
    if (!item)
        return QStringLiteral("getWorld()");
    Q_ASSERT_X(item->id() > 0, "scriptToObtainMetaItem", "id > 0");
    switch (item->kind()) {
    case ItemKind::Body:
    case ItemKind::Fixture:
    case ItemKind::Joint:
    case ItemKind::Image:
    case ItemKind::Sampler:
        return QStringLiteral("%1(%2)").arg(scriptGetterName(item->kind())).arg(item->id());
    case ItemKind::Object:
        break;
    }
    plaxLog(LOG_ERROR, "Error in scriptToObtainMetaItem");
    return QStringLiteral("getWorld()");
}

QString scriptFloat(float value)
{
    if (value == 0)
        return std::signbit(value) ? QStringLiteral("-0.0") : QStringLiteral("0");
    // Script literals are read as doubles and then narrowed, so the test is
    // done the same way.
    char text[48];
    for (int precision = 6; precision <= 9; ++precision) {
        std::snprintf(text, sizeof text, "%.*g", precision, double(value));
        if (float(std::strtod(text, nullptr)) == value)
            break;
    }
    return QString::fromLatin1(text);
}
