#pragma once

#include "base/types.h"

#include <QString>

class MetaBody;
class MetaFixture;
class MetaImage;
class MetaItem;
class MetaJoint;
class MetaObject;
class MetaSampler;

// Adding and deleting whole items of the current document, as the script
// functions addBody(), body.addFixture(), delete() and their kin do it. Each
// records its add or delete command (carrying the item's one-line record) so
// that undo re-creates the item under its id and at its place.
namespace ItemOps
{
/// The item's compact record text, as the add and delete commands carry it.
QString recordText(const MetaItem& item);

/// Adds a body (with its fixtures) from record text under `id` (0: a free
/// one). Refuses an id in use and text that is not a body record (logged).
MetaBody* addBody(ItemId id, const QString& json);
/// Adds a fixture to a body from record text under `id` (0: a free one).
MetaFixture* addFixture(MetaBody& body, ItemId id, const QString& json);
/// Adds a joint from record text; its bodies must exist and differ.
MetaJoint* addJoint(ItemId id, const QString& json);
/// Adds an image from record text.
MetaImage* addImage(ItemId id, const QString& json);
/// Adds a sampler from record text.
MetaSampler* addSampler(ItemId id, const QString& json);
/// Adds an object instance from record text and attaches it to its file
/// (through the document's object instance host, when it has one).
MetaObject* addObject(ItemId id, const QString& json);

/// Adds a new image of a file centred at a world point, one unit high,
/// with a fresh id and name (recorded as an add).
MetaImage* addNewImage(const QString& file, Vec2 center);
/// Adds a new sampler centred at a world point, without a file.
MetaSampler* addNewSampler(Vec2 center);
/// Adds a new instance of an object file at a world point and attaches it.
MetaObject* addNewObject(const QString& file, Vec2 position);

/// Deletes a body: first its joints, fixtures, images and samplers, each
/// with its own command, then the body itself.
void deleteBody(MetaBody& body);
/// Deletes a fixture (its selected vertices are deselected first).
void deleteFixture(MetaFixture& fixture);
/// Deletes a joint.
void deleteJoint(MetaJoint& joint);
/// Deletes an image.
void deleteImage(MetaImage& image);
/// Deletes a sampler.
void deleteSampler(MetaSampler& sampler);
/// Deletes an object instance, releasing its object document first.
void deleteObject(MetaObject& object);
} // namespace ItemOps
