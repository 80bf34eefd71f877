#pragma once

#include <QString>

/// The six kinds of scene items.
enum class ItemKind : int
{
    Body,
    Fixture,
    Joint,
    Image,
    Sampler,
    Object,
};

/// Number of item kinds.
constexpr int kItemKindCount = 6;

/// Name of a kind as the interface shows it and the script API spells it
/// ("getBody", "addFixture"): "Body", "Fixture", ...
QString itemKindDisplayName(ItemKind kind);
/// Lower-case word of a kind as used in messages: "body", "fixture", ...
QString itemKindWord(ItemKind kind);
/// Record tag of a kind in the scene file: "metabody", "metafixture", ...
QString itemKindRecordTag(ItemKind kind);
/// True when a name contains none of the characters ", ', \, < and >.
bool isValidItemName(const QString& name);
