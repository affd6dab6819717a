#include "app/FeedConnection.h"

#include "traffic/feeds/AircraftFeed.h"

#include <utility>

namespace corvane {
static Result<std::unique_ptr<TrafficFeed>> OpenTypedFeed(const AreaModel& area,
                                                          const std::optional<std::string>& typed)
{
    if (!typed)
        return Fail("feed", "was left");
    const auto place = ParseTypedFeedPlace(*typed);
    if (!place)
        return place.error();
    NearestTrafficOptions nearest;
    nearest.Center = area.AreaCenter;
    nearest.FollowCenter = [&area] { return area.AreaCenter; };
    return OpenAircraftFeed(*place, std::move(nearest));
}

TrafficConnection MakeFeedConnection(AppState& state, std::function<std::optional<std::string>()> ask)
{
    TrafficConnection connection;
    connection.Name = FeedConnectionName;
    connection.Address = FeedConnectionAddress;
    connection.Open = [&area = state.Area, ask = std::move(ask)] { return OpenTypedFeed(area, ask()); };
    connection.OnHealth = [&health = state.TrafficHealth](std::string text) { health = std::move(text); };
    return connection;
}
} // namespace corvane
