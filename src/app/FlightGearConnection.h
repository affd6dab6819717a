#pragma once

#include "app/AppState.h"
#include "traffic/NearestTraffic.h"
#include "traffic/TrafficProvider.h"
#include "traffic/flightgear/FlightGearFeed.h"

#include <functional>
#include <optional>

namespace corvane {
inline constexpr std::string_view FlightGearConnectionName = "FlightGear multiplayer";
inline constexpr std::string_view FlightGearConnectionAddress = "flightgear:";

/// Which of FlightGear's pilots somebody wants to see, and as whom.
struct FlightGearWish {
    FlightGearLink Link;
    std::size_t Most = DefaultMostTraffic; ///< the nearest
};

/// The connection type of FlightGear's pilots, among whom this program stands at the loaded area's centre.
/// ask    what is wanted; nothing: the look for sessions is left
/// state  its health is told; it must outlive the connection
TrafficConnection MakeFlightGearConnection(AppState& state,
                                           std::function<std::optional<FlightGearWish>(const AreaModel& area)> ask);
} // namespace corvane
