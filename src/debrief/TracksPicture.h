#pragma once

#include "debrief/Debrief.h"
#include "radar/MapScene.h"
#include "radar/Surface.h"

#include <string>

namespace corvane {
/// A view in true proportions, around the area's centre, into which the tracks of a debrief fit.
ScopeView ViewOfTracks(const Debrief& debrief, const AreaModel& area, std::int32_t widthPx, std::int32_t heightPx);
/// Draws the map and over it the way of each flight, with its callsign where it was last; those that were the
/// controller's in their own colours, others grey.
void DrawTracks(Surface& surface, const Debrief& debrief, const MapScene& scene);
/// The same as an SVG element.
std::string TracksSvg(const Debrief& debrief, const AreaModel& area, const MagVarGrid& grid);
/// The number of aircraft handled over the time, as an SVG element.
std::string TimelineSvg(const Debrief& debrief);
} // namespace corvane
