#include "app/windows/RadarEmblem.h"

#include <QPainter>

namespace corvane {
QIcon RadarIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/corvane-%1.png").arg(size), {size, size});
    return icon;
}

void PaintRadarEmblem(QPainter& painter, const QRect& area)
{
    const int margin = area.height() / 20;
    painter.fillRect(area, Qt::black);
    RadarIcon().paint(&painter, area.adjusted(margin, margin, -margin, -margin));
}
} // namespace corvane
