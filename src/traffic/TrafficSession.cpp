#include "traffic/TrafficSession.h"

#include "session/HostedSession.h"

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

Result<void> TrafficSession::Open(SessionPeerFactory& factory)
{
    auto peer = ConnectedPeer(factory, m_options.Address);
    if (!peer)
        return peer.error();
    m_peer = *std::move(peer);
    m_entry = DescribeHosted(m_options.SessionName, m_options.MaxPlayers, m_options.Password, m_options.MigrateHost);
    if (const auto created = CreateHosted(*m_peer, m_entry); !created)
        return created.error();
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
