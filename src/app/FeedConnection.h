#pragma once

#include "app/AppState.h"
#include "traffic/NearestTraffic.h"
#include "traffic/TrafficProvider.h"
#include "traffic/feeds/FeedPlace.h"

#include <functional>
#include <optional>

namespace corvane {
inline constexpr std::string_view FeedConnectionName = "Aircraft feed";
inline constexpr std::string_view FeedConnectionAddress = "feed:";

/// Which real aircraft somebody wants to see.
struct FeedWish {
    FeedPlace Place;
    double RadiusNm = DefaultTrafficRadiusNm; ///< around the area's centre
    std::size_t Most = DefaultMostTraffic;    ///< the nearest
};

/// The connection type of real aircraft: those around the loaded area are members.
/// ask    what is wanted; nothing: the look for sessions is left
/// state  its area is followed, its health told; it must outlive the connection
TrafficConnection MakeFeedConnection(AppState& state, std::function<std::optional<FeedWish>()> ask);
} // namespace corvane
