#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
using PlayerId = std::int32_t;
inline constexpr PlayerId AllPlayers = 0;   ///< as a destination
inline constexpr PlayerId SystemSender = 0; ///< as the sender of the transport's own messages

/// Flags of the session operations, with the values of the session protocol.
inline constexpr std::uint32_t EnumSessionsAvailable = 1;
inline constexpr std::uint32_t EnumSessionsPasswordRequired = 64;
inline constexpr std::uint32_t OpenJoin = 1;
inline constexpr std::uint32_t OpenCreate = 2;
inline constexpr std::uint32_t SendGuaranteed = 1;
inline constexpr std::uint32_t SessionMigrateHost = 4;
inline constexpr std::uint32_t SessionKeepAlive = 64;
inline constexpr std::uint32_t SessionPasswordRequired = 1024;

/// One way of reaching sessions; address is the provider's own business.
struct ConnectionEntry {
    std::string Name;
    std::string Address;
};

/// A session as the enumeration lists it, or as a host describes the one that it creates. Texts are Windows-1252.
struct SessionEntry {
    std::string Name;
    std::int32_t CurrentPlayers = 0;
    std::int32_t MaxPlayers = 0;
    std::string InstanceGuid; ///< "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"; empty when creating
    std::uint32_t Flags = 0;
    std::string Password; ///< set by whoever opens the session; never listed
};

/// A member or a group of a session.
struct SessionMember {
    std::int32_t Id = 0;
    std::string ShortName; ///< a player's friendly name
};

/// A message of the queue. A transport may queue messages of its own, from SystemSender and with bytes of their own:
/// their first 32-bit number is their type, and four bytes may be all there is.
struct ReceivedMessage {
    PlayerId From = SystemSender;
    PlayerId To = 0;
    Bytes Content;
};

/// A member's end of a multiplayer session: the operations of the session protocol under its documented names.
///
/// All calls are synchronous and made on one thread. Any of them may fail (the session is gone, the connection was
/// cancelled); the Error's What names the operation. Destroying the object leaves whatever session it is in.
class SessionPeer {
public:
    virtual ~SessionPeer() = default;

    virtual Result<std::vector<ConnectionEntry>> GetDPEnumConnections() = 0;
    virtual Result<void> InitializeConnection(std::string_view address) = 0;
    virtual Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) = 0;
    /// Joins an enumerated session (OpenJoin), or creates one from its description (OpenCreate).
    virtual Result<void> Open(const SessionEntry& session, std::uint32_t flags) = 0;
    /// Returns the id of a new player of this member; names are Windows-1252.
    virtual Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) = 0;
    virtual Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) = 0;
    virtual Result<std::int32_t> CreateGroup(std::string_view shortName) = 0;
    virtual Result<std::vector<SessionMember>> GetDPEnumGroups() = 0;
    virtual Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) = 0;
    virtual Result<std::vector<SessionMember>> GetDPEnumPlayers() = 0;
    /// The number of messages waiting for a player.
    virtual Result<std::int32_t> GetMessageCount(PlayerId player) = 0;
    /// The oldest waiting message; an Error when none waits.
    virtual Result<ReceivedMessage> Receive() = 0;
    /// Copies the message before it returns. To AllPlayers it goes to every player but the sender. A message to a
    /// player that has just left is lost without an Error: its sender cannot have known.
    virtual Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) = 0;
    /// Also answers for a player that has left while messages from it wait to be received.
    virtual Result<std::string> GetPlayerFriendlyName(PlayerId player) = 0;
    virtual Result<void> DestroyPlayer(PlayerId player) = 0;
    virtual Result<void> Close() = 0;

    /// Whether the transport has made this machine the session's host: it created the session, or the one that did
    /// has gone.
    [[nodiscard]] virtual bool IsHost() const { return false; }
    /// True while so much waits to be sent that whoever can say less for a while should.
    [[nodiscard]] virtual bool Congested() const { return false; }
};

/// Makes peers: the root object of the session library.
class SessionPeerFactory {
public:
    virtual ~SessionPeerFactory() = default;
    virtual Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() = 0;
};
} // namespace corvane
