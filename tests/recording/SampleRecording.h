#pragma once

#include "core/File.h"
#include "recording/RecordingReader.h"
#include "session/MessageCodec.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::test {
inline FileBytes ContentOf(ByteSpan bytes)
{
    FileBytes content(bytes.size());
    std::copy(bytes.begin(), bytes.end(), content.Data());
    return content;
}

/// A record as a test writes it down.
struct SampleRecord {
    std::uint32_t TimeMs = 0;
    RecordKind Kind{};
    PlayerId Member = 0;
    Bytes Payload;
    bool operator==(const SampleRecord&) const = default;
};

inline SampleRecord Joined(std::uint32_t timeMs, PlayerId member, std::string_view name)
{
    return {timeMs, RecordKind::MemberJoined, member, Bytes(name.begin(), name.end())};
}
inline SampleRecord Renamed(std::uint32_t timeMs, PlayerId member, std::string_view name)
{
    return {timeMs, RecordKind::MemberRenamed, member, Bytes(name.begin(), name.end())};
}
inline SampleRecord Left(std::uint32_t timeMs, PlayerId member)
{
    return {timeMs, RecordKind::MemberLeft, member, {}};
}
inline SampleRecord Said(std::uint32_t timeMs, PlayerId member, const Message& message)
{
    return {timeMs, RecordKind::MemberSpoke, member, EncodeMessage(message)};
}

/// What a recording holds, written down the same way.
inline std::vector<SampleRecord> RecordsOf(const Recording& recording)
{
    std::vector<SampleRecord> records;
    for (const RecordView& record : recording.Records)
        records.push_back(
            {record.TimeMs, record.Kind, record.Member, Bytes(record.Payload.begin(), record.Payload.end())});
    return records;
}

inline RecordingHead SampleHead()
{
    return {.SessionName = "Traffic",
            .MaxPlayers = 8,
            .Flags = 68,
            .InstanceGuid = "{1}",
            .OwnPlayerId = 5,
            .OwnName = "**A"};
}

inline void Append(Bytes& file, const SampleRecord& record)
{
    AppendRecord(file, {record.TimeMs, record.Kind, record.Member, record.Payload});
}

inline Bytes FileOf(const std::vector<SampleRecord>& records, const RecordingHead& head = SampleHead())
{
    Bytes file = EncodeRecordingHead(head);
    for (const SampleRecord& record : records)
        Append(file, record);
    return file;
}

inline std::shared_ptr<const Recording> RecordingOf(const std::vector<SampleRecord>& records)
{
    auto recording = DecodeRecording(ContentOf(FileOf(records)), "sample.cvr");
    return recording ? std::make_shared<const Recording>(*std::move(recording)) : nullptr;
}

/// A little of everything.
inline std::vector<SampleRecord> SampleRecords()
{
    return {Joined(0, 5, "**A"),
            Joined(0, 7, "N1"),
            Said(0, 7, AnnounceMessage{MessageType::PilotAnnounce, 7}),
            Said(950, 7, ChatTextMessage{"hello"}),
            Renamed(1000, 7, "N1 heavy"),
            {2000, RecordKind::MemberSpoke, -2, {}},
            Left(4000000000U, 7)};
}
} // namespace corvane::test
