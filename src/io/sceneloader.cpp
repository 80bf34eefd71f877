#include "io/sceneloader.h"

#include "base/flags.h"
#include "base/log.h"
#include "base/notify.h"
#include "io/bodyrecord.h"
#include "io/customrecord.h"
#include "io/imagerecord.h"
#include "io/jointrecord.h"
#include "io/jsonstream.h"
#include "io/jsontext.h"
#include "io/objectrecord.h"
#include "io/rawinfoscene.h"
#include "io/samplerrecord.h"
#include "io/worldrecord.h"
#include "model/metaworld.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <array>

namespace
{
using rapidjson::Value;

QString tr(const char* text)
{
    return QCoreApplication::translate("SceneLoader", text);
}

const char* const kAppTitle = "P.L.A.X";

// Progress lines of a load are written in the editor, and in batch mode only when verbose.
// Progress of a load: information for `plax -v`; in the editor a detail for
// plax.log that the message log shows only when asked for debug lines.
void progress(const char* line)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "%s", line);
    else if (AppFlags::isVerbose())
        plaxLog(LOG_INFO, "%s", line);
}

// Counts of records skipped for want of an id, per item kind.
using SkipCounts = std::array<int, kItemKindCount>;

// Calls read(record, id) for one record; a record without an id is counted instead.
template <typename Read>
void readRecord(const Value& record, ItemKind kind, SkipCounts* skipped, Read read)
{
    const ItemId id = readUint(record, "id", 0);
    if (id == 0)
        ++(*skipped)[size_t(kind)];
    else
        read(record, id);
}

// Calls read(record, id) for every record of an array member (or for a single
// record object, as old files hold backing images); records without an id
// are counted instead.
template <typename Read>
void readRecords(const Value* records, ItemKind kind, SkipCounts* skipped, Read read)
{
    if (!records)
        return;
    auto one = [&](const Value& record) { readRecord(record, kind, skipped, read); };
    if (records->IsArray()) {
        for (const Value& record : records->GetArray())
            one(record);
    } else if (records->IsObject()) {
        one(*records);
    }
}

QString skippedText(const SkipCounts& skipped)
{
    static const std::array<const char*, kItemKindCount> kPlural = {"bodies",   "fixtures", "joints",
                                                                    "images",   "samplers", "objects"};
    QString text;
    for (size_t i = 0; i < skipped.size(); ++i) {
        if (skipped[i] > 0)
            text += tr("Skipped creation of %1 %2 with no id.\n").arg(skipped[i]).arg(QLatin1String(kPlural[i]));
    }
    return text;
}

// The scene of a metaworld object into `world`, which may hold the bodies
// read already while the file was parsed (their skipped records counted).
std::unique_ptr<MetaWorld> loadScene(const Value& metaworld, const QString& path, std::unique_ptr<MetaWorld> world,
                                     SkipCounts skipped)
{
    progress(" File appears to be a .plax file");
    progress(" Creating world");
    if (!metaworld.IsObject()) {
        plaxLog(LOG_ERROR, tr("Failed to create world from JSON value for '%1'.").arg(path));
        return nullptr;
    }
    readWorldSettings(metaworld, &world->settings);
    readExportOptions(jsonMember(metaworld, "exportOptions"), &world->exportOptions);
    readDisplayOptions(jsonMember(metaworld, "displayOptions"), &world->displayOptions);

    progress(" Loading custom property definitions");
    world->customPropertyDefs = readCustomPropertyDefs(jsonMember(metaworld, "customPropertyDefs"));
    readCustomProperties(jsonMember(metaworld, "customProperties"), &world->customProperties);

    MetaWorld& w = *world;
    progress(" Loading bodies");
    int* skippedFixtures = &skipped[size_t(ItemKind::Fixture)];
    readRecords(jsonMember(metaworld, "metabody"), ItemKind::Body, &skipped,
                [&](const Value& record, ItemId id) { readBodyRecord(w, record, id, skippedFixtures); });

    progress(" Loading joints");
    readRecords(jsonMember(metaworld, "metajoint"), ItemKind::Joint, &skipped,
                [&](const Value& record, ItemId id) { readJointRecord(w, record, id); });

    progress(" Loading images");
    auto readImage = [&](const Value& record, ItemId id) { readImageRecord(w, record, id); };
    for (const char* key : {"metaimage", "backingimage", "image"})
        readRecords(jsonMember(metaworld, key), ItemKind::Image, &skipped, readImage);

    progress(" Loading samplers");
    readRecords(jsonMember(metaworld, "metasampler"), ItemKind::Sampler, &skipped,
                [&](const Value& record, ItemId id) { readSamplerRecord(w, record, id); });

    progress(" Loading objects");
    readRecords(jsonMember(metaworld, "metaobject"), ItemKind::Object, &skipped,
                [&](const Value& record, ItemId id) { readObjectRecord(w, record, id); });

    if (const Value* bitplanes = jsonMember(metaworld, "collisionbitplanes"))
        world->collisionBitplaneNames = readStringList(*bitplanes, "names");
    readSystemHooks(jsonMember(metaworld, "systemhooks"), &world->afterExportHook);
    world->excludedJsonExportProperties = readStringList(metaworld, "excludedJsonExportProperties");

    progress(" Loading active script");
    world->activeScript = readString(metaworld, "activeScript");

    progress(" Post-load setup");
    for (const auto& body : world->bodies())
        conformBodyShapes(*body);

    const QString errors = skippedText(skipped);
    if (!errors.isEmpty()) {
        const QString report = tr("\nScene file '%1' was opened but with errors.").arg(path) + errors;
        plaxLog(LOG_WARNING, report);
        UserNotifier::show(UserNotifier::Kind::Warning, tr(kAppTitle), report);
    }
    return world;
}

std::unique_ptr<MetaWorld> loadRawInfo(const Value& root, const QString& path)
{
    progress(" File appears to be raw info");
    if (QFileInfo(path).suffix().compare(QLatin1String("plax"), Qt::CaseInsensitive) == 0) {
        const QString question =
            tr("The file '%1' \nhas the file extension .plax but the information necessary\nfor a .plax file was not "
               "found. You can attempt to load the\nfile as raw info, but some information in the scene may not\nbe "
               "fully restored. Would you like to continue?")
                .arg(path);
        if (AppFlags::isBatchMode()) {
            plaxLog(LOG_WARNING, question);
        } else if (!UserNotifier::ask(tr("Invalid file"), question, true)) {
            plaxLog(LOG_INFO, "Loading of '%s' as raw info was declined", qPrintable(path));
            return nullptr;
        }
    }
    std::unique_ptr<MetaWorld> world = root.IsObject() ? createWorldFromRawInfo(root, path) : nullptr;
    if (!world)
        plaxLog(LOG_ERROR, tr("Failed to create world from JSON value for '%1'.").arg(path));
    return world;
}
} // namespace

std::unique_ptr<MetaWorld> loadSceneFile(const QString& path)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        const QString message = tr("Could not open file '%1' for reading.").arg(path);
        plaxLog(LOG_ERROR, message);
        UserNotifier::show(UserNotifier::Kind::Critical, tr(kAppTitle), message);
        return nullptr;
    }
    plaxLog(LOG_DEBUG, " Opened file OK");
    file.close();

    // Parsed from the file a piece at a time: the bodies, the bulk of a big
    // scene, go into the model record by record as the parser reads them
    // (on a helper thread, in order: only `w` and `skipped` are touched
    // there); the rest becomes a small document read below.
    auto world = std::make_unique<MetaWorld>();
    SkipCounts skipped{};
    MetaWorld& w = *world;
    int* skippedFixtures = &skipped[size_t(ItemKind::Fixture)];
    const auto body = [&](const Value& record) {
        readRecord(record, ItemKind::Body, &skipped,
                   [&](const Value& r, ItemId id) { readBodyRecord(w, r, id, skippedFixtures); });
    };
    rapidjson::Document document;
    QString parseError;
    if (!streamJsonFile(path, "metaworld", "metabody", body, &document, &parseError)) {
        plaxLog(LOG_ERROR, tr("Failed to parse JSON from file '%1' : %2").arg(path, parseError));
        return nullptr;
    }
    plaxLog(LOG_DEBUG, " Parsed file OK");

    const Value* metaworld = jsonMember(document, "metaworld");
    world = metaworld ? loadScene(*metaworld, path, std::move(world), skipped) : loadRawInfo(document, path);
    // Relative file references of the items are relative to this folder.
    if (world)
        world->referenceFolder = QFileInfo(path).absolutePath();
    return world;
}
