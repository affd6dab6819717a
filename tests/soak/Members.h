#pragma once

#include "core/Result.h"
#include "net/DirectPlayPeer.h"

#include <nlohmann/json.hpp>

#include <string>

namespace corvane::soak {
/// What a member of the soak run does. Each runs in a process of its own, on a loopback address of its own.
struct MemberOptions {
    std::string Address;
    std::string HostAddress;
    double Seconds = 10;
    int Pilots = 30; ///< players of the host
    int Rate = 10;   ///< messages a second from each
    bool CutsItsConnections = false;
};

/// Hosts a session and sends numbered messages from every pilot to all, guaranteed. At the end each pilot says how many
/// it sent; the session stays open until the others have left, or for ten seconds.
Result<nlohmann::json> Serve(const MemberOptions& options);
/// Joins and checks that of each pilot's messages none is missing, doubled or out of order, up to the last.
Result<nlohmann::json> Follow(const MemberOptions& options);
/// Joins and sends as fast as it can, guaranteed and not.
Result<nlohmann::json> Flood(const MemberOptions& options);

/// Hosts a practice session of five pilots, none of whom ought to leave.
Result<nlohmann::json> Fly(const MemberOptions& options);

/// A member's end of the session, and its player.
struct JoinedMember {
    std::unique_ptr<DirectPlayPeer> Peer;
    PlayerId Id = 0;
};
Result<JoinedMember> JoinAs(const MemberOptions& options, const char* name);

/// Processor time that this process has used, in seconds.
double ProcessorSeconds();
/// Memory in use by this process, in kilobytes.
long ResidentKb();
} // namespace corvane::soak
