#include "views/labelpainter.h"

#include "views/scenegeometry.h"
#include "views/viewcamera.h"

#include <QFontMetrics>
#include <QPainter>

int LabelPainter::paint(QPainter& painter, const ViewCamera& camera, const std::vector<SceneLabel>& labels,
                        ItemKind kind, const QColor& colour, const QColor& selectedColour)
{
    const QRectF area(QPointF(0, 0), QSizeF(camera.pixelSize));
    std::vector<std::pair<const SceneLabel*, QPointF>> shown;
    int selectedCount = 0;
    for (const SceneLabel& label : labels) {
        if (label.kind != kind || label.text.isEmpty())
            continue;
        const QPointF at = camera.toPixel(label.at);
        if (!area.contains(at))
            continue;
        shown.emplace_back(&label, at);
        selectedCount += label.selected ? 1 : 0;
    }
    const bool onlySelected = int(shown.size()) > kMaxLabels;
    if (onlySelected && selectedCount == 0)
        return 0;

    QFont font = painter.font();
    font.setPointSizeF(8.5);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    int drawn = 0;
    for (const auto& [label, at] : shown) {
        if (onlySelected && !label->selected)
            continue;
        if (drawn >= kMaxLabels)
            break;
        painter.setPen(label->selected ? selectedColour : colour);
        painter.drawText(at + QPointF(6, -6), label->text);
        ++drawn;
    }
    return drawn;
}
