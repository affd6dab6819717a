#pragma once

#include "recording/PlaybackClock.h"
#include "recording/RecordedMembers.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace corvane {
struct ReplayOptions {
    std::string SessionName = {}; ///< Windows-1252; empty: the recorded one
    std::string Password = {};
    std::int32_t MaxPlayers = 0; ///< 0: room for eight beside the recorded members
    bool MigrateHost = true;     ///< another member takes the session over when this one ends
    std::int64_t BeginMs = 0;    ///< where playing begins; the nearest time inside where it is outside the recording
};

/// A session that others join, in which a recording's members appear and speak as they did. The member that recorded
/// hosts it and admits whoever asks; all are players of one peer. What others say changes nothing, but they are
/// answered: members introduce themselves and pilots name their aircraft.
///
/// Driven by Advance, as far as the clock says. The factory and the clock must outlive it.
class ReplaySession {
public:
    /// Creates the session on the factory's first connection type; the recording begins. An Error says which operation
    /// failed.
    static Result<std::unique_ptr<ReplaySession>> Create(SessionPeerFactory& factory,
                                                         std::shared_ptr<const Recording> recording,
                                                         PlaybackClock& clock, const ReplayOptions& options);
    ~ReplaySession() { End(); }
    ReplaySession(const ReplaySession&) = delete;
    ReplaySession& operator=(const ReplaySession&) = delete;
    ReplaySession(ReplaySession&&) = delete;
    ReplaySession& operator=(ReplaySession&&) = delete;

    /// Answers what was received and plays what is due. An Error says how the session was lost.
    Result<void> Advance();
    /// Lets every member leave, the host last. Nothing happens afterwards.
    void End();

    /// The entry under which the session was created: its instance GUID is the transport's.
    [[nodiscard]] const SessionEntry& Entry() const noexcept { return m_entry; }
    [[nodiscard]] const std::shared_ptr<SessionPeer>& Peer() const noexcept { return m_peer; }
    [[nodiscard]] PlayerId HostId() const noexcept { return m_hostId; }
    [[nodiscard]] const std::string& HostName() const noexcept { return m_members.Recorder().Name; }

private:
    ReplaySession(std::shared_ptr<const Recording> recording, PlaybackClock& clock);

    Result<void> Open(SessionPeerFactory& factory, const ReplayOptions& options);
    Result<void> ReceiveAll();
    void Answer(const ReceivedMessage& message);
    void PassOverPast();
    void PlayUpToNow();
    void Play(const RecordView& record);
    void Join(PlayerId recorded, std::string_view name);
    void Speak(PlayerId live, const RecordView& record);
    void Send(PlayerId from, PlayerId to, ByteSpan message);

    std::shared_ptr<const Recording> m_recording;
    PlaybackClock& m_clock;
    RecordedMembers m_members;
    std::size_t m_next = 0; ///< record to be played
    SessionEntry m_entry;
    std::shared_ptr<SessionPeer> m_peer; ///< until the end
    PlayerId m_hostId = 0;
    std::unordered_map<PlayerId, PlayerId> m_liveIds;     ///< of recorded members that are there
    std::unordered_map<PlayerId, PlayerId> m_recordedIds; ///< the other way round
};
} // namespace corvane
