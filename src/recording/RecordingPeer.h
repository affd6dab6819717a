#pragma once

#include "recording/SessionRecorder.h"
#include "session/ForwardingPeer.h"

#include <memory>
#include <string_view>
#include <utility>

namespace corvane {
/// A peer that passes every operation on to another and tells the recorder what the session delivers. Several may
/// share a recorder as long as one at a time is in a session. The recorder must outlive it.
class RecordingPeer final : public ForwardingPeer {
public:
    RecordingPeer(std::shared_ptr<SessionPeer> target, SessionRecorder& recorder) noexcept
        : ForwardingPeer(std::move(target)), m_recorder(recorder)
    {
    }
    ~RecordingPeer() override { Left(); }
    RecordingPeer(const RecordingPeer&) = delete;
    RecordingPeer& operator=(const RecordingPeer&) = delete;
    RecordingPeer(RecordingPeer&&) = delete;
    RecordingPeer& operator=(RecordingPeer&&) = delete;

    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override;
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive() override;
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override;
    Result<void> Close() override;

private:
    void Left() noexcept;

    SessionRecorder& m_recorder;
    bool m_joined = false; ///< the recorder follows this peer's session
};

/// Makes another factory's peers, in RecordingPeers. Both, and the recorder, must outlive it and its peers.
class RecordingPeerFactory final : public SessionPeerFactory {
public:
    RecordingPeerFactory(SessionPeerFactory& inner, SessionRecorder& recorder) noexcept
        : m_inner(inner), m_recorder(recorder)
    {
    }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

private:
    SessionPeerFactory& m_inner;
    SessionRecorder& m_recorder;
};
} // namespace corvane
