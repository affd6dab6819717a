#pragma once

#include "net/sockets/DirectPlayOptions.h"
#include "net/sockets/PeerNetwork.h"
#include "session/ConnectionProvider.h"

namespace corvane {
/// Name of this connection type in the list of connections.
inline constexpr std::string_view DirectPlayConnectionName = "Internet TCP/IP Connection For DirectPlay";
/// Its address. A host's name or address may follow; without one DirectPlayOptions says where to look.
inline constexpr std::string_view DirectPlayConnectionAddress = "tcpip:";

/// A member's or host's end of a session over TCP/IP.
///
/// The network runs on a thread of its own, which answers the session whatever the program's thread does. Operations
/// that need an answer wait for it within the protocol's time limits, and can be left through
/// DirectPlayOptions::WhileWaiting.
///
/// Once the session is lost every operation fails with the reason, except that messages which have already arrived
/// can still be taken. Ids with bit 31 set, which other hosts may give out, are negative here.
class DirectPlayPeer final : public SessionPeer {
public:
    explicit DirectPlayPeer(DirectPlayOptions options);
    ~DirectPlayPeer() override;
    DirectPlayPeer(const DirectPlayPeer&) = delete;
    DirectPlayPeer& operator=(const DirectPlayPeer&) = delete;
    DirectPlayPeer(DirectPlayPeer&&) = delete;
    DirectPlayPeer& operator=(DirectPlayPeer&&) = delete;

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override;
    /// Takes the peer's own ports, and finds the host's address when one is to be asked.
    Result<void> InitializeConnection(std::string_view address) override;
    /// timeoutMs 0: the protocol's time, or until a host that is asked by its address has answered. Otherwise the call
    /// takes that long. The first call asks for the host's address where the options say how.
    Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) override;
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override;
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override;
    Result<std::int32_t> CreateGroup(std::string_view shortName) override;
    Result<std::vector<SessionMember>> GetDPEnumGroups() override;
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override;
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive() override;
    /// A message to a player that has left is dropped without an error.
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    /// Also of players that have left: their messages may still wait.
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override;
    Result<void> DestroyPlayer(PlayerId player) override;
    /// Leaves the session, and waits until the goodbyes are sent, for a second at most.
    Result<void> Close() override;

    /// Whether this peer is the session's host: because it created the session, or took it over.
    [[nodiscard]] bool IsHost() const override;
    [[nodiscard]] bool Congested() const override;
    /// Where this peer answers enumerations as a host. The Error says why it does not: it is no host, or the port was
    /// taken, in which case only machines that know the session already can come in.
    [[nodiscard]] Result<directplay::SocketAddress> EnumerationAddress() const;
    /// Why the session ended without our leaving it; empty while it runs.
    [[nodiscard]] std::string LossReason() const;
    /// Packets seen so far, and dropped by reason.
    [[nodiscard]] directplay::PacketCounters Counters() const;

private:
    static Error Because(const char* operation, const Error& error);
    static Result<void> CheckText(const char* operation, std::string_view text);
    [[nodiscard]] Result<void> RequireSession(const char* operation) const;
    Result<void> RequireNetwork(const char* operation) const;
    Result<void> FindHost(const std::string& host, const char* operation);
    Result<directplay::WireId> Request(const char* operation, const directplay::PeerNetwork::Work& start);

    DirectPlayOptions m_options;
    std::unique_ptr<directplay::PeerNetwork> m_network;
    std::optional<std::uint32_t> m_hostIp; ///< to look for sessions at; none: broadcast
    bool m_hostAsked = false;              ///< the user has said where to look
};

/// Makes peers with the options it holds; a change holds for peers made afterwards.
class DirectPlayProvider final : public ConnectionProvider {
public:
    explicit DirectPlayProvider(DirectPlayOptions options = {}) : Options(std::move(options)) {}

    [[nodiscard]] std::string Name() const override { return std::string(DirectPlayConnectionName); }
    [[nodiscard]] std::string Address() const override { return std::string(DirectPlayConnectionAddress); }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

    DirectPlayOptions Options;
};
} // namespace corvane
