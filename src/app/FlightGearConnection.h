#pragma once

#include "app/AppState.h"
#include "traffic/TrafficProvider.h"
#include "traffic/flightgear/FlightGearFeed.h"

#include <functional>
#include <optional>

namespace corvane {
/// The connection type of FlightGear's pilots, among whom this program stands at the loaded area's centre.
/// ask    where they are, and under which callsign; nothing: the look for sessions is left
/// state  its health is told; it must outlive the connection
TrafficConnection MakeFlightGearConnection(AppState& state,
                                           std::function<std::optional<FlightGearLink>(const AreaModel& area)> ask);
} // namespace corvane
