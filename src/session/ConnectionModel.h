#pragma once

#include "core/MessageBoxes.h"
#include "core/Result.h"
#include "session/SessionState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {
class PlayerTable;

inline constexpr std::string_view DefaultNickname = "ATC Controller";
inline constexpr int HandshakeIntervalMs = 1;
inline constexpr int RetryIntervalMs = 30000;

enum class ConnectionState : std::uint8_t { Idle, Looking, Listed, Connecting, Waiting, Connected };

/// What the connection's logic asks of the window that drives it.
class ConnectionView {
public:
    virtual ~ConnectionView() = default;

    /// Replaces the list of connection types.
    virtual void SetConnections(std::span<const ConnectionEntry> connections) = 0;
    /// Replaces the list of sessions; no line clears it. Lines are Windows-1252.
    virtual void SetSessions(std::span<const std::string> lines) = 0;
    /// Shows a status text and repaints it at once: a long call may follow.
    virtual void SetStatus(std::string_view status) = 0;
    /// Enables or disables the list of connection types and the button that locates sessions.
    virtual void SetListsEnabled(bool enabled) = 0;
    /// Starts or stops both timers, HandshakeTick every HandshakeIntervalMs and RetryTick every RetryIntervalMs.
    virtual void SetTimers(bool running) = 0;
    /// Opens the radar window, which closes this one. Must not destroy the ConnectionModel.
    virtual void OpenRadar() = 0;
    /// Empties the area's tables and ends the program.
    virtual void EndProgram() = 0;
};

/// The connection window's logic: finds sessions, joins one, and waits for its host's admission.
///
/// Every failure shows its message and leads back to Idle with fresh session objects. The calls show message boxes
/// that may stay open for minutes while timers run on; while one call is under way, every other returns at once.
class ConnectionModel {
public:
    ConnectionModel(SessionPeerFactory& factory, SessionState& session, PlayerTable& players, ConnectionView& view,
                    MessageBoxes& boxes);

    /// The window opens: fresh session objects, and the connection types listed. Where those cannot be made the list
    /// stays empty, and locating sessions reports it.
    void Load();
    void ConnectionTypeChosen(std::size_t index);
    void LocateSession();
    /// Joins the selected session. A password prompt that is cancelled leads back to the located sessions.
    /// selected  index of the session line, if any is selected
    /// nickname  Windows-1252; the other members see it with "**" before it
    void JoinSession(std::optional<std::size_t> selected, std::string_view nickname);
    /// Reads the host's answer among the messages waiting.
    void HandshakeTick();
    /// Asks the host again. A failure is one of joining: the session has gone.
    void RetryTick();
    /// The user leaves the window, and the operation under way with it. Does nothing once the host has accepted: the
    /// radar window is closing it then.
    void Exit();
    /// Leaves the operation under way, which then fails. Where the transport waits, it asks
    /// SessionState::LeaveOperation.
    void LeaveOperation() noexcept { m_session.LeaveOperation = m_busy; }

    [[nodiscard]] ConnectionState State() const noexcept { return m_state; }
    /// What was behind the failure message shown last.
    [[nodiscard]] const std::optional<Error>& LastError() const noexcept { return m_lastError; }

private:
    enum class Failure : std::uint8_t { Enumeration, Initialization, Listing, Joining, PlayerCreation };

    void FindSessions();
    void Locate();
    void OpenSession(std::optional<std::size_t> selected, std::string_view nickname);
    void Join(SessionEntry entry, std::string_view nickname);
    void RefuseSelection(bool selected, bool named);
    Result<void> CreateOwnPlayer(std::string_view nickname);
    Result<void> RequestJoin() const;
    Result<void> ReadAnswers();
    Result<void> Accepted();
    void Refused();
    void Open();
    void StopTalking();
    void End();
    void Reset();
    void FailWith(Failure failure, const Error& error);

    SessionPeerFactory& m_factory;
    SessionState& m_session;
    PlayerTable& m_players;
    ConnectionView& m_view;
    MessageBoxes& m_boxes;
    ConnectionState m_state = ConnectionState::Idle;
    std::optional<std::size_t> m_chosenType;
    std::optional<Error> m_lastError;
    bool m_joinAccepted = false;
    bool m_busy = false;
    bool m_exitWanted = false; ///< as soon as the operation under way has ended
};
} // namespace corvane
