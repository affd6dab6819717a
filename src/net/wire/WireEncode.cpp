#include "net/wire/WireEncode.h"

#include "net/wire/WireText.h"

#include <type_traits>

namespace corvane::directplay {
// Offsets are counted from the signature, which is byte 20 of the message.
static constexpr std::uint32_t BodyAt = 8;
static constexpr std::uint32_t AfterManagementBody = 28;

static void WritePrefix(ByteWriter& out, std::uint16_t streamPort)
{
    out.WriteU32(0); // size and token, known at the end
    WriteSocketAddress(out, {0, streamPort});
}

static void PatchSize(Bytes& message)
{
    const auto word = static_cast<std::uint32_t>(message.size()) | (TokenRemote << 20);
    ByteWriter(message).PatchI32(0, static_cast<std::int32_t>(word));
}

static void WriteManagementBody(ByteWriter& out, WireId to, WireId player, WireId group, std::uint32_t createOffset,
                                std::uint32_t passwordOffset)
{
    out.WriteU32(to);
    out.WriteU32(player);
    out.WriteU32(group);
    out.WriteU32(createOffset);
    out.WriteU32(passwordOffset);
}

static void WriteOptionalText(ByteWriter& out, std::u16string_view text)
{
    if (!text.empty())
        WriteWideText(out, text);
}

/// The offset of a text that starts at next, which moves behind it; 0 for an empty text, which is left out.
static std::uint32_t PlaceText(std::uint32_t& next, std::u16string_view text)
{
    if (text.empty())
        return 0;
    const std::uint32_t at = next;
    next += static_cast<std::uint32_t>(WideTextSize(text));
    return at;
}

static void WriteBody(ByteWriter& out, const EnumSessions& message)
{
    WriteGuid(out, message.Application);
    out.WriteU32(message.Password ? 32 : 0);
    out.WriteU32(message.Flags);
    if (message.Password)
        WriteWideText(out, *message.Password);
}

static void WriteBody(ByteWriter& out, const EnumSessionsReply& message)
{
    WriteDescription(out, message.Description);
    out.WriteU32(message.Name.empty() ? 0 : 92);
    WriteOptionalText(out, message.Name);
}

static void WriteBody(ByteWriter& out, const RequestPlayerId& message)
{
    out.WriteU32(message.Flags);
}

static void WriteBody(ByteWriter& out, const RequestGroupId& message)
{
    out.WriteU32(message.Flags);
}

static void WriteBody(ByteWriter& out, const RequestPlayerReply& message)
{
    constexpr std::size_t SecurityDescription = 24;
    out.WriteU32(message.Id);
    out.WriteZeros(SecurityDescription + 8); // and the offsets of two providers
    out.WriteU32(message.Result);
}

static void WriteBody(ByteWriter& out, const AddForwardRequest& message)
{
    const auto passwordAt = static_cast<std::uint32_t>(AfterManagementBody + PackedPlayerSize(message.Player));
    WriteManagementBody(out, 0, message.Id, 0, AfterManagementBody, passwordAt);
    WritePackedPlayer(out, message.Player);
    WriteWideText(out, message.Password);
    out.WriteU32(message.TickCount);
}

static void WriteBody(ByteWriter& out, const AddForwardReply& message)
{
    out.WriteU32(message.Error);
}

static void WriteBody(ByteWriter& out, const AddForward& message)
{
    WriteManagementBody(out, message.To, message.Id, 0, AfterManagementBody, 0);
    WritePackedPlayer(out, message.Player);
}

static void WriteBody(ByteWriter& out, const AddForwardAck& message)
{
    out.WriteU32(message.Id);
}

/// Both forms of the name table differ in their entries alone.
template <class Table, class WriteEntry>
static void WriteTable(ByteWriter& out, const Table& message, WriteEntry writeEntry)
{
    constexpr std::uint32_t DescriptionAt = 36;
    std::uint32_t next = DescriptionAt + DescriptionSize;
    const std::uint32_t nameAt = PlaceText(next, message.Name);
    const std::uint32_t passwordAt = PlaceText(next, message.Password);
    out.WriteU32(static_cast<std::uint32_t>(message.Players.size()));
    out.WriteU32(static_cast<std::uint32_t>(message.Groups.size()));
    out.WriteU32(next);
    out.WriteU32(0); // groups with shortcuts
    out.WriteU32(DescriptionAt);
    out.WriteU32(nameAt);
    out.WriteU32(passwordAt);
    WriteDescription(out, message.Description);
    WriteOptionalText(out, message.Name);
    WriteOptionalText(out, message.Password);
    for (const auto& player : message.Players)
        writeEntry(out, player);
    for (const auto& group : message.Groups)
        writeEntry(out, group);
}

static void WriteBody(ByteWriter& out, const SuperEnumPlayersReply& message)
{
    WriteTable(out, message, WriteSuperPackedPlayer);
}

static void WriteBody(ByteWriter& out, const EnumPlayersReply& message)
{
    WriteTable(out, message, WritePackedPlayer);
}

template <Command Number> static void WriteBody(ByteWriter& out, const CreateMessage<Number>& message)
{
    WriteManagementBody(out, 0, message.Player.Id, 0, AfterManagementBody, 0);
    WritePackedPlayer(out, message.Player);
    if (Number != Command::CreateGroup)
        out.WriteZeros(6); // reserved
}

template <Command Number> static void WriteBody(ByteWriter& out, const IdsMessage<Number>& message)
{
    // Descriptions differ about the field that holds a deleted group's id: it is written into both.
    const bool both = Number == Command::DeleteGroup;
    WriteManagementBody(out, 0, both ? message.Group : message.Player, message.Group, 0, 0);
}

template <Command Number> static void WriteBody(ByteWriter& out, const DataMessage<Number>& message)
{
    out.WriteU32(0);
    out.WriteU32(message.Id);
    out.WriteU32(static_cast<std::uint32_t>(message.Data.size()));
    out.WriteU32(BodyAt + 16);
    out.WriteBytes(message.Data);
}

template <Command Number> static void WriteBody(ByteWriter& out, const NameMessage<Number>& message)
{
    std::uint32_t next = BodyAt + 16;
    out.WriteU32(0);
    out.WriteU32(message.Id);
    out.WriteU32(PlaceText(next, message.ShortName));
    out.WriteU32(PlaceText(next, message.LongName));
    WriteOptionalText(out, message.ShortName);
    WriteOptionalText(out, message.LongName);
}

template <Command Number> static void WriteBody(ByteWriter& out, const PieceMessage<Number>& message)
{
    constexpr std::uint32_t DataAt = 48;
    WriteGuid(out, message.Message);
    out.WriteU32(message.Index);
    out.WriteU32(static_cast<std::uint32_t>(message.Data.size()));
    out.WriteU32(message.Offset);
    out.WriteU32(message.TotalPieces);
    out.WriteU32(message.MessageSize);
    out.WriteU32(DataAt);
    out.WriteBytes(message.Data);
}

static void WriteBody(ByteWriter& out, const Packet2Ack& message)
{
    WriteGuid(out, message.Message);
    out.WriteU32(message.Index);
}

static void WriteBody(ByteWriter& out, const Ping& message)
{
    out.WriteU32(message.From);
    out.WriteU32(message.TickCount);
}

static void WriteBody(ByteWriter& out, const PingReply& message)
{
    out.WriteU32(message.From);
    out.WriteU32(message.TickCount);
}

static void WriteBody(ByteWriter& out, const PlayerWrapper& message)
{
    out.WriteBytes(message.Content);
}

static void WriteBody(ByteWriter& out, const SessionDescChanged& message)
{
    std::uint32_t next = BodyAt + 12 + DescriptionSize;
    out.WriteU32(0);
    out.WriteU32(PlaceText(next, message.Name));
    out.WriteU32(PlaceText(next, message.Password));
    WriteDescription(out, message.Description);
    WriteOptionalText(out, message.Name);
    WriteOptionalText(out, message.Password);
}

static void WriteBody(ByteWriter& out, const IAmNameServer& message)
{
    out.WriteU32(message.To);
    out.WriteU32(message.Host);
    out.WriteU32(message.Flags);
    out.WriteU32(message.Service ? ServiceDataSize : 0);
    if (message.Service)
        WriteServiceData(out, *message.Service);
}

template <class Message>
constexpr bool HasNoBody = std::is_same_v<Message, EnumPlayer> || std::is_same_v<Message, YouAreDead>;
template <class Message>
constexpr bool NeverSent = std::is_same_v<Message, LoginFailed> || std::is_same_v<Message, IgnoredMessage>;

Bytes EncodeMessage(const WireMessage& message, std::uint16_t streamPort)
{
    Bytes bytes;
    ByteWriter out(bytes);
    std::visit(
        [&]<class Message>(const Message& body) {
            if constexpr (!NeverSent<Message>) {
                WritePrefix(out, streamPort);
                out.WriteU32(Signature);
                out.WriteU16(static_cast<std::uint16_t>(body.Number));
                out.WriteU16(OwnVersion);
                if constexpr (!HasNoBody<Message>)
                    WriteBody(out, body);
                PatchSize(bytes);
            }
        },
        message);
    return bytes;
}

static bool LooksLikeManagement(const Bytes& message)
{
    if (message.size() < HeaderSize)
        return false;
    return ByteReader(ByteSpan(message).subspan(PrefixSize)).ReadU32() == Signature;
}

Bytes EncodePlayerMessage(WireId from, WireId to, ByteSpan payload, std::uint16_t streamPort, bool withIds)
{
    Bytes bytes;
    bytes.reserve(HeaderSize + payload.size());
    ByteWriter out(bytes);
    WritePrefix(out, streamPort);
    if (withIds) {
        out.WriteU32(from);
        out.WriteU32(to);
    }
    out.WriteBytes(payload);
    PatchSize(bytes);
    if (LooksLikeManagement(bytes))
        return EncodeMessage(PlayerWrapper{Bytes(bytes.begin() + PrefixSize, bytes.end())}, streamPort);
    return bytes;
}
} // namespace corvane::directplay
