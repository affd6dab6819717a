#include "traffic/TrafficProvider.h"

#include "net/memory/InMemoryNetwork.h"
#include "session/ForwardingPeer.h"
#include "traffic/TrafficSession.h"

#include <chrono>
#include <thread>
#include <utility>

namespace corvane {
namespace {
/// Where a session takes place: a network that others are on as well, or the memory of this program.
class TrafficStage {
public:
    explicit TrafficStage(SessionPeerFactory* network) : m_network(network) {}

    [[nodiscard]] bool OnNetwork() const noexcept { return m_network != nullptr; }
    [[nodiscard]] SessionPeerFactory& Peers() noexcept { return m_network != nullptr ? *m_network : m_memory; }

private:
    InMemoryNetwork m_inMemory;
    InMemoryProvider m_memory{m_inMemory};
    SessionPeerFactory* m_network;
};

/// The program's end of a session which it keeps going.
class TrafficPeer final : public ForwardingPeer {
public:
    TrafficPeer(std::shared_ptr<const TrafficConnection> connection, std::shared_ptr<SessionPeer> own,
                std::shared_ptr<TrafficStage> stage, TrafficDetailsTable& details)
        : ForwardingPeer(std::move(own)),
          m_shared(std::move(connection)),
          m_connection(*m_shared),
          m_stage(std::move(stage)),
          m_details(details)
    {
    }

    TrafficPeer(const TrafficPeer&) = delete;
    TrafficPeer& operator=(const TrafficPeer&) = delete;
    TrafficPeer(TrafficPeer&&) = delete;
    TrafficPeer& operator=(TrafficPeer&&) = delete;
    ~TrafficPeer() override
    {
        if (m_feed && m_connection.OnHealth)
            m_connection.OnHealth({});
    }

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override
    {
        return std::vector<ConnectionEntry>{{m_connection.Name, m_connection.Address}};
    }
    Result<void> InitializeConnection(std::string_view address) override
    {
        if (address != m_connection.Address)
            return Fail("InitializeConnection", "not an address of " + m_connection.Name);
        const auto connections = ForwardingPeer::GetDPEnumConnections();
        if (!connections || connections->empty())
            return Fail("InitializeConnection", "there is no connection for the session");
        return ForwardingPeer::InitializeConnection(connections->front().Address);
    }
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override
    {
        auto player = ForwardingPeer::CreatePlayer(friendlyName, formalName);
        if (player && m_session)
            m_session->SetController(*player);
        return player;
    }
    Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override
    {
        if (const Result<void> going = Advance(); !going)
            return going.error();
        return ForwardingPeer::GetDPEnumPlayers();
    }
    Result<std::int32_t> GetMessageCount(PlayerId player) override
    {
        if (const Result<void> going = Advance(); !going)
            return going.error();
        return ForwardingPeer::GetMessageCount(player);
    }

private:
    Result<void> Begin();
    Result<void> Listen();
    Result<void> Advance();
    void TellHealth(std::int64_t nowMs);

    std::shared_ptr<const TrafficConnection> m_shared;
    const TrafficConnection& m_connection;
    std::shared_ptr<TrafficStage> m_stage;
    TrafficDetailsTable& m_details;
    std::unique_ptr<TrafficFeed> m_feed;
    std::unique_ptr<TrafficSession> m_session; ///< uses the feed and the stage
    std::int64_t m_nextHealthMs = 0;
};

Result<void> TrafficPeer::Advance()
{
    if (!m_session)
        return {};
    const std::int64_t nowMs = m_connection.Clock();
    TellHealth(nowMs);
    return m_session->Advance(nowMs);
}

void TrafficPeer::TellHealth(std::int64_t nowMs)
{
    constexpr std::int64_t OftenMs = 1000;
    if (!m_connection.OnHealth || nowMs < m_nextHealthMs)
        return;
    m_nextHealthMs = nowMs + OftenMs;
    m_connection.OnHealth(m_feed->Health());
}

Result<std::vector<SessionEntry>> TrafficPeer::GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags)
{
    if (!m_session) {
        if (const Result<void> begun = Begin(); !begun)
            return begun.error();
    }
    auto found = ForwardingPeer::GetDPEnumSessions(timeoutMs, flags);
    if (found)
        for (SessionEntry& entry : *found)
            --entry.CurrentPlayers; // the host is this program's own
    return found;
}

Result<void> TrafficPeer::Begin()
{
    auto feed = m_connection.Open();
    if (!feed)
        return feed.error();
    m_feed = *std::move(feed);
    TrafficSessionOptions options;
    options.SessionName = m_feed->Name();
    options.HostName = m_connection.Name;
    options.OnNotice = m_connection.OnNotice;
    if (m_stage->OnNetwork()) {
        options.SessionName = m_connection.Name; // where the traffic comes from is nobody else's business
        options.MaxPlayers = MostOnNetwork;
        options.MigrateHost = true;
        options.ShowMembers = true;
    }
    auto session = TrafficSession::Create(m_stage->Peers(), *m_feed, m_details, std::move(options));
    if (!session)
        return session.error();
    m_session = *std::move(session);
    return Listen();
}

Result<void> TrafficPeer::Listen()
{
    constexpr std::chrono::milliseconds Step(50);
    const std::int64_t until = m_connection.Clock() + m_connection.ListenMs;
    while (m_connection.Clock() < until && m_session->AircraftCount() == 0) {
        if (m_connection.WhileWaiting && !m_connection.WhileWaiting())
            return Fail("GetDPEnumSessions", "was left");
        if (const Result<void> going = Advance(); !going)
            return going;
        std::this_thread::sleep_for(Step);
    }
    return {};
}
} // namespace

Result<std::unique_ptr<SessionPeer>> TrafficProvider::DirectPlayCreate()
{
    const auto stage = std::make_shared<TrafficStage>(m_connection->Network ? m_connection->Network() : nullptr);
    auto own = stage->Peers().DirectPlayCreate();
    if (!own)
        return own;
    // The stage lasts as long as the last peer on it.
    const std::shared_ptr<SessionPeer> lasting(own->release(), [stage](SessionPeer* peer) { delete peer; });
    return std::unique_ptr<SessionPeer>(std::make_unique<TrafficPeer>(m_connection, lasting, stage, m_details));
}
} // namespace corvane
