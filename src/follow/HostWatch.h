#pragma once

#include "core/MagVarGrid.h"
#include "follow/FollowedPump.h"

#include <cstdint>
#include <memory>
#include <string>

namespace corvane {
/// The member that hosts a session, and the session.
struct WatchedHost {
    std::shared_ptr<SessionPeer> Peer;
    PlayerId Id = 0;
    std::string Name;
    bool IsPilot = true; ///< or an observer
    SessionEntry Session;
};

/// Follows a session that this program hosts, with simulated or recorded members, from its host's place, and tells its
/// events as a member who joined it would. What the hosting member says itself is among them.
///
/// Whatever others send, malformed or not, only a lost transport ends it.
class HostWatch final : public SessionPeerFactory {
public:
    HostWatch(SessionPeerFactory& factory, const MagVarGrid& magVar, SessionEvents& events);

    /// Makes the peers of the session to be watched, all players of which share one.
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;
    /// A session that was made with this factory begins to be followed, at a time on a clock that never goes back.
    void Begin(const WatchedHost& host, std::int64_t nowMs);
    /// Tells what has happened up to a time on that clock. An Error says how the session was lost.
    Result<void> Tick(std::int64_t nowMs);

    [[nodiscard]] const PlayerTable& Players() const noexcept { return m_players; }

private:
    struct Overheard;
    class HostingPeer;
    class WatchingPeer;

    SessionPeerFactory& m_factory;
    SessionEvents& m_events;
    std::shared_ptr<Overheard> m_overheard;
    SessionState m_session;
    PlayerTable m_players;
    FollowedPump m_pump;
};
} // namespace corvane
