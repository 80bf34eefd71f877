#include "edits/clipboardedits.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scripttransform.h"
#include "base/log.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "io/jsontext.h"
#include "io/recordtext.h"
#include "model/metaworld.h"

#include <rapidjson/document.h>

#include <QCoreApplication>

namespace
{
struct KindInfo
{
    const char* member;
    ItemKind kind;
    EditMode mode;
};

// Clipboard kinds 1..5 in the order they are looked for.
constexpr KindInfo kKinds[] = {{"metabody", ItemKind::Body, EditMode::Bodies},
                               {"metafixture", ItemKind::Fixture, EditMode::Fixtures},
                               {"metaimage", ItemKind::Image, EditMode::Images},
                               {"metasampler", ItemKind::Sampler, EditMode::Samplers},
                               {"metaobject", ItemKind::Object, EditMode::Objects}};

QString tr(const char* text)
{
    return QCoreApplication::translate("ClipboardEdits", text);
}

const KindInfo* kindOfMode(EditMode mode)
{
    for (const KindInfo& info : kKinds) {
        if (info.mode == mode)
            return &info;
    }
    return nullptr;
}

// The record without its id (and, for bodies, without fixtures), with the
// body reference `bodyKey` set to `body` when given.
QString recordText(const rapidjson::Value& record, const char* bodyKey = nullptr, ItemId body = 0,
                   bool dropFixtures = false)
{
    rapidjson::Document copy;
    copy.CopyFrom(record, copy.GetAllocator());
    copy.RemoveMember("id");
    if (dropFixtures)
        copy.RemoveMember("fixture");
    if (bodyKey) {
        copy.RemoveMember(bodyKey);
        copy.AddMember(rapidjson::StringRef(bodyKey), rapidjson::Value(body), copy.GetAllocator());
    }
    return QString::fromUtf8(jsonToText(copy, false));
}

void selectAdded(MetaItem* item, std::vector<MetaItem*>& added)
{
    if (!item)
        return;
    ScriptApi::setSelected(*item, true);
    added.push_back(item);
}
} // namespace

namespace ClipboardEdits
{
Content clipboardKind(const QString& text)
{
    rapidjson::Document document;
    QString error;
    if (text.isEmpty() || !parseJson(text.toUtf8(), &document, &error) || !document.IsObject())
        return {};
    for (int i = 0; i < 5; ++i) {
        const auto it = document.FindMember(kKinds[i].member);
        if (it != document.MemberEnd())
            return {i + 1, it->value.IsArray() ? int(it->value.Size()) : 0};
    }
    return {};
}

QString copy(ScriptDocument& document, EditMode mode)
{
    const KindInfo* info = kindOfMode(mode);
    if (!info)
        return QString();
    const std::vector<ItemId>& ids = document.selection().items(info->kind);
    QStringList records;
    for (ItemId id : ids) {
        if (const MetaItem* item = document.world().findItem(info->kind, id))
            records.append(ItemOps::recordText(*item));
    }
    if (records.isEmpty())
        return QString();
    plaxLog(LOG_DEBUG, tr("Copied %1 %2").arg(records.size()).arg(SelectionEdits::kindWord(info->kind, records.size())));
    return QStringLiteral("{\"%1\":[%2]}").arg(QLatin1String(info->member), records.join(QLatin1Char(',')));
}

int paste(ScriptDocument& document, const QString& text)
{
    const Content content = clipboardKind(text);
    if (content.kind < 1 || content.kind > 5 || content.count < 1)
        return 0;
    const KindInfo& info = kKinds[content.kind - 1];
    rapidjson::Document parsed;
    QString error;
    if (!parseJson(text.toUtf8(), &parsed, &error))
        return 0;
    const rapidjson::Value& records = parsed[info.member];

    MetaWorld& world = document.world();
    std::vector<MetaBody*> bodies;
    for (ItemId id : document.selection().items(ItemKind::Body)) {
        if (MetaBody* body = world.findBody(id))
            bodies.push_back(body);
    }
    if (info.kind == ItemKind::Fixture && bodies.empty())
        return 0;

    const QString word = SelectionEdits::kindWord(info.kind, content.count);
    QString macroText = tr("paste %1 %2").arg(content.count).arg(word);
    const bool attaches = info.kind == ItemKind::Fixture || info.kind == ItemKind::Image || info.kind == ItemKind::Sampler;
    if (attaches && !bodies.empty()) {
        macroText = tr("paste %1 %2 onto %3 %4")
                        .arg(content.count)
                        .arg(word)
                        .arg(bodies.size())
                        .arg(SelectionEdits::kindWord(ItemKind::Body, qsizetype(bodies.size())));
    } else if (attaches) {
        macroText = tr("paste %1 %2 into background").arg(content.count).arg(word);
    }

    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), macroText);
    SelectionEdits::clearSelection(document);
    std::vector<MetaItem*> added;
    for (const rapidjson::Value& record : records.GetArray()) {
        if (!record.IsObject())
            continue;
        switch (info.kind) {
        case ItemKind::Body: {
            MetaBody* body = ItemOps::addBody(0, recordText(record, nullptr, 0, true));
            if (const auto it = record.FindMember("fixture"); body && it != record.MemberEnd() && it->value.IsArray()) {
                for (const rapidjson::Value& fixture : it->value.GetArray()) {
                    if (fixture.IsObject())
                        ItemOps::addFixture(*body, 0, recordText(fixture));
                }
            }
            selectAdded(body, added);
            break;
        }
        case ItemKind::Fixture:
            for (MetaBody* body : bodies)
                selectAdded(ItemOps::addFixture(*body, 0, recordText(record)), added);
            break;
        case ItemKind::Image:
        case ItemKind::Sampler: {
            const auto add = [&](ItemId body) -> MetaItem* {
                const QString json = recordText(record, "body", body);
                if (info.kind == ItemKind::Image)
                    return ItemOps::addImage(0, json);
                return ItemOps::addSampler(0, json);
            };
            if (bodies.empty())
                selectAdded(add(0), added);
            for (MetaBody* body : bodies)
                selectAdded(add(body->id()), added);
            break;
        }
        case ItemKind::Object: selectAdded(ItemOps::addObject(0, recordText(record)), added); break;
        case ItemKind::Joint: break;
        }
    }
    static const char* const pasted[] = {"Pasted %1 bodies", "Pasted %1 fixtures", "Pasted %1 images",
                                         "Pasted %1 samplers", "Pasted %1 objectss"};
    plaxLog(LOG_DEBUG, tr(pasted[content.kind - 1]).arg(content.count));
    return int(added.size());
}

int duplicate(ScriptDocument& document, EditMode mode)
{
    if (mode == EditMode::Vertices)
        return 0;
    const ItemKind kind = editModeItemKind(mode);
    const qsizetype count = qsizetype(document.selection().count(kind));
    if (count == 0)
        return 0;
    ScriptDocumentScope scope(&document);
    int made = 0;
    {
        UndoMacroScope macro(document.undoStack(),
                             tr("duplicate %1 %2").arg(count).arg(SelectionEdits::kindWord(kind, count)));
        made = TransformApi::duplicateSelection(mode);
    }
    static const char* const duplicated[] = {"Duplicated %1 bodies", "Duplicated %1 fixtures", "",
                                             "Duplicated %1 joints", "Duplicated %1 images",
                                             "Duplicated %1 samplers", "Duplicated %1 objects"};
    plaxLog(LOG_DEBUG, tr(duplicated[int(mode)]).arg(made));
    return made;
}
} // namespace ClipboardEdits
