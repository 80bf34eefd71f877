#pragma once

#include "model/itemkind.h"

#include <QColor>

#include <functional>
#include <vector>

class QPainter;
class ViewCamera;
struct CustomLabel;
struct SceneLabel;

/// Draws item names over a view with QPainter: only labels of one kind, only
/// those inside the view, and when too many would crowd the view only the
/// labels of selected items. The scene's custom labels script may change a
/// label's text (an empty text hides it) and give it colours, drawn as a
/// filled box behind the text.
class LabelPainter
{
public:
    /// Lets the custom labels script decide a label: `label` holds the
    /// default (the item's name, no colours) on entry.
    using Customize = std::function<void(const SceneLabel& scene, CustomLabel* label)>;

    /// Most labels drawn at once before only selected items are named.
    static constexpr int kMaxLabels = 300;

    /// Draws the labels of `kind`, each first given to `customize` when set;
    /// returns how many were drawn.
    static int paint(QPainter& painter, const ViewCamera& camera, const std::vector<SceneLabel>& labels, ItemKind kind,
                     const QColor& colour, const QColor& selectedColour, const Customize& customize = {});
};
