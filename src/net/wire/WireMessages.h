#pragma once

#include "net/wire/WireRecords.h"

#include <variant>

/// Every message of the protocol as a value. Fields that receivers must ignore and senders write as a constant
/// (offsets, placeholders, reserved fields) do not appear; encoding and decoding live in WireEncode and WireDecode.
namespace corvane::directplay {
/// Looks for sessions. An empty application asks for those of every application.
struct EnumSessions {
    static constexpr Command Number = Command::EnumSessions;
    Guid Application;
    std::optional<std::u16string> Password;
    std::uint32_t Flags = 0;
    bool operator==(const EnumSessions&) const = default;
};

struct EnumSessionsReply {
    static constexpr Command Number = Command::EnumSessionsReply;
    SessionDescription Description;
    std::u16string Name;
    bool operator==(const EnumSessionsReply&) const = default;
};

/// A machine outside the session asks for the name table.
struct EnumPlayer {
    static constexpr Command Number = Command::EnumPlayer;
    bool operator==(const EnumPlayer&) const = default;
};

/// With PlayerIsSystem in the flags: a request to join.
struct RequestPlayerId {
    static constexpr Command Number = Command::RequestPlayerId;
    std::uint32_t Flags = 0;
    bool operator==(const RequestPlayerId&) const = default;
};

struct RequestGroupId {
    static constexpr Command Number = Command::RequestGroupId;
    std::uint32_t Flags = PlayerIsLocal;
    bool operator==(const RequestGroupId&) const = default;
};

/// Answers both requests. A security provider's name means a session that needs a login.
struct RequestPlayerReply {
    static constexpr Command Number = Command::RequestPlayerReply;
    WireId Id = 0;
    std::uint32_t Result = ResultOk;
    bool NeedsLogin = false; ///< read only; never written
    bool operator==(const RequestPlayerReply&) const = default;
};

struct AddForwardRequest {
    static constexpr Command Number = Command::AddForwardRequest;
    WireId Id = 0;
    PackedPlayer Player;
    std::u16string Password;
    std::uint32_t TickCount = 0;
    bool operator==(const AddForwardRequest&) const = default;
};

struct AddForwardReply {
    static constexpr Command Number = Command::AddForwardReply;
    std::uint32_t Error = 0;
    bool operator==(const AddForwardReply&) const = default;
};

struct AddForward {
    static constexpr Command Number = Command::AddForward;
    WireId To = 0;
    WireId Id = 0;
    PackedPlayer Player;
    bool operator==(const AddForward&) const = default;
};

struct AddForwardAck {
    static constexpr Command Number = Command::AddForwardAck;
    WireId Id = 0;
    bool operator==(const AddForwardAck&) const = default;
};

/// The name table that completes a join.
struct SuperEnumPlayersReply {
    static constexpr Command Number = Command::SuperEnumPlayersReply;
    SessionDescription Description;
    std::u16string Name;
    std::u16string Password;
    std::vector<SuperPackedPlayer> Players;
    std::vector<SuperPackedPlayer> Groups;
    bool operator==(const SuperEnumPlayersReply&) const = default;
};

/// The name table in its older form.
struct EnumPlayersReply {
    static constexpr Command Number = Command::EnumPlayersReply;
    SessionDescription Description;
    std::u16string Name;
    std::u16string Password;
    std::vector<PackedPlayer> Players;
    std::vector<PackedPlayer> Groups;
    bool operator==(const EnumPlayersReply&) const = default;
};

/// Announces a new player or group, which has the id of its record.
template <Command TheNumber> struct CreateMessage {
    static constexpr Command Number = TheNumber;
    PackedPlayer Player;
    bool operator==(const CreateMessage&) const = default;
};
using CreatePlayerMessage = CreateMessage<Command::CreatePlayer>;
using CreatePlayerVerify = CreateMessage<Command::CreatePlayerVerify>;
using CreateGroupMessage = CreateMessage<Command::CreateGroup>;

/// The messages that name a player, a group, or both.
template <Command TheNumber> struct IdsMessage {
    static constexpr Command Number = TheNumber;
    WireId Player = 0;
    WireId Group = 0;
    bool operator==(const IdsMessage&) const = default;
};
using DeletePlayerMessage = IdsMessage<Command::DeletePlayer>;
using DeleteGroupMessage = IdsMessage<Command::DeleteGroup>;
using AddPlayerToGroupMessage = IdsMessage<Command::AddPlayerToGroup>;
using DeletePlayerFromGroup = IdsMessage<Command::DeletePlayerFromGroup>;

template <Command TheNumber> struct DataMessage {
    static constexpr Command Number = TheNumber;
    WireId Id = 0;
    Bytes Data;
    bool operator==(const DataMessage&) const = default;
};
using PlayerDataChanged = DataMessage<Command::PlayerDataChanged>;
using GroupDataChanged = DataMessage<Command::GroupDataChanged>;

template <Command TheNumber> struct NameMessage {
    static constexpr Command Number = TheNumber;
    WireId Id = 0;
    std::u16string ShortName;
    std::u16string LongName;
    bool operator==(const NameMessage&) const = default;
};
using PlayerNameChanged = NameMessage<Command::PlayerNameChanged>;
using GroupNameChanged = NameMessage<Command::GroupNameChanged>;

/// A piece of a large message: Packet for messages that may get lost, Packet2Data for the others.
template <Command TheNumber> struct PieceMessage {
    static constexpr Command Number = TheNumber;
    Guid Message;
    std::uint32_t Index = 0;
    std::uint32_t Offset = 0;
    std::uint32_t TotalPieces = 0;
    std::uint32_t MessageSize = 0;
    Bytes Data;
    bool operator==(const PieceMessage&) const = default;
};
using Packet = PieceMessage<Command::Packet>;
using Packet2Data = PieceMessage<Command::Packet2Data>;

struct Packet2Ack {
    static constexpr Command Number = Command::Packet2Ack;
    Guid Message;
    std::uint32_t Index = 0;
    bool operator==(const Packet2Ack&) const = default;
};

struct Ping {
    static constexpr Command Number = Command::Ping;
    WireId From = 0;
    std::uint32_t TickCount = 0;
    bool operator==(const Ping&) const = default;
};

struct PingReply {
    static constexpr Command Number = Command::PingReply;
    WireId From = 0;
    std::uint32_t TickCount = 0;
    bool operator==(const PingReply&) const = default;
};

struct YouAreDead {
    static constexpr Command Number = Command::YouAreDead;
    bool operator==(const YouAreDead&) const = default;
};

/// Wraps a player message (without prefix) whose first bytes would read as a signature.
struct PlayerWrapper {
    static constexpr Command Number = Command::PlayerWrapper;
    Bytes Content;
    bool operator==(const PlayerWrapper&) const = default;
};

struct SessionDescChanged {
    static constexpr Command Number = Command::SessionDescChanged;
    SessionDescription Description;
    std::u16string Name;
    std::u16string Password;
    bool operator==(const SessionDescChanged&) const = default;
};

struct IAmNameServer {
    static constexpr Command Number = Command::IAmNameServer;
    WireId To = 0;
    WireId Host = 0;
    std::uint32_t Flags = PlayerIsSystem | PlayerIsNameServer | PlayerInGroup;
    std::optional<ServiceData> Service;
    bool operator==(const IAmNameServer&) const = default;
};

/// A login was refused (LogonDenied, AuthError): a join ends.
struct LoginFailed {
    Command Number = Command::LogonDenied;
    bool operator==(const LoginFailed&) const = default;
};

/// A known message that this peer has no use for.
struct IgnoredMessage {
    Command Number = Command::Chat;
    bool operator==(const IgnoredMessage&) const = default;
};

using WireMessage =
    std::variant<EnumSessions, EnumSessionsReply, EnumPlayer, RequestPlayerId, RequestGroupId, RequestPlayerReply,
                 AddForwardRequest, AddForwardReply, AddForward, AddForwardAck, SuperEnumPlayersReply, EnumPlayersReply,
                 CreatePlayerMessage, CreatePlayerVerify, CreateGroupMessage, DeletePlayerMessage, DeleteGroupMessage,
                 AddPlayerToGroupMessage, DeletePlayerFromGroup, PlayerDataChanged, GroupDataChanged, PlayerNameChanged,
                 GroupNameChanged, Packet, Packet2Data, Packet2Ack, Ping, PingReply, YouAreDead, PlayerWrapper,
                 SessionDescChanged, IAmNameServer, LoginFailed, IgnoredMessage>;

/// A management message taken apart.
struct Management {
    std::uint16_t Version = 0;
    WireMessage Body;
};
} // namespace corvane::directplay
