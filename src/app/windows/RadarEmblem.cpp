#include "app/windows/RadarEmblem.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace corvane {
void PaintRadarEmblem(QPainter& painter, const QRect& area)
{
    painter.fillRect(area, Qt::black);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPoint center = area.center();
    const int radius = std::min(area.width(), area.height()) * 9 / 20;
    constexpr int SweepDegrees = 50;
    QConicalGradient sweep(center, SweepDegrees);
    sweep.setColorAt(0, QColor(0, 192, 0, 170));
    sweep.setColorAt(0.15, QColor(0, 192, 0, 0));
    sweep.setColorAt(1, QColor(0, 192, 0, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sweep);
    painter.drawEllipse(center, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor(0, 128, 0));
    for (int ring = 1; ring <= 3; ++ring)
        painter.drawEllipse(center, radius * ring / 3, radius * ring / 3);
    painter.drawLine(center - QPoint(radius, 0), center + QPoint(radius, 0));
    painter.drawLine(center - QPoint(0, radius), center + QPoint(0, radius));
}

QIcon RadarIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 64, 128}) {
        QPixmap picture(size, size);
        QPainter painter(&picture);
        PaintRadarEmblem(painter, picture.rect());
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}
} // namespace corvane
