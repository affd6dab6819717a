#include "platform/directplay/WireDecode.h"

#include "platform/directplay/WireText.h"

namespace corvane::directplay {
static constexpr std::uint32_t SizeMask = 0x000FFFFF;

static bool IsToken(std::uint32_t token) noexcept
{
    return token == TokenRemote || token == TokenRelayed || token == TokenForward;
}

std::variant<std::uint32_t, DropReason> CheckFirstWord(std::uint32_t word)
{
    const std::uint32_t size = word & SizeMask;
    if (!IsToken(word >> 20))
        return DropReason::BadMagic;
    if (size < PrefixSize)
        return DropReason::Truncated;
    if (size > MaxMessageSize)
        return DropReason::Oversized;
    return size;
}

std::variant<Prefix, DropReason> DecodePrefix(ByteSpan packet)
{
    if (packet.size() < PrefixSize)
        return DropReason::Truncated;
    ByteReader in(packet);
    Prefix prefix;
    const std::uint32_t word = in.ReadU32();
    const auto size = CheckFirstWord(word);
    if (const auto* reason = std::get_if<DropReason>(&size))
        return *reason;
    prefix.Size = std::get<std::uint32_t>(size);
    prefix.Token = word >> 20;
    if (prefix.Size != packet.size())
        return prefix.Size > packet.size() ? DropReason::Truncated : DropReason::Oversized;
    const auto stated = ReadSocketAddress(in);
    if (!stated)
        return DropReason::BadMagic;
    prefix.Stated = *stated;
    return prefix;
}

bool IsManagement(ByteSpan packet) noexcept
{
    return packet.size() >= HeaderSize && ByteReader(packet.subspan(PrefixSize)).ReadU32() == Signature;
}

/// The body of a message: a reader behind the signature part, and the bytes that offsets count in.
struct Body {
    explicit Body(ByteSpan bare) : In(bare), All(bare) { In.ReadBytes(SignaturePart); }

    ByteReader In;
    ByteSpan All;
};

/// A text at an offset that may be 0 (absent); the offset must lie behind the fixed part of the message.
static bool ReadOffsetText(const Body& body, std::uint32_t offset, std::uint32_t fixedEnd, std::u16string& text)
{
    if (offset == 0)
        return true;
    auto read = offset >= fixedEnd ? ReadWideTextAt(body.All, offset) : std::nullopt;
    if (!read)
        return false;
    text = std::move(*read);
    return true;
}

static bool ReadBody(Body& body, EnumSessions& message)
{
    message.Application = ReadGuid(body.In);
    const std::uint32_t passwordAt = body.In.ReadU32();
    message.Flags = body.In.ReadU32();
    if (passwordAt == 0)
        return true;
    return ReadOffsetText(body, passwordAt, 32, message.Password.emplace());
}

static bool ReadBody(Body& body, EnumSessionsReply& message)
{
    const auto description = ReadDescription(body.In);
    const std::uint32_t nameAt = body.In.ReadU32();
    if (!description)
        return false;
    message.Description = *description;
    return ReadOffsetText(body, nameAt, 92, message.Name);
}

static bool ReadBody(Body& /*body*/, EnumPlayer& /*message*/)
{
    return true;
}

static bool ReadBody(Body& /*body*/, YouAreDead& /*message*/)
{
    return true;
}

static bool ReadBody(Body& body, RequestPlayerId& message)
{
    message.Flags = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, RequestGroupId& message)
{
    message.Flags = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, RequestPlayerReply& message)
{
    constexpr std::size_t SecurityDescription = 24;
    message.Id = body.In.ReadU32();
    body.In.ReadBytes(SecurityDescription);
    message.NeedsLogin = body.In.ReadU32() != 0;
    body.In.ReadU32();
    message.Result = body.In.ReadU32();
    return true;
}

struct ManagementBody {
    WireId To = 0;
    WireId Player = 0;
    WireId Group = 0;
    std::uint32_t CreateOffset = 0;
    std::uint32_t PasswordOffset = 0;
};

static ManagementBody ReadManagementBody(Body& body)
{
    ManagementBody ids;
    ids.To = body.In.ReadU32();
    ids.Player = body.In.ReadU32();
    ids.Group = body.In.ReadU32();
    ids.CreateOffset = body.In.ReadU32();
    ids.PasswordOffset = body.In.ReadU32();
    return ids;
}

/// The packed player that a management body points to.
static bool ReadCreated(const Body& body, const ManagementBody& ids, PackedPlayer& player)
{
    constexpr std::uint32_t FixedEnd = 28;
    if (ids.CreateOffset < FixedEnd || ids.CreateOffset > body.All.size())
        return false;
    ByteReader in(body.All.subspan(ids.CreateOffset));
    auto read = ReadPackedPlayer(in);
    if (!read || read->Id != ids.Player)
        return false;
    player = std::move(*read);
    return true;
}

static bool ReadBody(Body& body, AddForwardRequest& message)
{
    const ManagementBody ids = ReadManagementBody(body);
    message.Id = ids.Player;
    if (!ReadCreated(body, ids, message.Player) || !ReadOffsetText(body, ids.PasswordOffset, 28, message.Password))
        return false;
    if (ids.PasswordOffset != 0) {
        ByteReader tail(body.All.subspan(ids.PasswordOffset + WideTextSize(message.Password)));
        message.TickCount = tail.ReadU32(); // informative: its absence is no fault
    }
    return true;
}

static bool ReadBody(Body& body, AddForwardReply& message)
{
    message.Error = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, AddForward& message)
{
    const ManagementBody ids = ReadManagementBody(body);
    message.To = ids.To;
    message.Id = ids.Player;
    return ReadCreated(body, ids, message.Player);
}

static bool ReadBody(Body& body, AddForwardAck& message)
{
    message.Id = body.In.ReadU32();
    return true;
}

template <class Entry, class ReadEntry>
static bool ReadEntries(ByteReader& in, std::uint32_t count, std::vector<Entry>& entries, ReadEntry readEntry)
{
    constexpr std::size_t SmallestEntry = 20;
    if (count > in.Left() / SmallestEntry)
        return false;
    entries.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        auto entry = readEntry(in);
        if (!entry)
            return false;
        entries.push_back(std::move(*entry));
    }
    return true;
}

template <class Table, class ReadEntry> static bool ReadTable(Body& body, Table& message, ReadEntry readEntry)
{
    constexpr std::uint32_t FixedEnd = 36;
    const std::uint32_t playerCount = body.In.ReadU32();
    const std::uint32_t groupCount = body.In.ReadU32();
    const std::uint32_t entriesAt = body.In.ReadU32();
    body.In.ReadU32(); // entries with shortcuts follow the groups and are not used
    const std::uint32_t descriptionAt = body.In.ReadU32();
    const std::uint32_t nameAt = body.In.ReadU32();
    const std::uint32_t passwordAt = body.In.ReadU32();
    if (body.In.Failed() || descriptionAt < FixedEnd || descriptionAt > body.All.size())
        return false;
    ByteReader descriptionIn(body.All.subspan(descriptionAt));
    const auto description = ReadDescription(descriptionIn);
    if (!description || !ReadOffsetText(body, nameAt, FixedEnd, message.Name) ||
        !ReadOffsetText(body, passwordAt, FixedEnd, message.Password))
        return false;
    message.Description = *description;
    if (playerCount == 0 && groupCount == 0)
        return true;
    if (entriesAt < FixedEnd || entriesAt > body.All.size())
        return false;
    ByteReader entries(body.All.subspan(entriesAt));
    return ReadEntries(entries, playerCount, message.Players, readEntry) &&
           ReadEntries(entries, groupCount, message.Groups, readEntry);
}

static bool ReadBody(Body& body, SuperEnumPlayersReply& message)
{
    return ReadTable(body, message, ReadSuperPackedPlayer);
}

static bool ReadBody(Body& body, EnumPlayersReply& message)
{
    return ReadTable(body, message, ReadPackedPlayer);
}

template <Command Number> static bool ReadBody(Body& body, CreateMessage<Number>& message)
{
    return ReadCreated(body, ReadManagementBody(body), message.Player);
}

template <Command Number> static bool ReadBody(Body& body, IdsMessage<Number>& message)
{
    const ManagementBody ids = ReadManagementBody(body);
    message.Player = ids.Player;
    message.Group = ids.Group;
    if (Number == Command::DeleteGroup) {
        message.Group = ids.Group != 0 ? ids.Group : ids.Player;
        message.Player = 0;
    }
    return true;
}

template <Command Number> static bool ReadBody(Body& body, DataMessage<Number>& message)
{
    body.In.ReadU32();
    message.Id = body.In.ReadU32();
    const std::uint32_t size = body.In.ReadU32();
    const std::uint32_t offset = body.In.ReadU32();
    if (size == 0)
        return true;
    if (size > MaxRecordData || offset < 24 || offset > body.All.size() || size > body.All.size() - offset)
        return false;
    const ByteSpan data = body.All.subspan(offset, size);
    message.Data.assign(data.begin(), data.end());
    return true;
}

template <Command Number> static bool ReadBody(Body& body, NameMessage<Number>& message)
{
    body.In.ReadU32();
    message.Id = body.In.ReadU32();
    const std::uint32_t shortAt = body.In.ReadU32();
    const std::uint32_t longAt = body.In.ReadU32();
    return ReadOffsetText(body, shortAt, 24, message.ShortName) && ReadOffsetText(body, longAt, 24, message.LongName);
}

template <Command Number> static bool ReadBody(Body& body, PieceMessage<Number>& message)
{
    message.Message = ReadGuid(body.In);
    message.Index = body.In.ReadU32();
    const std::uint32_t size = body.In.ReadU32();
    message.Offset = body.In.ReadU32();
    message.TotalPieces = body.In.ReadU32();
    message.MessageSize = body.In.ReadU32();
    const std::uint32_t dataAt = body.In.ReadU32();
    if (message.TotalPieces == 0 || message.TotalPieces > MaxPieces || message.Index >= message.TotalPieces ||
        message.MessageSize > MaxMessageSize || size > message.MessageSize ||
        message.Offset > message.MessageSize - size)
        return false;
    if (dataAt < 48 || dataAt > body.All.size() || size > body.All.size() - dataAt)
        return false;
    const ByteSpan data = body.All.subspan(dataAt, size);
    message.Data.assign(data.begin(), data.end());
    return true;
}

static bool ReadBody(Body& body, Packet2Ack& message)
{
    message.Message = ReadGuid(body.In);
    message.Index = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, Ping& message)
{
    message.From = body.In.ReadU32();
    message.TickCount = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, PingReply& message)
{
    message.From = body.In.ReadU32();
    message.TickCount = body.In.ReadU32();
    return true;
}

static bool ReadBody(Body& body, PlayerWrapper& message)
{
    const ByteSpan rest = body.In.ReadBytes(body.In.Left());
    message.Content.assign(rest.begin(), rest.end());
    return true;
}

static bool ReadBody(Body& body, SessionDescChanged& message)
{
    constexpr std::uint32_t FixedEnd = 20 + DescriptionSize;
    body.In.ReadU32();
    const std::uint32_t nameAt = body.In.ReadU32();
    const std::uint32_t passwordAt = body.In.ReadU32();
    const auto description = ReadDescription(body.In);
    if (!description)
        return false;
    message.Description = *description;
    return ReadOffsetText(body, nameAt, FixedEnd, message.Name) &&
           ReadOffsetText(body, passwordAt, FixedEnd, message.Password);
}

static bool ReadBody(Body& body, IAmNameServer& message)
{
    message.To = body.In.ReadU32();
    message.Host = body.In.ReadU32();
    message.Flags = body.In.ReadU32();
    message.Service = ReadServiceData(body.In.ReadBytes(body.In.ReadU32()));
    return true;
}

template <class Message> static std::variant<Management, DropReason> DecodeAs(Body& body, std::uint16_t version)
{
    Message message;
    if (!ReadBody(body, message))
        return body.In.Failed() ? DropReason::Truncated : DropReason::Malformed;
    if (body.In.Failed())
        return DropReason::Truncated;
    return Management{version, std::move(message)};
}

static std::variant<Management, DropReason> DecodeBody(Command command, Body& body, std::uint16_t version)
{
    switch (command) {
    case Command::EnumSessionsReply: return DecodeAs<EnumSessionsReply>(body, version);
    case Command::EnumSessions: return DecodeAs<EnumSessions>(body, version);
    case Command::EnumPlayersReply: return DecodeAs<EnumPlayersReply>(body, version);
    case Command::EnumPlayer: return DecodeAs<EnumPlayer>(body, version);
    case Command::RequestPlayerId: return DecodeAs<RequestPlayerId>(body, version);
    case Command::RequestGroupId: return DecodeAs<RequestGroupId>(body, version);
    case Command::RequestPlayerReply: return DecodeAs<RequestPlayerReply>(body, version);
    case Command::CreatePlayer: return DecodeAs<CreatePlayerMessage>(body, version);
    case Command::CreateGroup: return DecodeAs<CreateGroupMessage>(body, version);
    case Command::DeletePlayer: return DecodeAs<DeletePlayerMessage>(body, version);
    case Command::DeleteGroup: return DecodeAs<DeleteGroupMessage>(body, version);
    case Command::AddPlayerToGroup: return DecodeAs<AddPlayerToGroupMessage>(body, version);
    case Command::DeletePlayerFromGroup: return DecodeAs<DeletePlayerFromGroup>(body, version);
    case Command::PlayerDataChanged: return DecodeAs<PlayerDataChanged>(body, version);
    case Command::PlayerNameChanged: return DecodeAs<PlayerNameChanged>(body, version);
    case Command::GroupDataChanged: return DecodeAs<GroupDataChanged>(body, version);
    case Command::GroupNameChanged: return DecodeAs<GroupNameChanged>(body, version);
    case Command::AddForwardRequest: return DecodeAs<AddForwardRequest>(body, version);
    case Command::Packet: return DecodeAs<Packet>(body, version);
    case Command::Ping: return DecodeAs<Ping>(body, version);
    case Command::PingReply: return DecodeAs<PingReply>(body, version);
    case Command::YouAreDead: return DecodeAs<YouAreDead>(body, version);
    case Command::PlayerWrapper: return DecodeAs<PlayerWrapper>(body, version);
    case Command::SessionDescChanged: return DecodeAs<SessionDescChanged>(body, version);
    case Command::AddForwardReply: return DecodeAs<AddForwardReply>(body, version);
    case Command::SuperEnumPlayersReply: return DecodeAs<SuperEnumPlayersReply>(body, version);
    case Command::AddForward: return DecodeAs<AddForward>(body, version);
    case Command::AddForwardAck: return DecodeAs<AddForwardAck>(body, version);
    case Command::Packet2Data: return DecodeAs<Packet2Data>(body, version);
    case Command::Packet2Ack: return DecodeAs<Packet2Ack>(body, version);
    case Command::IAmNameServer: return DecodeAs<IAmNameServer>(body, version);
    case Command::CreatePlayerVerify: return DecodeAs<CreatePlayerVerify>(body, version);
    case Command::LogonDenied:
    case Command::AuthError: return Management{version, LoginFailed{command}};
    case Command::Challenge:
    case Command::AccessGranted:
    case Command::Negotiate:
    case Command::ChallengeResponse:
    case Command::Signed:
    case Command::AskForMulticast:
    case Command::AskForMulticastGuaranteed:
    case Command::AddShortcutToGroup:
    case Command::DeleteGroupFromGroup:
    case Command::KeyExchange:
    case Command::KeyExchangeReply:
    case Command::Chat:
    case Command::Voice:
    case Command::MulticastDelivery: return Management{version, IgnoredMessage{command}};
    }
    return DropReason::UnknownCommand;
}

std::variant<Management, DropReason> DecodeManagement(ByteSpan bare)
{
    ByteReader in(bare);
    const std::uint32_t signature = in.ReadU32();
    const auto command = static_cast<Command>(in.ReadU16());
    const std::uint16_t version = in.ReadU16();
    if (in.Failed())
        return DropReason::Truncated;
    if (signature != Signature)
        return DropReason::BadMagic;
    if (version < LowestVersion)
        return DropReason::WrongVersion;
    Body body(bare);
    return DecodeBody(command, body, version > OwnVersion ? OwnVersion : version);
}

std::variant<PlayerMessage, DropReason> DecodePlayerMessage(ByteSpan bare, bool withIds)
{
    if (!withIds)
        return PlayerMessage{UnknownPlayer, EveryPlayer, bare};
    ByteReader in(bare);
    PlayerMessage message;
    message.From = in.ReadU32();
    message.To = in.ReadU32();
    if (in.Failed())
        return DropReason::Truncated;
    message.Payload = in.ReadBytes(in.Left());
    return message;
}

ByteSpan UnwrapPlayerMessage(ByteSpan content) noexcept
{
    if (content.size() < PrefixSize)
        return content;
    const std::uint32_t word = ByteReader(content).ReadU32();
    const bool prefixed = IsToken(word >> 20) && (word & SizeMask) == content.size();
    return prefixed ? content.subspan(PrefixSize) : content;
}
} // namespace corvane::directplay
