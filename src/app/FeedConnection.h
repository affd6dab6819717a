#pragma once

#include "app/AppState.h"
#include "traffic/TrafficProvider.h"

#include <functional>
#include <optional>
#include <string>

namespace corvane {
inline constexpr std::string_view FeedConnectionName = "Aircraft feed";
inline constexpr std::string_view FeedConnectionAddress = "feed:";

/// The connection type of real aircraft: those around the loaded area are members.
/// ask    where the feed is, as somebody types it; nothing: the look for sessions is left
/// state  its area is followed, its health told; it must outlive the connection
TrafficConnection MakeFeedConnection(AppState& state, std::function<std::optional<std::string>()> ask);
} // namespace corvane
