#pragma once

#include "cli/AreaOptions.h"
#include "cli/NumberList.h"
#include "core/Geodesy.h"
#include "traffic/NearestTraffic.h"
#include "traffic/TrafficDetails.h"
#include "traffic/out/FeedOut.h"

#include <memory>
#include <ostream>
#include <string>

namespace corvane {
/// Where other traffic is looked for and which of it is taken, as the options give it.
struct TrafficOptions {
    std::string Feed; ///< "sbs:HOST:PORT", "json:..."; empty: none
    AreaOptions Area; ///< the folder is the command's
    std::string Around;
    double RadiusNm = DefaultTrafficRadiusNm;
    std::size_t Most = DefaultMostTraffic;
};

/// Adds --feed.
CLI::Option* AddFeedOption(CLI::App& command, TrafficOptions& options);
/// Adds --airport, --sector and --around, of which other traffic needs one, and --radius and --most.
void AddTrafficPlaceOptions(CLI::App& command, TrafficOptions& options);
/// For a command's callback: the arguments are wrong unless a place is given just where there is other traffic.
void RequireTrafficPlace(const TrafficOptions& options, bool traffic);
/// Adds --feed-out.
void AddFeedOutOption(CLI::App& command, std::string& place);

/// A place on the earth, "LAT,LON".
CLI::Validator Place();

/// The center that the options name, and how much is taken around it.
Result<NearestTrafficOptions> NearestOf(const TrafficOptions& options, const FolderOptions& folders,
                                        std::ostream& notices);

/// The feed of targets that --feed-out asks for; null where it does not. Its grid and details must outlive it.
Result<std::unique_ptr<FeedOut>> OpenFeedOut(const std::string& place, const MagVarGrid& magVar,
                                             const TrafficDetailsTable* details);
} // namespace corvane
