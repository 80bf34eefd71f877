#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <QString>

class MetaItem;

// Pieces of the plaxscript text that edit commands generate.

/// Prepares a text for embedding between single quotes in a generated
/// script: backslashes are doubled, newline characters removed, then every
/// backslash-n pair removed, and single quotes escaped with a backslash.
/// Double quotes are left alone.
QString escapeForScriptString(const QString& text);

/// The expression that yields an item in a script: "getWorld()" for a null
/// item (the world), "getBody(%1)", "getFixture(%1)", "getJoint(%1)",
/// "getImage(%1)" or "getSampler(%1)" with the item's id. Other kinds log
/// "Error in scriptToObtainMetaItem" and yield "getWorld()". An item without
/// an id violates the assertion "id > 0".
QString scriptToObtainMetaItem(const MetaItem* item);

/// The look-up function of a kind: "getBody", "getFixture", ...
QString scriptGetterName(ItemKind kind);

/// A float as script text: the shortest text that reads back to the same
/// single-precision value. Values of six or fewer significant digits come out
/// as the general format with six digits would write them ("0.5", "1e+06").
QString scriptFloat(float value);
/// A signed integer as script text.
inline QString scriptInt(qint64 value) { return QString::number(value); }
/// An unsigned integer (an id) as script text.
inline QString scriptUint(quint64 value) { return QString::number(value); }
