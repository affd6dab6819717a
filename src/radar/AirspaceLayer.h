#pragma once

#include "core/Geodesy.h"
#include "radar/MapScene.h"
#include "radar/Surface.h"

namespace corvane {
/// Whether airspaces and their highlight belong to the picture: level 5 to 34, some in the area, and not hidden.
bool AirspacesShown(const MapScene& scene) noexcept;

/// Draws the airspaces whose centre lies on the scope: a dot at the centre and the outline. Low sectors are never
/// drawn, TRACONs as ShowTracon says. Leaves the pen and fill of the last airspace.
void DrawAirspaces(Surface& surface, const MapScene& scene);

/// Draws the selected airspace in yellow: the last one whose centre is exactly the selection's position, of any kind.
/// Nothing while the selection's Name or Kind is empty. Leaves the drawing defaults.
void DrawAirspaceHighlight(Surface& surface, const MapScene& scene, const PositionRecord& selectedAirspace);
} // namespace corvane
