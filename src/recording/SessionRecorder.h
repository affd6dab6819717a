#pragma once

#include "core/Result.h"
#include "core/MillisecondClock.h"
#include "recording/RecordingWriter.h"
#include "session/SessionPeer.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane {
/// Records what a session delivers: who is a member, the messages received, and what the program says itself.
///
/// A RecordingPeer tells it what happens in the session, whether or not a recording runs: of each member the latest
/// announcement, aircraft and position are kept, so that a recording that begins in the middle begins with them.
/// A recording that cannot go on stops; the session never notices.
class SessionRecorder {
public:
    /// Members are looked up no more often than this.
    static constexpr std::int64_t MemberIntervalMs = 1000;

    explicit SessionRecorder(MillisecondClock now) : m_now(std::move(now)) {}

    /// Whether there is a session with an own player to record.
    [[nodiscard]] bool CanRecord() const noexcept { return m_peer != nullptr && m_ownId.has_value(); }
    [[nodiscard]] bool IsRecording() const noexcept { return m_writer.has_value(); }
    /// Begins a recording, replacing a file of that name. Errors name the file.
    Result<void> Start(const std::filesystem::path& file);
    void Stop() noexcept { m_writer.reset(); }
    /// The file of the recording that runs.
    [[nodiscard]] const std::filesystem::path& File() const { return m_writer->Path(); }
    [[nodiscard]] std::int64_t ElapsedMs() const { return m_now() - m_startMs; }
    /// Why a recording stopped by itself, once.
    std::optional<Error> TakeFailure();

    // What happens in the session. The peer is valid until SessionClosed.
    void SessionOpened(SessionPeer& peer, const SessionEntry& session);
    void OwnPlayerCreated(PlayerId id, std::string_view name);
    void SessionClosed() noexcept;
    /// The program looks for messages: a good moment to look who is there.
    void QueueRead();
    void MembersListed(std::span<const SessionMember> members);
    void MemberNamed(PlayerId id, std::string_view name);
    void MessageReceived(const ReceivedMessage& message);
    void MessageSent(PlayerId from, ByteSpan message);

private:
    /// Of what a member tells about itself, the latest: announcement, aircraft, position.
    using Latest = std::array<Bytes, 3>;
    struct Member {
        std::string Name;
        bool Present = true;
    };

    void Remember(const ReceivedMessage& message);
    void ForgetAbsent(std::span<const SessionMember> members);
    void ListMembers();
    void Meet(PlayerId id);
    void WriteMember(PlayerId id, std::string_view name);
    void WriteRemembered(PlayerId id);
    void Write(RecordKind kind, PlayerId member, ByteSpan payload);

    MillisecondClock m_now;
    SessionPeer* m_peer = nullptr; ///< while a session is open
    SessionEntry m_session;
    std::optional<PlayerId> m_ownId;
    std::string m_ownName;
    std::unordered_map<PlayerId, Latest> m_latest;

    std::optional<RecordingWriter> m_writer;
    std::optional<Error> m_failure;
    std::int64_t m_startMs = 0;
    std::int64_t m_listedMs = 0;
    std::map<PlayerId, Member> m_members; ///< that the recording knows
};
} // namespace corvane
