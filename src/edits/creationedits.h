#pragma once

#include "base/types.h"
#include "model/metajoint.h"
#include "model/metashape.h"

#include <QStringList>

#include <vector>

class MetaBody;
class MetaFixture;
class MetaImage;
class MetaJoint;
class MetaObject;
class ScriptDocument;

// New items made in an editor view: each is one undo macro that adds the
// item through the script API from a scene-file record, and selects it in
// place of the selection of its kind.
namespace CreationEdits
{
/// Adds a body at `position` (0 static, 1 kinematic, 2 dynamic), with a
/// 1 x 1 box fixture when `withBox` is set: "add body".
MetaBody* addBody(ScriptDocument& document, Vec2 position, int bodyType, bool withBox);

/// Adds a fixture of a shape type with its vertices given in world coordinates (a circle: its centre) to a body;
/// `body` 0 makes a new dynamic body at the middle of the points first.
/// "add fixture". Null, with a warning, when the points do not make the
/// shape (a polygon or loop needs three, a line two; non-finite points).
MetaFixture* addFixture(ScriptDocument& document, ItemId body, ShapeType shapeType, const std::vector<Vec2>& points,
                        float radius);

/// Adds a joint of a type a scene can hold (revolute, prismatic, distance,
/// wheel, weld, friction, rope, motor) between two different bodies. Revolute, prismatic, wheel, weld, friction
/// and motor joints are anchored at `anchor` on both bodies; distance and
/// rope joints at the bodies' origins, with their length the distance
/// between them. "add joint".
MetaJoint* addJoint(ScriptDocument& document, JointType jointType, ItemId bodyA, ItemId bodyB, Vec2 anchor);

/// Adds one image per readable image file, centred at `at` and shifted so
/// that several do not cover each other: "add images". When `dropped` is
/// set, the "images dropped" hook event follows with the new images.
/// Returns the images added (the caller reads their pixel sizes).
std::vector<MetaImage*> addImages(ScriptDocument& document, const QStringList& files, Vec2 at, bool dropped);

/// Adds an instance of a scene file at `at`: "add object".
MetaObject* addObject(ScriptDocument& document, const QString& file, Vec2 at);
} // namespace CreationEdits
