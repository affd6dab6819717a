#pragma once

#include "area/AreaModel.h"
#include "traffic/flightgear/FlightGearFeed.h"

#include <optional>
#include <string>

namespace corvane {
/// Asks where a feed of real aircraft is: a receiver's name or address, or an aircraft.json. Offers the answer of the
/// last time, or this machine with the usual port. UTF-8; nothing when the user leaves it.
std::optional<std::string> AskFeedAddress();

/// Asks at which port, or address and port, the targets are offered to other programs; as above.
std::optional<std::string> AskFeedOutPort();
/// Where FlightGear's traffic is found, and the callsign under which the controller of an area takes part; asked again
/// until both can be. Nothing when the user leaves it.
std::optional<FlightGearLink> AskFlightGear(const AreaModel& area);
} // namespace corvane
