#pragma once

#include <QIcon>

class QPainter;
class QRect;

namespace corvane {
/// The program's emblem, a radar's sweep over its rings, as the icon of its windows: the same pictures that the desktop
/// shows in its menu.
QIcon RadarIcon();

/// The emblem on black, fitted into an area.
void PaintRadarEmblem(QPainter& painter, const QRect& area);
} // namespace corvane
