#include "session/InMemoryNetwork.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <string>

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
        const SessionEntry entry = session->Listing();
        const bool needsPassword = (entry.Flags & SessionPasswordRequired) != 0;
        if (!session->IsLost() && !session->IsFull() && (!needsPassword || (flags & EnumSessionsPasswordRequired) != 0))
            entries.push_back(entry);
    }
    return entries;
}

void InMemoryNetwork::ForgetLostSessions()
{
    std::erase_if(m_sessions, [](const auto& session) { return session->IsLost(); });
}

bool InMemoryNetwork::Vanish(std::string_view instanceGuid, PlayerId player)
{
    const std::shared_ptr<InMemorySession> session = Find(instanceGuid);
    return session && session->Vanish(player);
}

void InMemoryNetwork::DropVanished()
{
    for (const auto& session : m_sessions)
        session->DropVanished();
    ForgetLostSessions();
}

/// Counts the calls of each operation and asks the hook about each.
class FailurePlan {
public:
    explicit FailurePlan(FailureHook hook) : m_hook(std::move(hook)) {}

    [[nodiscard]] bool HasHook() const noexcept { return static_cast<bool>(m_hook); }

    bool Fails(std::string_view operation)
    {
        if (!m_hook)
            return false;
        auto count = m_calls.find(operation);
        if (count == m_calls.end())
            count = m_calls.emplace(operation, 0).first;
        return m_hook(operation, ++count->second);
    }

private:
    FailureHook m_hook;
    std::map<std::string, int, std::less<>> m_calls;
};

namespace {
class InMemoryPeer final : public SessionPeer {
public:
    InMemoryPeer(InMemoryNetwork& network, std::shared_ptr<FailurePlan> failures)
        : m_network(network), m_failures(std::move(failures))
    {
    }
    InMemoryPeer(const InMemoryPeer&) = delete;
    InMemoryPeer& operator=(const InMemoryPeer&) = delete;
    InMemoryPeer(InMemoryPeer&&) = delete;
    InMemoryPeer& operator=(InMemoryPeer&&) = delete;
    ~InMemoryPeer() override { Leave(); }

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections(std::string_view guid, std::uint32_t flags) override;
    Result<void> InitializeConnection(std::string_view address) override;
    Result<SessionData> CreateSessionData() override;
    Result<std::vector<SessionEntry>> GetDPEnumSessions(const SessionData& data, std::int32_t timeoutMs,
                                                        std::uint32_t flags) override;
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName, std::int32_t event,
                                  std::uint32_t flags) override;
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override;
    Result<std::int32_t> CreateGroup(std::string_view shortName) override;
    Result<std::vector<SessionMember>> GetDPEnumGroups(std::string_view sessionGuid, std::uint32_t flags) override;
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers(std::string_view sessionGuid, std::uint32_t flags) override;
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive(std::uint32_t flags) override;
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override;
    Result<void> DestroyPlayer(PlayerId player) override;
    Result<void> Close() override;
    [[nodiscard]] bool IsHost() const override { return m_session && m_session->IsHost(m_machine); }

private:
    /// What keeps an operation from running at all.
    std::optional<Error> Ready(const char* operation);
    /// The same for an operation that needs a session, or one particular session.
    std::optional<Error> InSession(const char* operation);
    std::optional<Error> InSession(const char* operation, std::string_view sessionGuid);
    void Leave();

    InMemoryNetwork& m_network;
    std::shared_ptr<FailurePlan> m_failures;
    bool m_initialized = false;
    InMemoryMachine m_machine;
    std::shared_ptr<InMemorySession> m_session;
};

std::optional<Error> InMemoryPeer::Ready(const char* operation)
{
    if (m_failures->Fails(operation))
        return Fail(operation, "told to fail");
    if (m_machine.Vanished)
        return Fail(operation, "the connection is lost");
    return std::nullopt;
}

std::optional<Error> InMemoryPeer::InSession(const char* operation)
{
    if (m_session && !m_machine.Vanished && !m_failures->HasHook())
        return std::nullopt; // nearly always, and for every single message
    if (auto refusal = Ready(operation))
        return refusal;
    if (!m_session)
        return Fail(operation, "no session is open");
    return std::nullopt;
}

std::optional<Error> InMemoryPeer::InSession(const char* operation, std::string_view sessionGuid)
{
    if (auto refusal = InSession(operation))
        return refusal;
    if (!sessionGuid.empty() && m_session->InstanceGuid() != sessionGuid)
        return Fail(operation, "the open session is not " + std::string(sessionGuid));
    return std::nullopt;
}

void InMemoryPeer::Leave()
{
    if (!m_session)
        return;
    m_session->Leave(m_machine);
    m_session.reset();
    m_network.ForgetLostSessions();
}

Result<std::vector<ConnectionEntry>> InMemoryPeer::GetDPEnumConnections(std::string_view /*guid*/,
                                                                        std::uint32_t /*flags*/)
{
    if (auto refusal = Ready("GetDPEnumConnections"))
        return *refusal;
    return std::vector<ConnectionEntry>{
        {std::string(InMemoryProvider::ConnectionName), std::string(InMemoryProvider::ConnectionAddress)}};
}

Result<void> InMemoryPeer::InitializeConnection(std::string_view address)
{
    if (auto refusal = Ready("InitializeConnection"))
        return *refusal;
    if (m_initialized || address != InMemoryProvider::ConnectionAddress)
        return Fail("InitializeConnection", m_initialized ? "initialized already" : "not an address of this network");
    m_initialized = true;
    return {};
}

Result<SessionData> InMemoryPeer::CreateSessionData()
{
    if (auto refusal = Ready("CreateSessionData"))
        return *refusal;
    return SessionData{};
}

Result<std::vector<SessionEntry>> InMemoryPeer::GetDPEnumSessions(const SessionData& /*data*/,
                                                                  std::int32_t /*timeoutMs*/, std::uint32_t flags)
{
    if (auto refusal = Ready("GetDPEnumSessions"))
        return *refusal;
    if (!m_initialized)
        return Fail("GetDPEnumSessions", "no connection is initialized");
    std::vector<SessionEntry> entries = m_network.Listing(flags);
    for (SessionEntry& entry : entries) {
        if (m_failures->Fails("GetSessionItem"))
            entry.InstanceGuid.clear();
    }
    return entries;
}

Result<void> InMemoryPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    if (auto refusal = Ready("Open"))
        return *refusal;
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

Result<PlayerId> InMemoryPeer::CreatePlayer(std::string_view friendlyName, std::string_view /*formalName*/,
                                            std::int32_t /*event*/, std::uint32_t /*flags*/)
{
    if (auto refusal = InSession("CreatePlayer"))
        return *refusal;
    return m_session->CreatePlayer(m_machine, friendlyName);
}

Result<void> InMemoryPeer::SetPlayerName(PlayerId player, std::string_view friendlyName)
{
    if (auto refusal = InSession("SetPlayerName"))
        return *refusal;
    return m_session->Rename(m_machine, player, friendlyName);
}

Result<std::int32_t> InMemoryPeer::CreateGroup(std::string_view shortName)
{
    if (auto refusal = InSession("CreateGroup"))
        return *refusal;
    return m_session->CreateGroup(shortName);
}

Result<std::vector<SessionMember>> InMemoryPeer::GetDPEnumGroups(std::string_view sessionGuid, std::uint32_t /*flags*/)
{
    if (auto refusal = InSession("GetDPEnumGroups", sessionGuid))
        return *refusal;
    return m_session->Groups();
}

Result<void> InMemoryPeer::AddPlayerToGroup(std::int32_t group, PlayerId player)
{
    if (auto refusal = InSession("AddPlayerToGroup"))
        return *refusal;
    return m_session->AddToGroup(group, player);
}

Result<std::vector<SessionMember>> InMemoryPeer::GetDPEnumPlayers(std::string_view sessionGuid, std::uint32_t /*flags*/)
{
    if (auto refusal = InSession("GetDPEnumPlayers", sessionGuid))
        return *refusal;
    return m_session->Players(m_machine);
}

Result<std::int32_t> InMemoryPeer::GetMessageCount(PlayerId player)
{
    if (auto refusal = InSession("GetMessageCount"))
        return *refusal;
    if (!m_session->Owns(m_machine, player))
        return Fail("GetMessageCount", "player " + NumberText(player) + " is not this peer's");
    return m_machine.WaitingFor(player);
}

Result<ReceivedMessage> InMemoryPeer::Receive(std::uint32_t /*flags*/)
{
    if (auto refusal = InSession("Receive"))
        return *refusal;
    if (m_machine.IsEmpty())
        return Fail("Receive", "no message is waiting");
    return m_machine.Take();
}

Result<void> InMemoryPeer::Send(PlayerId from, PlayerId to, std::uint32_t /*flags*/, ByteSpan message)
{
    if (auto refusal = InSession("Send"))
        return *refusal;
    if (message.size() > InMemoryNetwork::MessageLimit)
        return Fail("Send",
                    "a message of " + NumberText(static_cast<std::int64_t>(message.size())) + " bytes is too long");
    return m_session->Send(m_machine, from, to, message);
}

Result<std::string> InMemoryPeer::GetPlayerFriendlyName(PlayerId player)
{
    if (auto refusal = InSession("GetPlayerFriendlyName"))
        return *refusal;
    return m_session->FriendlyName(player);
}

Result<void> InMemoryPeer::DestroyPlayer(PlayerId player)
{
    if (auto refusal = InSession("DestroyPlayer"))
        return *refusal;
    return m_session->DestroyPlayer(m_machine, player);
}

Result<void> InMemoryPeer::Close()
{
    if (auto refusal = InSession("Close"))
        return *refusal;
    Leave();
    return {};
}
} // namespace

InMemoryProvider::InMemoryProvider(InMemoryNetwork& network, FailureHook hook)
    : m_network(&network), m_failures(std::make_shared<FailurePlan>(std::move(hook)))
{
}

Result<std::unique_ptr<SessionPeer>> InMemoryProvider::CreatePeer()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<InMemoryPeer>(*m_network, m_failures));
}

Result<std::unique_ptr<SessionPeer>> InMemoryProvider::DirectPlayCreate(std::string_view /*guid*/)
{
    if (m_failures->Fails("DirectPlayCreate"))
        return Fail("DirectPlayCreate", "told to fail");
    return CreatePeer();
}
} // namespace corvane
