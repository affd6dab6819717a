#pragma once

#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "core/Result.h"
#include "session/MessageCodec.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane {
inline constexpr int PumpIntervalMs = 100;
inline constexpr int UpkeepIntervalMs = 30000;

/// What the pump tells whoever shows the session. Records are valid during the call only.
class PumpEvents {
public:
    virtual ~PumpEvents() = default;

    /// The names or the order of the table's entries changed: the chat window's member list is to be rebuilt.
    virtual void RefreshPlayerList() = 0;
    /// A member said something. Texts are Windows-1252.
    virtual void AddChatLine(std::string_view from, std::string_view text) = 0;
    /// The session is over: leave it (LeaveSession), stop the timers, close the radar. Must not destroy the pump.
    virtual void Disconnect() = 0;

    virtual void PlayerAdded(const PlayerRecord& /*player*/) {}
    virtual void PlayerUpdated(const PlayerRecord& /*player*/) {}
    /// A member has reported the position that its record holds now; PlayerUpdated has told of it too.
    virtual void PositionReported(const PlayerRecord& /*player*/) {}
    virtual void PlayerRemoved(const PlayerRecord& /*player*/) {}
};

/// Keeps the table of the session's members: drains the message queue, and now and then asks who is still there.
///
/// Its message boxes may stay open for minutes while timers run on; while a tick is under way, ticks return at once.
/// When a tick has called Disconnect it touches the session no more.
class MessagePump {
public:
    /// The table holds no more entries than this; further announcements are ignored.
    static constexpr std::size_t MaxPlayers = 32767;

    MessagePump(SessionState& session, PlayerTable& players, const MagVarGrid& magVar, PumpEvents& events,
                MessageBoxes& boxes) noexcept;

    /// The radar opens: this program is not the host. Asks every member to introduce itself; should that fail, the
    /// next upkeep tick asks again.
    void Start();
    /// Handles the messages that wait when it begins. Any failure counts as having been removed from the session.
    void PumpTick();
    /// Removes members that left, asks unknown ones to introduce themselves and pilots for their aircraft. Failures are
    /// ignored step by step.
    void UpkeepTick();

    /// How long a host must have been gone without a word before SessionState::TakesOver has an effect.
    static constexpr int TakeOverMs = 30000;

    [[nodiscard]] bool IsSessionHost() const noexcept { return m_isSessionHost; }
    /// Whether a message that cannot be read is counted and passed over from now on. By the simulator's own rules it
    /// ends the session.
    void PassMalformed(bool passes) noexcept { m_passesMalformed = passes; }
    /// Those that have been passed over since Start.
    [[nodiscard]] std::int64_t MalformedCount() const noexcept { return m_malformedCount; }
    /// The failure that was taken for a removal from the session, if there was one.
    [[nodiscard]] const std::optional<Error>& LastError() const noexcept { return m_lastError; }

private:
    /// A sender as this tick knows it: asking the session for a name on every message would cost more than the message.
    struct Sender {
        std::string Name;
        std::optional<std::size_t> Entry; ///< the first entry that is the sender
    };

    Result<void> Drain();
    Result<void> Malformed(const Error& why);
    Result<void> Handle(const ReceivedMessage& message);
    Result<void> HandleJoined(const MessageHeader& header, const ReceivedMessage& message);
    Result<void> Admit(PlayerId sender, MessageType request);
    Result<void> HandleAnnounce(const MessageHeader& header, const ReceivedMessage& message);
    Result<void> HandleAircraftInfo(const MessageHeader& header, const ReceivedMessage& message);
    Result<void> HandlePosition(const MessageHeader& header, const ReceivedMessage& message);
    Result<void> HandleChat(const MessageHeader& header, const ReceivedMessage& message);
    Result<void> HandleHostLeft();
    void TakeOver();
    void EndSession(std::string_view text);
    void Inform(std::string_view text);

    void PruneDepartedPlayers(std::span<const SessionMember> members);
    void AskUnknownMembers(std::span<const SessionMember> members);
    void AskForAircraft();
    Result<Sender*> FindSender(PlayerId id);
    Result<void> FindEntry(PlayerId id, std::optional<std::size_t>& entry);
    void UpdatePosition(PlayerRecord& player, const PositionMessage& position) const;

    SessionState& m_session;
    PlayerTable& m_players;
    const MagVarGrid& m_magVar;
    PumpEvents& m_events;
    MessageBoxes& m_boxes;
    std::unordered_map<PlayerId, Sender> m_senders; ///< emptied whenever names or entries may have changed
    std::optional<Error> m_lastError;
    std::int64_t m_malformedCount = 0;
    bool m_passesMalformed = false;
    bool m_isSessionHost = false;
    int m_hostlessTicks = 0;
    bool m_sessionOver = false; ///< nothing of this tick may go on
    bool m_busy = false;
};
} // namespace corvane
