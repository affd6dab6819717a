#pragma once

#include "session/SessionPeer.h"

#include <memory>
#include <string>

namespace corvane {
/// How a session that Corvane hosts with members of its own is described to others; names and passwords are
/// Windows-1252.
/// maxPlayers  0: no limit
/// password    empty: whoever comes may join
/// migrates    another member takes the session over when its host leaves
SessionEntry DescribeHosted(std::string name, std::int32_t maxPlayers, std::string password, bool migrates);

/// A fresh peer on the connection of an address or, where that is empty, on the first that it offers. An Error says
/// which operation failed.
Result<std::unique_ptr<SessionPeer>> ConnectedPeer(SessionPeerFactory& factory, const std::string& address);

/// Creates a session on a connected peer, with the group that the simulator's hosts make.
/// Returns  the group.
Result<std::int32_t> CreateHosted(SessionPeer& peer, const SessionEntry& entry);
} // namespace corvane
