#pragma once

#include "radar/MapScene.h"
#include "radar/Surface.h"

namespace corvane {
/// Draws the map of the area on a surface in its drawing defaults, and leaves it in them: range rings, world outlines,
/// airspaces, airports, NDBs and VORs, in this order, as zoom level and display flags allow.
///
/// Between the layers the drawing state carries over: each sets the properties that it names and inherits the others,
/// so that an ILS is two pixels wide after a runway. The order and the state are part of the picture.
void DrawMapLayers(Surface& surface, const MapScene& scene);
} // namespace corvane
