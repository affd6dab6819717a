#pragma once

#include "radar/MapScene.h"
#include "radar/Surface.h"

#include <span>
#include <string>

namespace corvane {
/// A red pixel for every airport on the scope: the picture up to level 24.
void DrawAirportDots(Surface& surface, const ScopeView& view, std::span<const AirportRecord> airports);

/// The picture above level 24: for each airport strictly inside the saved rectangle, in table order, gates and taxiways
/// (level 35 and up), runways and ILS (30 and up) and the name, as the flags allow.
void DrawAirportDetails(Surface& surface, const MapScene& scene);

/// Filled dots. Leaves the fill solid, even where no gate was on the scope.
void DrawGates(Surface& surface, const ScopeView& view, const AirportRecord& airport);
/// Grey lines of width 2 for the segments with an end on the scope, and the names of those of kind 0 in white at their
/// middle. A segment that names a point which does not exist, as a damaged database may, is not drawn.
void DrawTaxiways(Surface& surface, const MapScene& scene, const AirportRecord& airport);
/// Green lines of width 2 and white idents at both ends, for runways with an end or their centre on the scope.
void DrawRunways(Surface& surface, const ScopeView& view, const AirportRecord& airport);
/// Yellow triangles of 10 degrees and 1800 ft, pointing from the ILS along the reciprocal of its course. Width and
/// style of the pen are the ones left by whatever was drawn before.
void DrawIls(Surface& surface, const ScopeView& view, const MagVarGrid& variation, const AirportRecord& airport);
/// "NAME - ICAO" in white. text is the caller's buffer, kept to spare an allocation an airport.
void DrawAirportName(Surface& surface, const ScopeView& view, const AirportRecord& airport, std::string& text);
} // namespace corvane
