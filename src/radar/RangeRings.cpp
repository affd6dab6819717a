#include "radar/RangeRings.h"

#include "core/Geodesy.h"

namespace corvane {
void DrawRangeRings(Surface& surface, const ScopeView& view)
{
    constexpr Color RingGrey{128, 128, 128};
    constexpr int RingStepNm = 10;
    constexpr int LargestRingNm = 90;
    surface.State.PenColor = RingGrey;
    surface.State.PenWidth = 1;
    surface.State.Style = PenStyle::Dash;
    for (int nm = RingStepNm; nm <= LargestRingNm; nm += RingStepNm) {
        const LatLon northWest = DestinationNm(view.ViewCenter, 315, nm);
        const LatLon southEast = DestinationNm(view.ViewCenter, 135, nm);
        if (OnEarth(northWest) && OnEarth(southEast))
            surface.Ellipse(ProjectToScope(view, northWest), ProjectToScope(view, southEast));
    }
    surface.RestoreDefaults();
}
} // namespace corvane
