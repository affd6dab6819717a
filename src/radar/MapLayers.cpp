#include "radar/MapLayers.h"

#include "radar/AirportLayers.h"
#include "radar/AirspaceLayer.h"
#include "radar/NavaidLayer.h"
#include "radar/OutlineLayer.h"
#include "radar/RangeRings.h"

namespace corvane {
static void DrawAirports(Surface& surface, const MapScene& scene)
{
    constexpr std::int16_t LastDotLevel = 24;
    if (scene.View.ZoomLevel > LastDotLevel)
        DrawAirportDetails(surface, scene);
    else if (scene.Flags.ShowAirportLocations)
        DrawAirportDots(surface, scene.View, scene.Area.AreaAirports);
}

void DrawMapLayers(Surface& surface, const MapScene& scene)
{
    constexpr std::int16_t FirstRingLevel = 5;
    constexpr std::int16_t LastRingLevel = 34;
    const ScopeView& view = scene.View;
    const DisplayFlags& flags = scene.Flags;
    if (view.ZoomLevel >= MinZoomLevel) {
        if (view.ZoomLevel >= FirstRingLevel && view.ZoomLevel <= LastRingLevel && flags.ShowRangeRings)
            DrawRangeRings(surface, view);
        if (flags.ShowWorldMap)
            DrawWorldOutlines(surface, view, scene.Area.OutlinePoints);
        if (AirspacesShown(scene))
            DrawAirspaces(surface, scene);
        DrawAirports(surface, scene);
        if (flags.ShowNdbs)
            DrawNdbs(surface, view, scene.Area.AreaNdbs);
        if (flags.ShowVors)
            DrawVors(surface, view, scene.Area.AreaVors);
    }
    surface.RestoreDefaults();
}
} // namespace corvane
