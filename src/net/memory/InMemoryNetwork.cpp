#include "net/memory/InMemoryNetwork.h"

#include "core/NumberText.h"

#include <cstdio>
#include <string>
#include <utility>

namespace corvane {
std::shared_ptr<InMemorySession> InMemoryNetwork::Create(SessionEntry description, InMemoryMachine& host)
{
    ForgetLostSessions();
    char guid[40];
    static_cast<void>(std::snprintf(guid, sizeof guid, "{%08X-0000-4000-8000-000000000000}", ++m_created));
    description.InstanceGuid = guid;
    return m_sessions.emplace_back(std::make_shared<InMemorySession>(std::move(description), host));
}

std::shared_ptr<InMemorySession> InMemoryNetwork::Find(std::string_view instanceGuid) const
{
    for (const auto& session : m_sessions) {
        if (!session->IsLost() && session->InstanceGuid() == instanceGuid)
            return session;
    }
    return nullptr;
}

std::vector<SessionEntry> InMemoryNetwork::Listing(std::uint32_t flags) const
{
    std::vector<SessionEntry> entries;
    for (const auto& session : m_sessions) {
        if (session->IsFoundBy(flags))
            entries.push_back(session->Listing());
    }
    return entries;
}

void InMemoryNetwork::ForgetLostSessions()
{
    std::erase_if(m_sessions, [](const auto& session) { return session->IsLost(); });
}

namespace {
class InMemoryPeer final : public SessionPeer {
public:
    explicit InMemoryPeer(InMemoryNetwork& network) : m_network(network) {}
    InMemoryPeer(const InMemoryPeer&) = delete;
    InMemoryPeer& operator=(const InMemoryPeer&) = delete;
    InMemoryPeer(InMemoryPeer&&) = delete;
    InMemoryPeer& operator=(InMemoryPeer&&) = delete;
    ~InMemoryPeer() override { Leave(); }

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override
    {
        return std::vector<ConnectionEntry>{
            {std::string(InMemoryProvider::ConnectionName), std::string(InMemoryProvider::ConnectionAddress)}};
    }
    Result<void> InitializeConnection(std::string_view address) override
    {
        if (m_initialized || address != InMemoryProvider::ConnectionAddress)
            return Fail("InitializeConnection",
                        m_initialized ? "initialized already" : "not an address of this network");
        m_initialized = true;
        return {};
    }
    Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t /*timeoutMs*/, std::uint32_t flags) override
    {
        if (!m_initialized)
            return Fail("GetDPEnumSessions", "no connection is initialized");
        return m_network.Listing(flags);
    }
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view /*formalName*/) override
    {
        return InSession("CreatePlayer", [&](auto& session) { return session.CreatePlayer(m_machine, friendlyName); });
    }
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override
    {
        return InSession("SetPlayerName",
                         [&](auto& session) { return session.Rename(m_machine, player, friendlyName); });
    }
    Result<std::int32_t> CreateGroup(std::string_view shortName) override
    {
        return InSession("CreateGroup", [&](auto& session) { return session.CreateGroup(m_machine, shortName); });
    }
    Result<std::vector<SessionMember>> GetDPEnumGroups() override
    {
        return InSession("GetDPEnumGroups", [](auto& session) { return Result(session.Groups()); });
    }
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override
    {
        return InSession("AddPlayerToGroup", [&](auto& session) { return session.AddToGroup(group, player); });
    }
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override
    {
        return InSession("GetDPEnumPlayers", [&](auto& session) { return Result(session.Players(m_machine)); });
    }
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive() override;
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override
    {
        return InSession("GetPlayerFriendlyName", [&](auto& session) { return session.FriendlyName(player); });
    }
    Result<void> DestroyPlayer(PlayerId player) override
    {
        return InSession("DestroyPlayer", [&](auto& session) { return session.DestroyPlayer(m_machine, player); });
    }
    Result<void> Close() override
    {
        if (!m_session)
            return Fail("Close", NoSession);
        Leave();
        return {};
    }
    [[nodiscard]] bool IsHost() const override { return m_session && m_session->IsHost(m_machine); }

private:
    static constexpr const char* NoSession = "no session is open";

    template <class Work>
    auto InSession(const char* operation, Work work) -> decltype(work(std::declval<InMemorySession&>()))
    {
        if (!m_session)
            return Fail(operation, NoSession);
        return work(*m_session);
    }
    void Leave();

    InMemoryNetwork& m_network;
    bool m_initialized = false;
    InMemoryMachine m_machine;
    std::shared_ptr<InMemorySession> m_session;
};

void InMemoryPeer::Leave()
{
    if (!m_session)
        return;
    m_session->Leave(m_machine);
    m_session.reset();
    m_network.ForgetLostSessions();
}

Result<void> InMemoryPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    if (!m_initialized || m_session)
        return Fail("Open", m_session ? "a session is open already" : "no connection is initialized");
    if (flags == OpenCreate) {
        m_session = m_network.Create(session, m_machine);
        return {};
    }
    auto found = m_network.Find(session.InstanceGuid);
    if (!found)
        return Fail("Open", "there is no session " + session.InstanceGuid);
    if (auto joined = found->Join(m_machine, session.Password); !joined)
        return joined;
    m_session = std::move(found);
    return {};
}

Result<std::int32_t> InMemoryPeer::GetMessageCount(PlayerId player)
{
    if (!m_session)
        return Fail("GetMessageCount", NoSession);
    if (!m_session->Owns(m_machine, player))
        return Fail("GetMessageCount", "player " + NumberText(player) + " is not this peer's");
    return m_machine.WaitingFor(player);
}

Result<ReceivedMessage> InMemoryPeer::Receive()
{
    if (!m_session)
        return Fail("Receive", NoSession);
    if (m_machine.IsEmpty())
        return Fail("Receive", "no message is waiting");
    return m_machine.Take();
}

Result<void> InMemoryPeer::Send(PlayerId from, PlayerId to, std::uint32_t /*flags*/, ByteSpan message)
{
    if (!m_session)
        return Fail("Send", NoSession);
    if (message.size() > InMemoryNetwork::MessageLimit)
        return Fail("Send",
                    "a message of " + NumberText(static_cast<std::int64_t>(message.size())) + " bytes is too long");
    return m_session->Send(m_machine, from, to, message);
}
} // namespace

Result<std::unique_ptr<SessionPeer>> InMemoryProvider::DirectPlayCreate()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<InMemoryPeer>(*m_network));
}
} // namespace corvane
