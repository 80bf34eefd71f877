#pragma once

#include "base/types.h"
#include "model/itemkind.h"

#include <QColor>
#include <QRectF>

#include <functional>
#include <vector>

class QPainter;
class ViewCamera;
struct CustomLabel;
struct SceneLabel;

/// Draws item names over a view with QPainter: only labels of one kind, only
/// those inside the view, and when too many would crowd the view only the
/// labels of selected items. Labels never print over each other: each takes
/// the first free place around its item (right above, right below, left
/// above, left below, above, below), selected items' labels first; one that
/// finds no free place is left out and counted, and the view says so in a
/// hint. Each label stands on a translucent backdrop, so that it reads over
/// fills and lines. The scene's custom labels script may change a label's
/// text (an empty text hides it) and give it colours, its background taking
/// the backdrop's place.
class LabelPainter
{
public:
    /// Lets the custom labels script decide a label: `label` holds the
    /// default (the item's name, no colours) on entry.
    using Customize = std::function<void(const SceneLabel& scene, CustomLabel* label)>;

    /// Most labels drawn at once before only selected items are named.
    static constexpr int kMaxLabels = 300;

    /// One label drawn: the item it names and where it stands (pixels).
    struct Placed
    {
        ItemId id = 0;
        QRectF box;
    };

    /// What one paint did.
    struct Outcome
    {
        /// Labels drawn.
        int drawn = 0;
        /// Labels left out because every place around their item was taken.
        int hidden = 0;
        /// The labels drawn, in the order drawn (selected items' first).
        std::vector<Placed> placed;
    };

    /// Draws the labels of `kind`, each first given to `customize` when set,
    /// on a backdrop of `backdrop` (the view's background, made translucent).
    static Outcome paint(QPainter& painter, const ViewCamera& camera, const std::vector<SceneLabel>& labels,
                         ItemKind kind, const QColor& colour, const QColor& selectedColour, const QColor& backdrop,
                         const Customize& customize = {});
    /// The hint that `hidden` labels were left out, in the view's lower left corner.
    static void paintHiddenHint(QPainter& painter, const ViewCamera& camera, int hidden, const QColor& colour);
};
