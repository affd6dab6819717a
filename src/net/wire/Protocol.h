#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

/// Numbers of the DirectPlay 4 protocol over TCP/IP, and the limits that this peer sets itself.
namespace corvane::directplay {
/// Time as the peer's state machine sees it: milliseconds since any fixed start.
using Millis = std::chrono::milliseconds;

/// A player, group or system player (a machine). Ids are compared unsigned.
using WireId = std::uint32_t;
inline constexpr WireId EveryPlayer = 0;
inline constexpr WireId ServerPlayer = 1;
inline constexpr WireId UnknownPlayer = 0xFFFFFFFF;

enum class Command : std::uint16_t {
    EnumSessionsReply = 0x01,
    EnumSessions = 0x02,
    EnumPlayersReply = 0x03,
    EnumPlayer = 0x04,
    RequestPlayerId = 0x05,
    RequestGroupId = 0x06,
    RequestPlayerReply = 0x07,
    CreatePlayer = 0x08,
    CreateGroup = 0x09,
    DeletePlayer = 0x0B,
    DeleteGroup = 0x0C,
    AddPlayerToGroup = 0x0D,
    DeletePlayerFromGroup = 0x0E,
    PlayerDataChanged = 0x0F,
    PlayerNameChanged = 0x10,
    GroupDataChanged = 0x11,
    GroupNameChanged = 0x12,
    AddForwardRequest = 0x13,
    Packet = 0x15,
    Ping = 0x16,
    PingReply = 0x17,
    YouAreDead = 0x18,
    PlayerWrapper = 0x19,
    SessionDescChanged = 0x1A,
    Challenge = 0x1C,
    AccessGranted = 0x1D,
    LogonDenied = 0x1E,
    AuthError = 0x1F,
    Negotiate = 0x20,
    ChallengeResponse = 0x21,
    Signed = 0x22,
    AddForwardReply = 0x24,
    AskForMulticast = 0x25,
    AskForMulticastGuaranteed = 0x26,
    AddShortcutToGroup = 0x27,
    DeleteGroupFromGroup = 0x28,
    SuperEnumPlayersReply = 0x29,
    KeyExchange = 0x2B,
    KeyExchangeReply = 0x2C,
    Chat = 0x2D,
    AddForward = 0x2E,
    AddForwardAck = 0x2F,
    Packet2Data = 0x30,
    Packet2Ack = 0x31,
    IAmNameServer = 0x35,
    Voice = 0x36,
    MulticastDelivery = 0x37,
    CreatePlayerVerify = 0x38,
};

/// Versions ("dialects"). They are backward compatible; what is above the highest counts as the highest.
inline constexpr std::uint16_t LowestVersion = 9;
inline constexpr std::uint16_t VerifyVersion = 13; ///< the first that knows CreatePlayerVerify
inline constexpr std::uint16_t OwnVersion = 14;

/// Tokens of a message's first word.
inline constexpr std::uint32_t TokenRemote = 0xFAB;
inline constexpr std::uint32_t TokenRelayed = 0xBAB;
inline constexpr std::uint32_t TokenForward = 0xCAB;

inline constexpr std::uint32_t Signature = 0x79616C70; // the bytes "play"

/// Session flags.
inline constexpr std::uint32_t FlagNewPlayersDisabled = 0x1;
inline constexpr std::uint32_t FlagMigrateHost = 0x4;
inline constexpr std::uint32_t FlagNoMessageId = 0x8;
inline constexpr std::uint32_t FlagJoinDisabled = 0x20;
inline constexpr std::uint32_t FlagKeepAlive = 0x40;
inline constexpr std::uint32_t FlagNoDataMessages = 0x80;
inline constexpr std::uint32_t FlagSecureServer = 0x100;
inline constexpr std::uint32_t FlagPrivate = 0x200;
inline constexpr std::uint32_t FlagPasswordRequired = 0x400;
inline constexpr std::uint32_t FlagMulticastServer = 0x800;
inline constexpr std::uint32_t FlagClientServer = 0x1000;
inline constexpr std::uint32_t FlagReliableProtocol = 0x2000;
inline constexpr std::uint32_t FlagNoSessionDescMessages = 0x20000;
/// Kinds of session that this peer cannot take part in.
inline constexpr std::uint32_t UnsupportedSessionFlags =
    FlagSecureServer | FlagMulticastServer | FlagClientServer | FlagReliableProtocol;
/// Flags that the host may change while the session runs; the others are fixed for its life.
inline constexpr std::uint32_t ChangeableSessionFlags =
    FlagNewPlayersDisabled | FlagJoinDisabled | FlagNoDataMessages | 0x4000 | FlagPasswordRequired | FlagPrivate;

/// Flags of player and group records.
inline constexpr std::uint32_t PlayerIsSystem = 0x1;
inline constexpr std::uint32_t PlayerIsNameServer = 0x2;
inline constexpr std::uint32_t PlayerInGroup = 0x4;
inline constexpr std::uint32_t PlayerIsLocal = 0x8;

/// Flags of enumeration requests.
inline constexpr std::uint32_t EnumAvailable = 1;
inline constexpr std::uint32_t EnumAll = 2;
inline constexpr std::uint32_t EnumPasswordRequired = 64;

/// Results of id requests and of joins. Anything but success is a refusal.
inline constexpr std::uint32_t ResultOk = 0;
inline constexpr std::uint32_t ResultNoNewPlayers = 0x8877014A;
inline constexpr std::uint32_t ResultInvalidPassword = 0x88770154;
inline constexpr std::uint32_t ResultAccessDenied = 0x8877000A;

/// Sizes on the wire, in bytes.
inline constexpr std::size_t PrefixSize = 20;   ///< size and token, socket address
inline constexpr std::size_t HeaderSize = 28;   ///< prefix, signature, command, version
inline constexpr std::size_t SignaturePart = 8; ///< signature, command, version
inline constexpr std::size_t ServiceDataSize = 32;
inline constexpr std::size_t DescriptionSize = 80;

/// Caps that this peer sets itself, against hostile or broken machines.
inline constexpr std::size_t MaxMessageSize = 262144;
inline constexpr std::size_t MaxDatagramMessage = 1400;
inline constexpr std::size_t MaxTextUnits = 512;
inline constexpr std::size_t MaxRecordData = 65536;
inline constexpr std::size_t MaxMachines = 256;
inline constexpr std::size_t MaxMachinesPerSource = 128; ///< behind one address
inline constexpr std::size_t MaxPlayers = 4096;
inline constexpr std::size_t MaxGroups = 1024;
inline constexpr std::size_t MaxSessionsListed = 256;
inline constexpr std::size_t MaxSessionsPerSource = 16;
inline constexpr std::uint32_t MaxPieces = 4096;
inline constexpr std::size_t MaxUnfinishedPerMachine = 16;
inline constexpr std::size_t MaxUnfinishedBytes = 4194304;
inline constexpr std::size_t MaxHeldMessages = 1024;
inline constexpr std::size_t MaxHeldBytes = 1048576;
inline constexpr std::size_t MaxReservationsPerSource = 8;
inline constexpr std::size_t MaxReservations = 64;
inline constexpr unsigned MaxAnswersPerSecond = 10; ///< to strangers, for each source address

/// Timers and the values that the wire does not fix. The defaults are the protocol's.
struct PeerTimers {
    Millis Enumeration{5000};
    Millis Settle{500}; ///< a host that was asked by its address has said all, once nothing new came for this long
    Millis FirstRepeat{1000};
    Millis SecondRepeat{2500};
    Millis Request{5000};
    Millis JoinTable{20000}; ///< a host may take 15 s to gather its acknowledgements
    Millis NameTable{4000};  ///< as host; a joiner gives up after 5 s
    Millis PingPeriod{35000};
    unsigned PingLimit = 8;
    unsigned PingByStreamFrom = 3; ///< the unanswered ping from which on pings go over the stream as well
    Millis RecentlyCreated{40000};
    Millis PiecesIdle{15000};
    Millis Reservation{30000};
    Millis UnknownSender{2000};
};
} // namespace corvane::directplay
