#pragma once

#include "model/itemkind.h"

#include <QColor>

#include <vector>

class QPainter;
class ViewCamera;
struct SceneLabel;

/// Draws item names over a view with QPainter: only labels of one kind, only
/// those inside the view, and when too many would crowd the view only the
/// labels of selected items.
class LabelPainter
{
public:
    /// Most labels drawn at once before only selected items are named.
    static constexpr int kMaxLabels = 300;

    /// Draws the labels of `kind`; returns how many were drawn.
    static int paint(QPainter& painter, const ViewCamera& camera, const std::vector<SceneLabel>& labels, ItemKind kind,
                     const QColor& colour, const QColor& selectedColour);
};
