#include "recording/RecordingReader.h"

#include "core/NumberText.h"
#include "recording/Crc32.h"

#include <algorithm>
#include <system_error>

namespace corvane {
static std::string Number(std::size_t value)
{
    return NumberText(static_cast<std::int64_t>(value));
}

static bool ChecksumFits(ByteSpan bytes, std::uint32_t checksum) noexcept
{
    return Crc32(bytes) == checksum;
}

static std::string ReadShortText(ByteReader& reader)
{
    const std::string_view text = reader.ReadText16();
    return std::string(text.substr(0, MaxRecordingText));
}

/// The fields between the head's size and its checksum.
static Result<RecordingHead> ReadDescription(ByteSpan description, const std::string& name)
{
    ByteReader reader(description);
    RecordingHead head;
    head.SessionName = ReadShortText(reader);
    head.MaxPlayers = reader.ReadI32();
    head.Flags = reader.ReadU32() & ~SessionPasswordRequired;
    head.InstanceGuid = ReadShortText(reader);
    head.OwnPlayerId = reader.ReadI32();
    head.OwnName = ReadShortText(reader);
    if (reader.Failed())
        return Fail(name, "its description ends after " + Number(description.size()) + " bytes");
    if (head.InstanceGuid.empty() || head.MaxPlayers < 0)
        return Fail(name, "its description names no session");
    return head;
}

/// Reads everything before the records and leaves the reader at the first.
static Result<RecordingHead> ReadHead(ByteReader& reader, ByteSpan content, const std::string& name)
{
    if (const ByteSpan magic = reader.ReadBytes(RecordingMagic.size()); NameIn(magic) != RecordingMagic)
        return Fail(name, "is not a recorded session");
    const std::uint16_t version = reader.ReadU16();
    const ByteSpan description = reader.ReadBytes(reader.ReadU16());
    const std::size_t covered = reader.Position();
    const std::uint32_t checksum = reader.ReadU32();
    if (version != RecordingVersion && content.size() >= RecordingMagic.size() + sizeof version)
        return Fail(name, "is of version " + Number(version) + ", not " + Number(RecordingVersion));
    if (reader.Failed())
        return Fail(name, "ends inside its head, after " + Number(content.size()) + " bytes");
    if (!ChecksumFits(content.first(covered), checksum))
        return Fail(name, "its head is damaged");
    return ReadDescription(description, name);
}

/// The next record, unless the file ends inside it or it is damaged; the reader is then anywhere.
static std::optional<RecordView> ReadRecord(ByteReader& reader, ByteSpan content)
{
    const std::size_t start = reader.Position();
    RecordView record;
    record.TimeMs = reader.ReadU32();
    record.Kind = static_cast<RecordKind>(reader.ReadU8());
    record.Member = reader.ReadI32();
    const std::uint32_t length = reader.ReadU32();
    if (length > MaxRecordPayload)
        return std::nullopt;
    record.Payload = reader.ReadBytes(length);
    const std::size_t covered = reader.Position() - start;
    const std::uint32_t checksum = reader.ReadU32();
    if (reader.Failed() || !ChecksumFits(content.subspan(start, covered), checksum))
        return std::nullopt;
    return record;
}

/// What a whole record says that no recording says, if anything.
static std::optional<std::string> Nonsense(const RecordView& record, const Recording& recording)
{
    if (record.Kind < RecordKind::MemberJoined || record.Kind > RecordKind::MemberSpoke)
        return "is of kind " + Number(static_cast<std::size_t>(record.Kind));
    if (record.TimeMs < recording.LengthMs())
        return "goes back in time to " + Number(record.TimeMs) + " ms";
    return std::nullopt;
}

Result<Recording> DecodeRecording(FileBytes content, const std::string& name)
{
    Recording recording;
    recording.Content = std::move(content);
    const ByteSpan bytes = recording.Content.Span();
    ByteReader reader(bytes);
    auto head = ReadHead(reader, bytes, name);
    if (!head)
        return head.error();
    recording.Head = *std::move(head);
    while (reader.Left() > 0) {
        const std::size_t start = reader.Position();
        const auto record = ReadRecord(reader, bytes);
        if (!record) {
            recording.LeftOut = Fail(name, "the record at byte " + Number(start) + " is not whole; the last " +
                                               Number(bytes.size() - start) + " bytes are left out");
            break;
        }
        if (const auto nonsense = Nonsense(*record, recording))
            return Fail(name, "the record at byte " + Number(start) + " " + *nonsense);
        recording.Records.push_back(*record);
    }
    return recording;
}

Result<Recording> ReadRecording(const std::filesystem::path& file)
{
    std::error_code unknown; // what is wrong with the file, reading it says
    if (const std::uintmax_t size = std::filesystem::file_size(file, unknown); !unknown && size > MaxRecordingSize)
        return Fail(FullName(file), "is larger than any recording");
    auto content = ReadWholeFile(file);
    if (!content)
        return content.error();
    return DecodeRecording(*std::move(content), FullName(file));
}
} // namespace corvane
