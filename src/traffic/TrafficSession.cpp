#include "traffic/TrafficSession.h"

#include <algorithm>
#include <utility>

namespace corvane {
TrafficSession::TrafficSession(TrafficFeed& feed, TrafficDetailsTable& details, TrafficSessionOptions options)
    : m_feed(feed), m_details(details), m_options(std::move(options))
{
}

TrafficSession::~TrafficSession()
{
    End();
}

Result<std::unique_ptr<TrafficSession>> TrafficSession::Create(SessionPeerFactory& factory, TrafficFeed& feed,
                                                               TrafficDetailsTable& details,
                                                               TrafficSessionOptions options)
{
    std::unique_ptr<TrafficSession> session(new TrafficSession(feed, details, std::move(options)));
    if (auto opened = session->Open(factory); !opened)
        return opened.error();
    return session;
}

Result<void> TrafficSession::Connect(SessionPeerFactory& factory)
{
    auto peer = factory.DirectPlayCreate();
    if (!peer)
        return peer.error();
    const auto connections = (*peer)->GetDPEnumConnections();
    if (!connections)
        return connections.error();
    if (connections->empty())
        return Fail("GetDPEnumConnections", "there is no connection type");
    m_peer = *std::move(peer);
    return m_peer->InitializeConnection(m_options.Address.empty() ? connections->front().Address : m_options.Address);
}

Result<void> TrafficSession::Open(SessionPeerFactory& factory)
{
    if (auto connected = Connect(factory); !connected)
        return connected;
    m_entry = {.Name = m_options.SessionName,
               .MaxPlayers = m_options.MaxPlayers,
               .InstanceGuid = {},
               .Flags = SessionKeepAlive | (m_options.MigrateHost ? SessionMigrateHost : 0) |
                        (m_options.Password.empty() ? 0 : SessionPasswordRequired),
               .Password = m_options.Password};
    if (auto opened = m_peer->Open(m_entry, OpenCreate); !opened)
        return opened;
    if (const auto group = m_peer->CreateGroup(MemberManners::Group); !group)
        return group.error();
    const auto host = m_peer->CreatePlayer(m_options.HostName, MemberManners::FormalName);
    if (!host)
        return host.error();
    m_hostId = *host;
    return {};
}

Result<void> TrafficSession::Advance(std::int64_t nowMs)
{
    constexpr std::int64_t LookIntervalMs = 5000;
    if (!m_peer)
        return {};
    if (auto received = ReceiveAll(); !received)
        return received;
    if (nowMs >= m_nextLookMs) {
        m_nextLookMs = nowMs + LookIntervalMs;
        LookWhoIsThere();
    }
    for (const TrafficEvent& event : m_feed.Take(nowMs))
        std::visit([this](const auto& told) { Apply(told); }, event);
    return {};
}

void TrafficSession::End()
{
    if (!m_peer)
        return;
    SendToOthers(m_hostId, MemberManners::Farewell());
    static_cast<void>(m_peer->Close()); // a failure is not news to someone who leaves
    m_peer.reset();
    for (const auto& [id, key] : m_keys)
        m_details.Forget(id);
    m_aircraft.clear();
    m_keys.clear();
    m_others.clear();
}

/// A failure is the session's, which the next look for messages meets.
void TrafficSession::Send(PlayerId from, PlayerId to, ByteSpan message)
{
    if (!message.empty())
        static_cast<void>(m_peer->Send(from, to, SendGuaranteed, message));
}

/// To the members of other programs, and to the host where it is watched: thousands of aircraft have nothing to say to
/// one another.
void TrafficSession::SendToOthers(PlayerId from, ByteSpan message)
{
    for (const auto& [id, other] : m_others)
        Send(from, id, message);
    if (m_options.HostIsMember)
        Send(from, m_hostId, message);
}
} // namespace corvane
