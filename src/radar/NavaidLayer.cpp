#include "radar/NavaidLayer.h"

namespace corvane {
static void DrawStation(Surface& surface, const ScopeView& view, const NavaidRecord& station, Color color)
{
    constexpr std::int16_t LastDotLevel = 24;
    const auto at = VisiblePixel(view, {station.Lat, station.Lon});
    if (!at)
        return;
    if (view.ZoomLevel <= LastDotLevel) {
        surface.SetPixel(*at, color);
        return;
    }
    surface.State.PenColor = color;
    surface.State.PenWidth = 1;
    surface.State.Style = PenStyle::Solid;
    surface.State.FillSolid = false;
    surface.Circle(*at, 5);
    surface.Circle(*at, 10);
}

void DrawVors(Surface& surface, const ScopeView& view, std::span<const NavaidRecord> vors)
{
    for (const NavaidRecord& vor : vors)
        DrawStation(surface, view, vor, {0, 0, 255});
}

void DrawNdbs(Surface& surface, const ScopeView& view, std::span<const NavaidRecord> ndbs)
{
    for (const NavaidRecord& ndb : ndbs)
        DrawStation(surface, view, ndb, {0, 255, 0});
}
} // namespace corvane
