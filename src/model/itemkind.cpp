#include "model/itemkind.h"

QString itemKindDisplayName(ItemKind kind)
{
    switch (kind) {
    case ItemKind::Body: return QStringLiteral("Body");
    case ItemKind::Fixture: return QStringLiteral("Fixture");
    case ItemKind::Joint: return QStringLiteral("Joint");
    case ItemKind::Image: return QStringLiteral("Image");
    case ItemKind::Sampler: return QStringLiteral("Sampler");
    case ItemKind::Object: return QStringLiteral("Object");
    }
    return QString();
}

QString itemKindWord(ItemKind kind)
{
    return itemKindDisplayName(kind).toLower();
}

QString itemKindRecordTag(ItemKind kind)
{
    return QStringLiteral("meta") + itemKindWord(kind);
}

bool isValidItemName(const QString& name)
{
    for (QChar c : name) {
        if (c == u'"' || c == u'\'' || c == u'\\' || c == u'<' || c == u'>')
            return false;
    }
    return true;
}
