#include "platform/CompositePeerFactory.h"

namespace corvane {
namespace {
class CompositePeer final : public SessionPeer {
public:
    explicit CompositePeer(std::vector<ConnectionProvider*> providers) : m_providers(std::move(providers)) {}

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections(std::string_view /*guid*/,
                                                              std::uint32_t /*flags*/) override
    {
        std::vector<ConnectionEntry> entries;
        for (const ConnectionProvider* provider : m_providers)
            entries.push_back({provider->Name(), provider->Address()});
        return entries;
    }

    Result<void> InitializeConnection(std::string_view address) override
    {
        if (m_peer)
            return Fail("InitializeConnection", "a connection is initialized already");
        for (ConnectionProvider* provider : m_providers) {
            if (provider->Address() != address)
                continue;
            auto peer = provider->CreatePeer();
            if (!peer)
                return peer.error();
            if (auto initialized = (*peer)->InitializeConnection(address); !initialized)
                return initialized;
            m_peer = std::move(*peer);
            return {};
        }
        return Fail("InitializeConnection", "there is no connection type \"" + std::string(address) + "\"");
    }

    Result<SessionData> CreateSessionData() override
    {
        return Delegate("CreateSessionData", [](SessionPeer& peer) { return peer.CreateSessionData(); });
    }
    Result<std::vector<SessionEntry>> GetDPEnumSessions(const SessionData& data, std::int32_t timeoutMs,
                                                        std::uint32_t flags) override
    {
        return Delegate("GetDPEnumSessions",
                        [&](SessionPeer& peer) { return peer.GetDPEnumSessions(data, timeoutMs, flags); });
    }
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override
    {
        return Delegate("Open", [&](SessionPeer& peer) { return peer.Open(session, flags); });
    }
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName, std::int32_t event,
                                  std::uint32_t flags) override
    {
        return Delegate("CreatePlayer",
                        [&](SessionPeer& peer) { return peer.CreatePlayer(friendlyName, formalName, event, flags); });
    }
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override
    {
        return Delegate("SetPlayerName", [&](SessionPeer& peer) { return peer.SetPlayerName(player, friendlyName); });
    }
    Result<std::int32_t> CreateGroup(std::string_view shortName) override
    {
        return Delegate("CreateGroup", [&](SessionPeer& peer) { return peer.CreateGroup(shortName); });
    }
    Result<std::vector<SessionMember>> GetDPEnumGroups(std::string_view sessionGuid, std::uint32_t flags) override
    {
        return Delegate("GetDPEnumGroups", [&](SessionPeer& peer) { return peer.GetDPEnumGroups(sessionGuid, flags); });
    }
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override
    {
        return Delegate("AddPlayerToGroup", [&](SessionPeer& peer) { return peer.AddPlayerToGroup(group, player); });
    }
    Result<std::vector<SessionMember>> GetDPEnumPlayers(std::string_view sessionGuid, std::uint32_t flags) override
    {
        return Delegate("GetDPEnumPlayers",
                        [&](SessionPeer& peer) { return peer.GetDPEnumPlayers(sessionGuid, flags); });
    }
    Result<std::int32_t> GetMessageCount(PlayerId player) override
    {
        return Delegate("GetMessageCount", [&](SessionPeer& peer) { return peer.GetMessageCount(player); });
    }
    Result<ReceivedMessage> Receive(std::uint32_t flags) override
    {
        return Delegate("Receive", [&](SessionPeer& peer) { return peer.Receive(flags); });
    }
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override
    {
        return Delegate("Send", [&](SessionPeer& peer) { return peer.Send(from, to, flags, message); });
    }
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override
    {
        return Delegate("GetPlayerFriendlyName", [&](SessionPeer& peer) { return peer.GetPlayerFriendlyName(player); });
    }
    Result<void> DestroyPlayer(PlayerId player) override
    {
        return Delegate("DestroyPlayer", [&](SessionPeer& peer) { return peer.DestroyPlayer(player); });
    }
    Result<void> Close() override
    {
        return Delegate("Close", [](SessionPeer& peer) { return peer.Close(); });
    }

private:
    template <class Operation>
    auto Delegate(const char* name, Operation operation) -> decltype(operation(std::declval<SessionPeer&>()))
    {
        if (!m_peer)
            return Fail(name, "no connection is initialized");
        return operation(*m_peer);
    }

    std::vector<ConnectionProvider*> m_providers;
    std::unique_ptr<SessionPeer> m_peer; ///< of the provider chosen
};
} // namespace

Result<std::unique_ptr<SessionPeer>> CompositePeerFactory::DirectPlayCreate(std::string_view /*guid*/)
{
    return std::unique_ptr<SessionPeer>(std::make_unique<CompositePeer>(m_providers));
}
} // namespace corvane
