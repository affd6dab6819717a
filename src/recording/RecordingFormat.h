#pragma once

#include "core/Bytes.h"
#include "session/SessionPeer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {
/// A recorded session as a file: what was recorded, then records in the order of time, each with a checksum of its own,
/// so that a file whose writing was cut off reads up to its last whole record. Layout: docs/formats.md.
inline constexpr std::string_view RecordingMagic = "CORVREC\x1A";
inline constexpr std::uint16_t RecordingVersion = 1;
inline constexpr std::string_view RecordingExtension = ".cvr";

inline constexpr std::size_t MaxRecordingText = 1024;      ///< bytes of a text in the head; more is cut off
inline constexpr std::size_t MaxRecordPayload = 65536;     ///< bytes; a longer message is not recorded
inline constexpr std::uint64_t MaxRecordingSize = 1 << 29; ///< bytes of a file: some eight hours of 250 members
inline constexpr std::size_t RecordHeadSize = 13;
inline constexpr std::size_t RecordChecksumSize = 4;

/// Whose session was recorded. Texts are Windows-1252.
struct RecordingHead {
    std::string SessionName;
    std::int32_t MaxPlayers = 0;
    std::uint32_t Flags = 0;  ///< of the session, without SessionPasswordRequired: a recording asks for none
    std::string InstanceGuid; ///< never empty
    PlayerId OwnPlayerId = 0; ///< of the program that recorded
    std::string OwnName;      ///< its friendly name
    bool operator==(const RecordingHead&) const = default;
};

enum class RecordKind : std::uint8_t {
    MemberJoined = 1, ///< or was there when the recording began
    MemberRenamed = 2,
    MemberLeft = 3,
    MemberSpoke = 4, ///< a message that the program received, or that it said itself
};

/// One record. The payload is borrowed.
struct RecordView {
    std::uint32_t TimeMs = 0; ///< since the recording began; never less than the record's before
    RecordKind Kind{};
    PlayerId Member = 0; ///< whom it is about; a message's sender
    ByteSpan Payload;    ///< a joining or renamed member's name, a message whole, or nothing
};

Bytes EncodeRecordingHead(const RecordingHead& head);
/// Appends a record; the payload must not exceed MaxRecordPayload.
void AppendRecord(Bytes& out, const RecordView& record);

/// A name as a record's payload and back.
inline ByteSpan PayloadOf(std::string_view name) noexcept
{
    return {reinterpret_cast<const std::uint8_t*>(name.data()), name.size()};
}
inline std::string_view NameIn(ByteSpan payload) noexcept
{
    return {reinterpret_cast<const char*>(payload.data()), payload.size()};
}
} // namespace corvane
