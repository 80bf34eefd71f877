#include "views/labelpainter.h"

#include "script/customlabelscript.h"
#include "views/scenegeometry.h"
#include "views/viewcamera.h"

#include <QFontMetrics>
#include <QPainter>

int LabelPainter::paint(QPainter& painter, const ViewCamera& camera, const std::vector<SceneLabel>& labels,
                        ItemKind kind, const QColor& colour, const QColor& selectedColour, const Customize& customize)
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
    const bool onlySelected = int(shown.size()) > kMaxLabels;
    if (onlySelected && selectedCount == 0)
        return 0;

    QFont font = painter.font();
    font.setPointSizeF(8.5);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    int drawn = 0;
    for (const Shown& label : shown) {
        if (onlySelected && !label.scene->selected)
            continue;
        if (drawn >= kMaxLabels)
            break;
        const QPointF origin = label.at + QPointF(6, -6);
        if (label.look.background.isValid()) {
            const QRectF box = QRectF(metrics.boundingRect(label.look.text)).translated(origin).adjusted(-2, -1, 2, 1);
            painter.fillRect(box, label.look.background);
        }
        const QColor pen = label.look.foreground.isValid() ? label.look.foreground : colour;
        painter.setPen(label.scene->selected ? selectedColour : pen);
        painter.drawText(origin, label.look.text);
        ++drawn;
    }
    return drawn;
}
