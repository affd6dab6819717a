#pragma once

#include "recording/PlaybackClock.h"
#include "recording/RecordedMembers.h"
#include "recording/RecordingReader.h"
#include "session/SessionPeer.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {
/// What is to be played, and from where.
struct PlaybackChoice {
    std::shared_ptr<const Recording> What;
    std::int64_t BeginMs = 0; ///< since the recording's beginning; the nearest time inside where it is outside
};
/// Gives the recording to be played, which is never null; asked when sessions are looked for.
using RecordingSource = std::function<Result<PlaybackChoice>()>;

inline constexpr std::string_view PlaybackConnectionName = "Recorded session";
inline constexpr std::string_view PlaybackConnectionAddress = "recording:";

/// A member's end of a recorded session, which plays as the clock says. The viewer is one more member with an id that
/// no recorded member has; what it sends reaches nobody, but the recorded members answer as they did: the one that
/// recorded admits it, all introduce themselves, and pilots name their aircraft.
///
/// Playing begins when the viewer asks all to introduce themselves, as it does when its radar opens: nothing is lost
/// behind the message box that greets it. Where it begins later than the recording, the viewer is told at once what
/// held then of all that was said before. The clock must outlive the peer.
class PlaybackPeer final : public SessionPeer {
public:
    PlaybackPeer(RecordingSource source, PlaybackClock& clock) : m_source(std::move(source)), m_clock(clock) {}
    ~PlaybackPeer() override { Leave(); }
    PlaybackPeer(const PlaybackPeer&) = delete;
    PlaybackPeer& operator=(const PlaybackPeer&) = delete;
    PlaybackPeer(PlaybackPeer&&) = delete;
    PlaybackPeer& operator=(PlaybackPeer&&) = delete;

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override;
    Result<void> InitializeConnection(std::string_view address) override;
    /// Lists the one session of the recording, which the source is asked for the first time.
    Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) override;
    /// Joins; a session cannot be created here.
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    /// One player at a time: the viewer.
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override;
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override;
    Result<std::int32_t> CreateGroup(std::string_view shortName) override;
    /// None: groups are not recorded.
    Result<std::vector<SessionMember>> GetDPEnumGroups() override;
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override;
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive() override;
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override;
    Result<void> DestroyPlayer(PlayerId player) override;
    Result<void> Close() override;

private:
    [[nodiscard]] std::optional<Error> NotOpen(const char* operation) const;
    [[nodiscard]] std::optional<Error> NotViewer(const char* operation, PlayerId player) const;
    [[nodiscard]] SessionEntry Entry() const;
    void Say(const RecordView& record);
    void PlayUpToNow();
    void AnswerAll(PlayerId to, MessageType request);
    void Queue(PlayerId from, Bytes content);
    void Leave() noexcept;

    RecordingSource m_source;
    PlaybackClock& m_clock;
    std::shared_ptr<const Recording> m_recording; ///< once sessions have been looked for
    std::int64_t m_beginMs = 0;                   ///< of playing, in the recording
    std::optional<RecordedMembers> m_members;     ///< while the session is open
    std::vector<std::size_t> m_past;              ///< records from before the beginning that the viewer is told
    std::size_t m_next = 0;                       ///< record to be played
    std::optional<SessionMember> m_viewer;
    std::deque<ReceivedMessage> m_queue;
};
} // namespace corvane
