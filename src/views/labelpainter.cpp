#include "views/labelpainter.h"

#include "script/customlabelscript.h"
#include "views/scenegeometry.h"
#include "views/viewcamera.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>

namespace
{
// Pixels between an item's anchor and its label.
constexpr double kGap = 6;
// Pixels kept free around each label.
constexpr double kPadding = 1;

// The places tried around an anchor, best first: the text's box for each.
std::array<QRectF, 6> candidates(QPointF at, QSizeF size)
{
    const double w = size.width(), h = size.height();
    return {
        QRectF(at.x() + kGap, at.y() - kGap - h, w, h),           // right, above
        QRectF(at.x() + kGap, at.y() + kGap, w, h),               // right, below
        QRectF(at.x() - kGap - w, at.y() - kGap - h, w, h),       // left, above
        QRectF(at.x() - kGap - w, at.y() + kGap, w, h),           // left, below
        QRectF(at.x() - w / 2, at.y() - kGap - 2 * h - 2 * kPadding, w, h), // above those above
        QRectF(at.x() - w / 2, at.y() + kGap + h + 2 * kPadding, w, h),     // below those below
    };
}

bool overlaps(const QRectF& box, const std::vector<LabelPainter::Placed>& taken)
{
    const QRectF padded = box.adjusted(-kPadding, -kPadding, kPadding, kPadding);
    return std::any_of(taken.begin(), taken.end(),
                       [&padded](const LabelPainter::Placed& other) { return padded.intersects(other.box); });
}
} // namespace

LabelPainter::Outcome LabelPainter::paint(QPainter& painter, const ViewCamera& camera,
                                          const std::vector<SceneLabel>& labels, ItemKind kind, const QColor& colour,
                                          const QColor& selectedColour, const QColor& backdrop,
                                          const Customize& customize)
{
    const QRectF area(QPointF(0, 0), QSizeF(camera.pixelSize));
    struct Shown
    {
        const SceneLabel* scene;
        QPointF at;
        CustomLabel look;
    };
    std::vector<Shown> shown;
    int selectedCount = 0;
    for (const SceneLabel& label : labels) {
        if (label.kind != kind || (label.text.isEmpty() && !customize))
            continue;
        const QPointF at = camera.toPixel(label.at);
        if (!area.contains(at))
            continue;
        CustomLabel look{label.text, QColor(), QColor()};
        if (customize)
            customize(label, &look);
        if (look.text.isEmpty())
            continue;
        shown.push_back({&label, at, std::move(look)});
        selectedCount += label.selected ? 1 : 0;
    }
    Outcome outcome;
    const bool onlySelected = int(shown.size()) > kMaxLabels;
    if (onlySelected && selectedCount == 0)
        return outcome;
    // Selected items choose their places first; the rest keep the scene's order.
    std::stable_partition(shown.begin(), shown.end(), [](const Shown& s) { return s.scene->selected; });

    QFont font = painter.font();
    font.setPointSizeF(8.5);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    std::vector<Placed>& taken = outcome.placed;
    taken.reserve(std::min(shown.size(), size_t(kMaxLabels)));
    for (const Shown& label : shown) {
        if (onlySelected && !label.scene->selected)
            continue;
        if (outcome.drawn >= kMaxLabels)
            break;
        // The text's box with room for a coloured background.
        const QSizeF size(metrics.horizontalAdvance(label.look.text) + 4, metrics.height() + 2);
        const std::array<QRectF, 6> places = candidates(label.at, size);
        const auto free = std::find_if(places.begin(), places.end(),
                                       [&taken](const QRectF& box) { return !overlaps(box, taken); });
        if (free == places.end()) {
            ++outcome.hidden;
            continue;
        }
        const QRectF box = *free;
        taken.push_back({label.scene->id, box});
        if (label.look.background.isValid()) {
            painter.fillRect(box, label.look.background);
        } else {
            QColor behind = backdrop;
            behind.setAlpha(170);
            painter.fillRect(box, behind);
        }
        const QColor pen = label.look.foreground.isValid() ? label.look.foreground : colour;
        painter.setPen(label.scene->selected ? selectedColour : pen);
        painter.drawText(QPointF(box.left() + 2, box.top() + 1 + metrics.ascent()), label.look.text);
        ++outcome.drawn;
    }
    return outcome;
}

void LabelPainter::paintHiddenHint(QPainter& painter, const ViewCamera& camera, int hidden, const QColor& colour)
{
    if (hidden <= 0)
        return;
    const QString text =
        hidden == 1
            ? QCoreApplication::translate("LabelPainter", "One name left out where labels would overlap: zoom in to read it")
            : QCoreApplication::translate("LabelPainter", "%1 names left out where labels would overlap: zoom in to read them")
                  .arg(hidden);
    QFont font = painter.font();
    font.setPointSizeF(8);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    QColor faded = colour;
    faded.setAlphaF(0.75f);
    painter.setPen(faded);
    painter.drawText(QPointF(8, camera.pixelSize.height() - 8 - metrics.descent()), text);
}
