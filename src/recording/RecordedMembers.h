#pragma once

#include "recording/RecordingReader.h"
#include "session/MemberManners.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane {
/// A member of a recorded session as it stands at the moment reached.
struct RecordedMember {
    PlayerId Id = 0;
    std::string Name;
    bool Present = true;
    std::optional<MessageType> Announces; ///< how it introduces itself, where it has said so
    ByteSpan Aircraft;                    ///< its latest AircraftInfo, borrowed from the recording; empty: none yet
};

/// How a recorded member answers where it goes by an id.
MemberManners MannersOf(const RecordedMember& member, PlayerId id);

/// The members of a recorded session, followed record by record. The program that recorded is one of them, a pilot
/// from the beginning to the end; its entry comes first. The recording must outlive it.
class RecordedMembers {
public:
    explicit RecordedMembers(const RecordingHead& head);

    void Apply(const RecordView& record);

    /// In the order in which they first came, those that have left included.
    [[nodiscard]] const std::vector<RecordedMember>& All() const noexcept { return m_members; }
    [[nodiscard]] const RecordedMember& Recorder() const noexcept { return m_members.front(); }
    [[nodiscard]] const RecordedMember* Find(PlayerId id) const noexcept;

private:
    RecordedMember* Known(PlayerId id) noexcept;
    void Join(PlayerId id, std::string_view name);
    static void Learn(RecordedMember& member, ByteSpan message);

    std::vector<RecordedMember> m_members;
    std::unordered_map<PlayerId, std::size_t> m_index;
};

/// Whether a recorded message is played. Left out is what ended the recorded session or would end any: messages that
/// are damaged, and those in which the host of that time speaks as the host (HostLeft, RemovedByHost, JoinRefused,
/// ObserverJoinRefused); whoever plays the recording is the host now.
bool IsPlayed(ByteSpan message);
} // namespace corvane
