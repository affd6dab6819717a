#include "app/TrafficHosting.h"

#include "traffic/TrafficSession.h"

#include <algorithm>

namespace corvane {
TrafficConnection HostedWhereWanted(TrafficConnection connection, const AppState& state, ServedNetwork& network)
{
    connection.Network = [&state, &network]() -> SessionPeerFactory* {
        network.ServeAt(state.TrafficServedAt);
        return state.TrafficServedAt.empty() ? nullptr : &network;
    };
    return connection;
}

std::size_t RoomForTraffic(const AppState& state, std::size_t wanted) noexcept
{
    constexpr std::size_t Kept = 3;
    return state.TrafficServedAt.empty() ? wanted : std::min(wanted, std::size_t{MostOnNetwork} - Kept);
}
} // namespace corvane
