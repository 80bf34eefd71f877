#include "edits/creationedits.h"

#include "api/scriptapisupport.h"
#include "api/scripthookdata.h"
#include "api/scriptitemops.h"
#include "base/log.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "hooks/hookevents.h"
#include "model/metaworld.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <cmath>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("CreationEdits", text);
}

QString number(float value)
{
    return QString::number(double(value), 'g', 9);
}

QString vec(Vec2 v)
{
    return QStringLiteral("{\"x\":%1,\"y\":%2}").arg(number(v.x), number(v.y));
}

QString quoted(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

bool finite(Vec2 p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// Makes an added item the only selected item of its kind.
void selectOnly(ScriptDocument& document, MetaItem* item)
{
    if (!item)
        return;
    const std::vector<ItemId> selected = document.selection().items(item->kind());
    SelectionEdits::setSelected(document, item->kind(), selected, false);
    ScriptApi::setSelected(*item, true);
}

QString fixtureJson(const QString& name, ShapeType shapeType, const std::vector<Vec2>& local, float radius)
{
    QStringList xs, ys;
    for (const Vec2& p : local) {
        xs << number(p.x);
        ys << number(p.y);
    }
    return QStringLiteral("{\"name\":%1,\"density\":1,\"friction\":0.2,\"shapes\":[{\"type\":\"%2\",\"radius\":%3}],"
                          "\"vertices\":{\"x\":[%4],\"y\":[%5]}}")
        .arg(quoted(name), MetaShape::typeWord(shapeType), number(radius), xs.join(QLatin1Char(',')),
             ys.join(QLatin1Char(',')));
}
} // namespace

namespace CreationEdits
{
MetaBody* addBody(ScriptDocument& document, Vec2 position, int bodyType, bool withBox)
{
    if (!finite(position)) {
        plaxLog(LOG_WARNING, "Ignoring a new body at a position that is not a number");
        return nullptr;
    }
    MetaWorld& world = document.world();
    const BodyType type = bodyType == 0 ? BodyType::Static : bodyType == 1 ? BodyType::Kinematic : BodyType::Dynamic;
    const QString json = QStringLiteral("{\"name\":%1,\"type\":\"%2\",\"position\":%3}")
                             .arg(quoted(world.uniqueName(ItemKind::Body)), MetaBody::typeWord(type), vec(position));
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("add body"));
    MetaBody* body = ItemOps::addBody(0, json);
    if (body && withBox) {
        const std::vector<Vec2> box{{-0.5f, -0.5f}, {0.5f, -0.5f}, {0.5f, 0.5f}, {-0.5f, 0.5f}};
        ItemOps::addFixture(*body, 0, fixtureJson(world.uniqueName(ItemKind::Fixture), ShapeType::Polygon, box, 0));
    }
    selectOnly(document, body);
    return body;
}

MetaFixture* addFixture(ScriptDocument& document, ItemId bodyId, ShapeType shapeType, const std::vector<Vec2>& points,
                        float radius)
{
    const size_t needed = shapeType == ShapeType::Polygon || shapeType == ShapeType::Loop ? 3 : shapeType == ShapeType::Line ? 2 : 1;
    bool usable = points.size() >= needed && int(shapeType) >= int(ShapeType::Circle) && int(shapeType) <= int(ShapeType::Loop) &&
                  std::isfinite(radius) && radius >= 0;
    for (const Vec2& p : points)
        usable = usable && finite(p);
    if (shapeType == ShapeType::Circle && radius <= 0)
        usable = false;
    if (!usable) {
        plaxLog(LOG_WARNING, tr("Cannot make a %1 fixture from %2 points").arg(MetaShape::typeWord(shapeType)).arg(points.size()));
        return nullptr;
    }
    MetaWorld& world = document.world();
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("add fixture"));
    MetaBody* body = bodyId ? world.findBody(bodyId) : nullptr;
    if (!body) {
        Vec2 middle;
        for (const Vec2& p : points)
            middle = middle + p;
        middle = middle * (1.0f / float(points.size()));
        const QString json = QStringLiteral("{\"name\":%1,\"type\":\"dynamic\",\"position\":%2}")
                                 .arg(quoted(world.uniqueName(ItemKind::Body)), vec(middle));
        body = ItemOps::addBody(0, json);
        if (!body)
            return nullptr;
    }
    std::vector<Vec2> local;
    for (const Vec2& p : points)
        local.push_back(worldToBody(body, p));
    MetaFixture* fixture =
        ItemOps::addFixture(*body, 0, fixtureJson(world.uniqueName(ItemKind::Fixture), shapeType, local, radius));
    selectOnly(document, fixture);
    return fixture;
}

MetaJoint* addJoint(ScriptDocument& document, JointType jointType, ItemId bodyAId, ItemId bodyBId, Vec2 anchor)
{
    MetaWorld& world = document.world();
    MetaBody* a = world.findBody(bodyAId);
    MetaBody* b = world.findBody(bodyBId);
    const QString word = MetaJoint::typeWord(jointType);
    if (!a || !b || a == b || word.isEmpty() || !finite(anchor)) {
        plaxLog(LOG_WARNING, tr("A joint needs two different bodies and a known joint type"));
        return nullptr;
    }
    QString json = QStringLiteral("{\"name\":%1,\"type\":\"%2\",\"bodyA\":%3,\"bodyB\":%4")
                       .arg(quoted(world.uniqueName(ItemKind::Joint)), word)
                       .arg(a->id())
                       .arg(b->id());
    if (jointType == JointType::Distance || jointType == JointType::Rope) {
        const float length = (b->position - a->position).length();
        json += QStringLiteral(",\"anchorA\":0,\"anchorB\":0,\"%1\":%2")
                    .arg(jointType == JointType::Distance ? QStringLiteral("length") : QStringLiteral("maxLength"),
                         number(length));
    } else {
        json += QStringLiteral(",\"anchorA\":%1,\"anchorB\":%2").arg(vec(worldToBody(a, anchor)), vec(worldToBody(b, anchor)));
        if (jointType == JointType::Weld || jointType == JointType::Revolute || jointType == JointType::Prismatic)
            json += QStringLiteral(",\"referenceAngle\":%1").arg(number(b->angle - a->angle));
    }
    json += QLatin1Char('}');
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("add joint"));
    MetaJoint* joint = ItemOps::addJoint(0, json);
    selectOnly(document, joint);
    return joint;
}

std::vector<MetaImage*> addImages(ScriptDocument& document, const QStringList& files, Vec2 at, bool dropped)
{
    std::vector<MetaImage*> added;
    if (!finite(at))
        return added;
    MetaWorld& world = document.world();
    const QString sceneFolder = document.filePath().isEmpty() ? QString() : QFileInfo(document.filePath()).absolutePath();
    QStringList usable;
    for (const QString& file : files) {
        if (QImageReader(file).canRead())
            usable.append(file);
        else
            plaxLog(LOG_WARNING, tr("Ignoring '%1': it is not an image file that can be read").arg(file));
    }
    if (usable.isEmpty())
        return added;
    {
        ScriptDocumentScope scope(&document);
        UndoMacroScope macro(document.undoStack(), tr("add images"));
        SelectionEdits::setSelected(document, ItemKind::Image, document.selection().items(ItemKind::Image), false);
        for (int i = 0; i < usable.size(); ++i) {
            const QString absolute = QFileInfo(usable[i]).absoluteFilePath();
            const QString file = sceneFolder.isEmpty() ? absolute : QDir(sceneFolder).relativeFilePath(absolute);
            const QString json = QStringLiteral("{\"name\":%1,\"file\":%2,\"center\":%3,\"scale\":1,\"body\":0}")
                                     .arg(quoted(world.uniqueName(ItemKind::Image)), quoted(file),
                                          vec({at.x + float(i), at.y - float(i)}));
            if (MetaImage* image = ItemOps::addImage(0, json)) {
                ScriptApi::setSelected(*image, true);
                added.push_back(image);
            }
        }
    }
    if (dropped && !added.empty()) {
        ScriptHookData data;
        for (MetaImage* image : added)
            data.droppedImages.push_back(image->id());
        HookEvents::raise(document, SHE_IMAGES_DROPPED, data);
    }
    return added;
}

MetaObject* addObject(ScriptDocument& document, const QString& file, Vec2 at)
{
    if (!finite(at) || file.isEmpty())
        return nullptr;
    MetaWorld& world = document.world();
    const QString sceneFolder = document.filePath().isEmpty() ? QString() : QFileInfo(document.filePath()).absolutePath();
    const QString absolute = QFileInfo(file).absoluteFilePath();
    const QString reference = sceneFolder.isEmpty() ? absolute : QDir(sceneFolder).relativeFilePath(absolute);
    const QString json = QStringLiteral("{\"name\":%1,\"file\":%2,\"position\":%3}")
                             .arg(quoted(world.uniqueName(ItemKind::Object)), quoted(reference), vec(at));
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), tr("add object"));
    MetaObject* object = ItemOps::addObject(0, json);
    selectOnly(document, object);
    return object;
}
} // namespace CreationEdits
