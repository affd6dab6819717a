#pragma once

#include "area/AreaModel.h"
#include "traffic/flightgear/FlightGearSource.h"

#include <string>

namespace corvane {
/// A controller's station at an area's centre, on the ground of the airport there.
FlightGearStation StationAt(const AreaModel& area, std::string callsign);

/// A callsign for who controls an area: "KSEA_TW" at an airport, "CENTER" in a sector.
std::string SuggestedCallsign(const AreaModel& area);

/// Whether a text may be a callsign there: 1 to 7 letters, digits, - and _; and not an observer's, whom relays pass
/// nothing on of.
bool IsStationCallsign(std::string_view text);
} // namespace corvane
