#include "app/FlightGearConnection.h"

#include "app/TrafficHosting.h"

#include <utility>

namespace corvane {
TrafficConnection MakeFlightGearConnection(AppState& state,
                                           std::function<std::optional<FlightGearWish>(const AreaModel& area)> ask)
{
    TrafficConnection connection;
    connection.Name = FlightGearConnectionName;
    connection.Address = FlightGearConnectionAddress;
    connection.ListenMs = 3000; // a relay begins to send when it has heard of us
    connection.Open = [&state, ask = std::move(ask)]() -> Result<std::unique_ptr<TrafficFeed>> {
        constexpr double WholeEarthNm = 10800; // a relay passes on what is in range
        auto wish = ask(state.Area);
        if (!wish)
            return Fail("FlightGear", "was left");
        auto feed = FlightGearFeed::Start(std::move(wish->Link));
        if (!feed)
            return feed.error();
        NearestTrafficOptions nearest;
        nearest.Center = state.Area.AreaCenter;
        nearest.RadiusNm = WholeEarthNm;
        nearest.Most = RoomForTraffic(state, wish->Most);
        return std::unique_ptr<TrafficFeed>(std::make_unique<NearestTraffic>(*std::move(feed), std::move(nearest)));
    };
    connection.OnHealth = [&health = state.TrafficHealth](std::string text) { health = std::move(text); };
    return connection;
}
} // namespace corvane
