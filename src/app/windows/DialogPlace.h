#pragma once

#include <QWidget>

namespace corvane {
/// Puts a window that works beside the radar into the radar's upper right corner, below the menus, in its least size.
inline void PlaceBelowMenus(QWidget& window, const QWidget& radar)
{
    constexpr int BelowTheMenus = 50;
    window.adjustSize();
    window.move(radar.x() + radar.width() - window.width(), radar.y() + BelowTheMenus);
}
} // namespace corvane
