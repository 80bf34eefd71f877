#pragma once

#include "editing/scriptcommand.h"
#include "model/itemkind.h"

// Selection, naming, adding and deleting of whole items. The add and delete
// commands carry the item's one-line scene-file JSON (escaped for a script
// string), so that undo can re-create it under the same id.

/// Selects an item: "get%1(%2).select();". Does not modify the scene.
class SelectCommand : public ScriptCommand
{
public:
    /// Selection of the item of `kind` with `id`.
    SelectCommand(EditHost* document, ItemKind kind, ItemId id);
};

/// Deselects an item: "get%1(%2).deselect();". Does not modify the scene.
class DeselectCommand : public ScriptCommand
{
public:
    /// Deselection of the item of `kind` with `id`.
    DeselectCommand(EditHost* document, ItemKind kind, ItemId id);
};

/// Renames an item: "get%1(%2).setName("%3");".
class SetNameCommand : public ScriptCommand
{
public:
    /// Rename from `oldName` to `newName`.
    SetNameCommand(EditHost* document, ItemKind kind, ItemId id, const QString& oldName, const QString& newName);
};

/// Adds a body: "addBody(%1, '%2');", undone by "getBody(%1).delete();".
class AddBodyCommand : public ScriptCommand
{
public:
    /// `json` is the body's compact record text.
    AddBodyCommand(EditHost* document, ItemId id, const QString& json);
};

/// Deletes a body (the reverse of AddBodyCommand).
class DeleteBodyCommand : public ScriptCommand
{
public:
    /// `json` is the body's record text, made while it still existed.
    DeleteBodyCommand(EditHost* document, ItemId id, const QString& json);
};

/// Adds a fixture: "getBody(%1).addFixture(%2, '%3');", undone by "getFixture(%2).delete();".
class AddFixtureCommand : public ScriptCommand
{
public:
    /// A fixture `fixtureId` added to body `bodyId`.
    AddFixtureCommand(EditHost* document, ItemId bodyId, ItemId fixtureId, const QString& json);
};

/// Deletes a fixture (the reverse of AddFixtureCommand).
class DeleteFixtureCommand : public ScriptCommand
{
public:
    /// A fixture `fixtureId` deleted from body `bodyId`.
    DeleteFixtureCommand(EditHost* document, ItemId bodyId, ItemId fixtureId, const QString& json);
};

/// Adds a joint, image, sampler or object: "add%1(%2, '%3');", undone by "get%1(%2).delete();".
class AddItemCommand : public ScriptCommand
{
public:
    /// An item of `kind` (joint, image, sampler or object).
    AddItemCommand(EditHost* document, ItemKind kind, ItemId id, const QString& json);
};

/// Deletes a joint, image, sampler or object (the reverse of AddItemCommand).
class DeleteItemCommand : public ScriptCommand
{
public:
    /// An item of `kind` (joint, image, sampler or object).
    DeleteItemCommand(EditHost* document, ItemKind kind, ItemId id, const QString& json);
};

/// The joint, image, sampler and object commands under their own names.
class AddJointCommand : public AddItemCommand
{
public:
    /// Adds joint `id`.
    AddJointCommand(EditHost* document, ItemId id, const QString& json) : AddItemCommand(document, ItemKind::Joint, id, json) {}
};
/// Deletes a joint.
class DeleteJointCommand : public DeleteItemCommand
{
public:
    /// Deletes joint `id`.
    DeleteJointCommand(EditHost* document, ItemId id, const QString& json) : DeleteItemCommand(document, ItemKind::Joint, id, json) {}
};
/// Adds an image.
class AddImageCommand : public AddItemCommand
{
public:
    /// Adds image `id`.
    AddImageCommand(EditHost* document, ItemId id, const QString& json) : AddItemCommand(document, ItemKind::Image, id, json) {}
};
/// Deletes an image.
class DeleteImageCommand : public DeleteItemCommand
{
public:
    /// Deletes image `id`.
    DeleteImageCommand(EditHost* document, ItemId id, const QString& json) : DeleteItemCommand(document, ItemKind::Image, id, json) {}
};
/// Adds a sampler.
class AddSamplerCommand : public AddItemCommand
{
public:
    /// Adds sampler `id`.
    AddSamplerCommand(EditHost* document, ItemId id, const QString& json) : AddItemCommand(document, ItemKind::Sampler, id, json) {}
};
/// Deletes a sampler.
class DeleteSamplerCommand : public DeleteItemCommand
{
public:
    /// Deletes sampler `id`.
    DeleteSamplerCommand(EditHost* document, ItemId id, const QString& json) : DeleteItemCommand(document, ItemKind::Sampler, id, json) {}
};
/// Adds an object instance.
class AddObjectCommand : public AddItemCommand
{
public:
    /// Adds object `id`.
    AddObjectCommand(EditHost* document, ItemId id, const QString& json) : AddItemCommand(document, ItemKind::Object, id, json) {}
};
/// Deletes an object instance.
class DeleteObjectCommand : public DeleteItemCommand
{
public:
    /// Deletes object `id`.
    DeleteObjectCommand(EditHost* document, ItemId id, const QString& json) : DeleteItemCommand(document, ItemKind::Object, id, json) {}
};

/// Reverses a fixture's vertex order: "getFixture(%1).reverseWinding();" both ways.
class ReverseFixureWindingCommand : public ScriptCommand
{
public:
    /// Reversal of fixture `fixtureId`.
    ReverseFixureWindingCommand(EditHost* document, ItemId fixtureId);
};
