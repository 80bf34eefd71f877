#include "io/recordtext.h"

#include "base/log.h"
#include "io/bodyrecord.h"
#include "io/imagerecord.h"
#include "io/jointrecord.h"
#include "io/jsontext.h"
#include "io/objectrecord.h"
#include "io/samplerrecord.h"
#include "model/metaworld.h"

QString itemRecordToJson(const MetaItem& item, const JsonStyle& style, bool pretty)
{
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), style);
    rapidjson::Value record;
    switch (item.kind()) {
    case ItemKind::Body: record = writeBodyRecord(static_cast<const MetaBody&>(item), encoder); break;
    case ItemKind::Fixture: record = writeFixtureRecord(static_cast<const MetaFixture&>(item), encoder); break;
    case ItemKind::Joint: record = writeJointRecord(static_cast<const MetaJoint&>(item), encoder); break;
    case ItemKind::Image: record = writeImageRecord(static_cast<const MetaImage&>(item), encoder); break;
    case ItemKind::Sampler: record = writeSamplerRecord(static_cast<const MetaSampler&>(item), encoder); break;
    case ItemKind::Object: record = writeObjectRecord(static_cast<const MetaObject&>(item), encoder); break;
    }
    return QString::fromUtf8(jsonToText(record, pretty));
}

bool parseRecordJson(const QString& text, const char* kindWord, rapidjson::Document* document)
{
    QString error;
    if (!parseJson(text.toUtf8(), document, &error)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to parse %1 JSON:\n%2").arg(QLatin1String(kindWord), error));
        return false;
    }
    if (!document->IsObject()) {
        plaxLog(LOG_ERROR,
                QStringLiteral("Parsed %1 JSON but value is not object type.").arg(QLatin1String(kindWord)));
        return false;
    }
    return true;
}

MetaBody* readBodyJson(MetaWorld& world, const QString& text, ItemId id, int* skippedFixtures)
{
    rapidjson::Document document;
    return parseRecordJson(text, "body", &document) ? readBodyRecord(world, document, id, skippedFixtures) : nullptr;
}

MetaFixture* readFixtureJson(MetaWorld& world, MetaBody* body, const QString& text, ItemId id)
{
    rapidjson::Document document;
    return parseRecordJson(text, "fixture", &document) ? readFixtureRecord(world, body, document, id) : nullptr;
}

MetaJoint* readJointJson(MetaWorld& world, const QString& text, ItemId id, bool copy)
{
    rapidjson::Document document;
    return parseRecordJson(text, "joint", &document) ? readJointRecord(world, document, id, copy) : nullptr;
}

MetaImage* readImageJson(MetaWorld& world, const QString& text, ItemId id, bool copy)
{
    rapidjson::Document document;
    return parseRecordJson(text, "image", &document) ? readImageRecord(world, document, id, copy) : nullptr;
}

MetaSampler* readSamplerJson(MetaWorld& world, const QString& text, ItemId id, bool copy)
{
    rapidjson::Document document;
    return parseRecordJson(text, "sampler", &document) ? readSamplerRecord(world, document, id, copy) : nullptr;
}

MetaObject* readObjectJson(MetaWorld& world, const QString& text, ItemId id)
{
    rapidjson::Document document;
    return parseRecordJson(text, "object", &document) ? readObjectRecord(world, document, id) : nullptr;
}
