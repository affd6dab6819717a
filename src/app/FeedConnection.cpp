#include "app/FeedConnection.h"

#include "app/TrafficHosting.h"
#include "traffic/feeds/AircraftFeed.h"

#include <utility>

namespace corvane {
TrafficConnection MakeFeedConnection(AppState& state, std::function<std::optional<FeedWish>()> ask)
{
    TrafficConnection connection;
    connection.Name = FeedConnectionName;
    connection.Address = FeedConnectionAddress;
    connection.Open = [&state, ask = std::move(ask)]() -> Result<std::unique_ptr<TrafficFeed>> {
        const auto wish = ask();
        if (!wish)
            return Fail("feed", "was left");
        NearestTrafficOptions nearest;
        nearest.Center = state.Area.AreaCenter;
        nearest.RadiusNm = wish->RadiusNm;
        nearest.Most = RoomForTraffic(state, wish->Most);
        nearest.FollowCenter = [&area = state.Area] { return area.AreaCenter; };
        return OpenAircraftFeed(wish->Place, std::move(nearest));
    };
    connection.OnHealth = [&health = state.TrafficHealth](std::string text) { health = std::move(text); };
    return connection;
}
} // namespace corvane
