#pragma once

#include "core/Result.h"
#include "session/SessionPeer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
class PlayerTable;

/// Where this program stands towards a session: the peer through which all calls go, and what joining found out.
struct SessionState {
    std::unique_ptr<corvane::SessionPeer> SessionPeer; ///< null between release and creation
    std::vector<ConnectionEntry> ConnectionList;
    std::vector<SessionEntry> SessionList; ///< the sessions that were located last
    std::string SessionGuid;               ///< instance GUID of the session joined
    std::int32_t SessionMaxPlayers = 0;
    PlayerId OwnPlayerId = 0;   ///< below 1: no own player
    bool SessionJoined = false; ///< the host has admitted this program
    bool RadarOpen = false;
    /// Where the transport makes this program's machine the host and the host before has not said that it leaves, admit
    /// members in its place. By the simulator's own rules nobody would.
    bool TakesOver = false;
    bool LeaveOperation = false; ///< the user does not want to wait for the operation under way any longer

    [[nodiscard]] bool HasOwnPlayer() const noexcept { return SessionPeer && OwnPlayerId >= 1; }
};

/// Makes a fresh peer and lists its ways of reaching sessions. On failure there is no peer, or one without connections.
Result<void> CreateSessionObjects(SessionPeerFactory& factory, SessionState& session);

/// Lets go of the lists and of the peer, which leaves whatever session it is in; there is no own player afterwards.
void ReleaseSessionObjects(SessionState& session) noexcept;

/// Leaves the session for good: destroys the own player and closes (failures are not news to someone who leaves),
/// empties the table, and makes fresh objects for the next connection. Stopping timers and closing windows is the
/// caller's part.
/// Returns  the failure to create the fresh objects.
Result<void> LeaveSession(SessionPeerFactory& factory, SessionState& session, PlayerTable& players);

/// Sends a message with guaranteed delivery from the own player, which must exist.
Result<void> SendFromOwnPlayer(const SessionState& session, PlayerId to, ByteSpan message);

/// The own player's friendly name.
Result<std::string> OwnFriendlyName(const SessionState& session);
} // namespace corvane
