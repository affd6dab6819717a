#include "recording/RecordingFormat.h"

#include "recording/Crc32.h"

#include <cassert>

namespace corvane {
/// Puts the checksum of the bytes from start on behind them.
static void AppendChecksum(Bytes& out, std::size_t start)
{
    ByteWriter(out).WriteU32(Crc32(ByteSpan(out).subspan(start)));
}

static std::string_view Shortened(std::string_view text)
{
    return text.substr(0, MaxRecordingText);
}

Bytes EncodeRecordingHead(const RecordingHead& head)
{
    Bytes description;
    ByteWriter fields(description);
    fields.WriteText16(Shortened(head.SessionName));
    fields.WriteI32(head.MaxPlayers);
    fields.WriteU32(head.Flags);
    fields.WriteText16(Shortened(head.InstanceGuid));
    fields.WriteI32(head.OwnPlayerId);
    fields.WriteText16(Shortened(head.OwnName));

    Bytes out(RecordingMagic.begin(), RecordingMagic.end());
    ByteWriter writer(out);
    writer.WriteU16(RecordingVersion);
    writer.WriteU16(static_cast<std::uint16_t>(description.size())); // three short texts: far below the limit
    writer.WriteBytes(description);
    AppendChecksum(out, 0);
    return out;
}

void AppendRecord(Bytes& out, const RecordView& record)
{
    assert(record.Payload.size() <= MaxRecordPayload);
    const std::size_t start = out.size();
    ByteWriter writer(out);
    writer.WriteU32(record.TimeMs);
    writer.WriteU8(static_cast<std::uint8_t>(record.Kind));
    writer.WriteI32(record.Member);
    writer.WriteU32(static_cast<std::uint32_t>(record.Payload.size()));
    writer.WriteBytes(record.Payload);
    AppendChecksum(out, start);
}
} // namespace corvane
