#pragma once

#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "follow/FollowedPump.h"
#include "follow/SessionEvents.h"
#include "session/ConnectionModel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {
/// Texts are Windows-1252.
struct FollowOptions {
    std::string SessionName = {}; ///< empty: the first session found
    std::string Nickname{DefaultNickname};
    std::string Password = {};
    std::optional<double> AdmitWithinS = {}; ///< gives up when the host has not answered for so long; none: never
    bool TakesOver = false;                  ///< SessionState::TakesOver
};

/// Takes part in a session as the program does, without its windows: finds it, joins it, keeps the table of its
/// members, and says lines of chat. The first of the factory's connection types is used.
///
/// Everything that the program would show comes as an event; Tick stands for the program's timers.
class SessionFollower final : private ConnectionView {
public:
    SessionFollower(SessionPeerFactory& factory, const MagVarGrid& magVar, SessionEvents& events,
                    FollowOptions options);
    SessionFollower(const SessionFollower&) = delete;
    SessionFollower& operator=(const SessionFollower&) = delete;
    SessionFollower(SessionFollower&&) = delete;
    SessionFollower& operator=(SessionFollower&&) = delete;
    ~SessionFollower() override = default;

    /// Finds the session and asks its host for admission. An Error says why the session was not entered.
    Result<void> Join();
    /// Does what is due at a time on a clock that never goes back. An Error says why the session is over: the host
    /// refused, or the session was lost. Nothing may be called after it.
    Result<void> Tick(std::int64_t nowMs);
    /// Whether the host has admitted this member.
    [[nodiscard]] bool IsJoined() const noexcept { return m_session.SessionJoined; }
    /// Says a line of chat to all.
    void Say(std::string_view text);
    /// Whether so much waits to be sent that lines had better wait too.
    [[nodiscard]] bool Congested() const { return m_session.SessionPeer && m_session.SessionPeer->Congested(); }
    /// Leaves the session, or stops waiting for admission.
    void Leave(std::string_view reason);

    [[nodiscard]] const PlayerTable& Players() const noexcept { return m_players; }

private:
    void SetConnections(std::span<const ConnectionEntry> /*connections*/) override {}
    void SetSessions(std::span<const std::string> /*lines*/) override {}
    void SetStatus(std::string_view /*status*/) override {}
    void SetListsEnabled(bool /*enabled*/) override {}
    void SetTimers(bool running) override;
    void OpenRadar() override;
    void EndProgram() override {}

    [[nodiscard]] std::optional<std::size_t> WantedSession() const;
    Result<void> AwaitAdmission();
    [[nodiscard]] Error Failure(std::string_view otherwise) const;

    SessionPeerFactory& m_factory;
    SessionEvents& m_events;
    FollowOptions m_options;
    SessionState m_session;
    PlayerTable m_players;
    FollowedPump m_pump;
    ConnectionModel m_connection;
    std::string m_sessionName;
    Interval m_retry{RetryIntervalMs};
    std::int64_t m_nowMs = 0;
    std::int64_t m_waitingSinceMs = 0;
    bool m_saidThatItWaits = false;
    bool m_startRetry = false; ///< the waiting began since the last tick
};
} // namespace corvane
