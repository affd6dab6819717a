#include "app/FlightGearConnection.h"

#include <utility>

namespace corvane {
TrafficConnection MakeFlightGearConnection(AppState& state,
                                           std::function<std::optional<FlightGearLink>(const AreaModel& area)> ask)
{
    TrafficConnection connection;
    connection.Name = "FlightGear multiplayer";
    connection.Address = "flightgear:";
    connection.ListenMs = 3000; // a relay begins to send when it has heard of us
    connection.Open = [&area = state.Area, ask = std::move(ask)]() -> Result<std::unique_ptr<TrafficFeed>> {
        auto link = ask(area);
        if (!link)
            return Fail("FlightGear", "was left");
        auto feed = FlightGearFeed::Start(*std::move(link));
        if (!feed)
            return feed.error();
        return std::unique_ptr<TrafficFeed>(*std::move(feed));
    };
    connection.OnHealth = [&health = state.TrafficHealth](std::string text) { health = std::move(text); };
    return connection;
}
} // namespace corvane
