#pragma once

#include <QIcon>

class QPainter;
class QRect;

namespace corvane {
/// The program's emblem, a radar's sweep over its rings on black, fitted into an area.
void PaintRadarEmblem(QPainter& painter, const QRect& area);

/// The emblem as the icon of the program's windows.
QIcon RadarIcon();
} // namespace corvane
