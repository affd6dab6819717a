#pragma once

#include "cli/AreaOptions.h"
#include "cli/NumberList.h"
#include "core/Geodesy.h"
#include "traffic/NearestTraffic.h"

#include <ostream>
#include <string>

namespace corvane {
/// Where other traffic is looked for and which of it is taken, as the options give it.
struct TrafficOptions {
    std::string Feed;       ///< "sbs:HOST:PORT", "json:..."; empty: none
    std::string FlightGear; ///< "HOST[:PORT]"; empty: none
    std::string Callsign;   ///< on FlightGear
    std::uint16_t ListenPort = 0;
    std::string BindAddress;
    AreaOptions Area; ///< the folder is the command's
    std::string Around;
    double RadiusNm = DefaultTrafficRadiusNm;
    std::size_t Most = DefaultMostTraffic;

    [[nodiscard]] bool IsWanted() const noexcept { return !FlightGear.empty() || !Feed.empty(); }
    [[nodiscard]] bool HasPlace() const noexcept
    {
        return !Around.empty() || !Area.Airport.empty() || !Area.Sector.empty();
    }
};

/// Adds --feed.
CLI::Option* AddFeedOption(CLI::App& command, TrafficOptions& options);
/// Adds --airport, --sector and --around, of which other traffic needs one, and --radius and --most.
void AddTrafficPlaceOptions(CLI::App& command, TrafficOptions& options);
/// Adds --flightgear.
CLI::Option* AddFlightGearOption(CLI::App& command, TrafficOptions& options);
/// Adds --from, which is one or the other.
CLI::Option* AddFromOption(CLI::App& command, TrafficOptions& options);
/// Adds --callsign and --listen, of FlightGear.
void AddStationOptions(CLI::App& command, TrafficOptions& options);
/// For a command's callback: the arguments are wrong unless traffic has what it needs, and only traffic.
void CheckTrafficOptions(const TrafficOptions& options);
/// Adds --feed-out.
void AddFeedOutOption(CLI::App& command, std::string& place);

/// A place on the earth, "LAT,LON".
CLI::Validator Place();

/// Traffic that has begun to be listened to, and where that is.
struct OpenedTraffic {
    std::unique_ptr<TrafficFeed> Feed;
    std::string Address;
    std::uint16_t Port = 0;
};
Result<OpenedTraffic> OpenTraffic(const TrafficOptions& options, const FolderOptions& folders, std::ostream& notices);

} // namespace corvane
