#pragma once

#include "model/itemkind.h"

#include <QString>

/// What an editor view picks, highlights, copies and deletes: one of the
/// item kinds, or the vertices of fixtures.
enum class EditMode : int
{
    Bodies,
    Fixtures,
    Vertices,
    Joints,
    Images,
    Samplers,
    Objects,
};

/// Number of edit modes.
constexpr int kEditModeCount = 7;

/// The word a mode is known by in scripts ("bodies", "fixtures", "vertices",
/// "joints", "images", "samplers", "objects").
QString editModeWord(EditMode mode);
/// The mode of a word; bodies for an unknown word.
EditMode editModeFromWord(const QString& word);
/// The item kind a mode works on (vertices belong to fixtures).
ItemKind editModeItemKind(EditMode mode);
/// The key that switches to a mode: B, F, V, J, I, P, O.
char editModeKey(EditMode mode);
