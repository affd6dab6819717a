#pragma once

#include "app/AppState.h"
#include "app/ServedNetwork.h"
#include "traffic/TrafficProvider.h"

#include <cstddef>

namespace corvane {
/// The same connection type, whose session others can join, too, where the state says so.
/// state, network  must outlive its peers
TrafficConnection HostedWhereWanted(TrafficConnection connection, const AppState& state, ServedNetwork& network);

/// So many of the aircraft that are wanted can be members: all, or, where others can join the session, as many as leave
/// room for the host, the controller and somebody else.
std::size_t RoomForTraffic(const AppState& state, std::size_t wanted) noexcept;
} // namespace corvane
