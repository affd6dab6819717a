#include "net/wire/WireBodies.h"

#include "net/wire/WireBodyParts.h"
#include "net/wire/WireText.h"

namespace corvane::directplay {
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

std::variant<Management, DropReason> DecodeBody(Command command, ByteSpan bare, std::uint16_t version)
{
    Body body(bare);
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
} // namespace corvane::directplay
