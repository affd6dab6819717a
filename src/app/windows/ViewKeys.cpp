#include "app/windows/ViewKeys.h"

#include "radar/RadarDisplay.h"

#include <QKeyEvent>

#include <cstdlib>

namespace corvane {
void ZoomBy(RadarDisplay& display, int steps)
{
    for (int step = 0; step < std::abs(steps); ++step)
        steps > 0 ? display.ZoomIn() : display.ZoomOut();
}

bool PressViewKey(RadarDisplay& display, const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: ZoomBy(display, 1); return true;
    case Qt::Key_Minus: ZoomBy(display, -1); return true;
    case Qt::Key_C: display.CenterOnArea(); return true;
    case Qt::Key_Left: display.Pan(-1, 0); return true;
    case Qt::Key_Right: display.Pan(1, 0); return true;
    case Qt::Key_Up: display.Pan(0, 1); return true;
    case Qt::Key_Down: display.Pan(0, -1); return true;
    default: return false;
    }
}
} // namespace corvane
