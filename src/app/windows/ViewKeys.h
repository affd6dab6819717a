#pragma once

class QKeyEvent;

namespace corvane {
class RadarDisplay;

/// Zooms by so many steps: in for positive ones, out for negative ones.
void ZoomBy(RadarDisplay& display, int steps);

/// Does what a key does to the view: zooms, centres on the area, moves by a tenth. Returns whether it is such a key.
bool PressViewKey(RadarDisplay& display, const QKeyEvent& event);
} // namespace corvane
