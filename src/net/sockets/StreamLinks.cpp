#include "net/sockets/StreamLinks.h"

#include <algorithm>
#include <utility>

namespace corvane::directplay {
StreamLinks::StreamLinks(asio::io_context& io, std::uint32_t bindIp, const LinkLimits& limits, Host& host)
    : m_io(io), m_bindIp(bindIp), m_limits(limits), m_host(host)
{
}

StreamLinks::Link& StreamLinks::Find(const SocketAddress& machine)
{
    return m_links[machine];
}

void StreamLinks::Push(Link& link, Bytes message)
{
    link.OpenedByProbe = false;
    if (link.Connection)
        return link.Connection->Send(std::move(message));
    link.WaitingBytes += message.size();
    link.Waiting.push_back(std::move(message));
}

void StreamLinks::Send(const SocketAddress& machine, Bytes message)
{
    Link& link = Find(machine);
    link.Once = false;
    link.Closing = false;
    link.CloseAt.reset();
    Push(link, std::move(message));
    if (!link.Connection && !link.Connecting && !link.FailingSince)
        Connect(machine, link);
}

void StreamLinks::SendOnce(const SocketAddress& machine, Bytes message)
{
    const auto now = Clock::now();
    if (!m_links.contains(machine)) {
        const auto strangers = std::ranges::count_if(m_links, [](const auto& one) { return one.second.Once; });
        if (m_failed.contains(machine) || static_cast<std::size_t>(strangers) >= m_limits.MaxStrangers)
            return;
        m_links[machine].Once = true;
    }
    Link& link = Find(machine);
    if (link.Once || link.Closing)
        link.CloseAt = now + m_limits.StrangerIdle;
    link.Closing = false;
    Push(link, std::move(message));
    if (!link.Connection && !link.Connecting && !link.FailingSince)
        Connect(machine, link);
}

void StreamLinks::Close(const SocketAddress& machine)
{
    const auto at = m_links.find(machine);
    if (at == m_links.end())
        return;
    at->second.Closing = true;
    at->second.CloseAt = Clock::now() + m_limits.Linger;
}

void StreamLinks::Drop(const SocketAddress& machine)
{
    const auto at = m_links.find(machine);
    if (at == m_links.end())
        return;
    const auto connection = at->second.Connection;
    if (connection && connection->QueuedBytes() > 0)
        return Close(machine); // it can be reached: what is on its way arrives
    Abandon(at->second);
    m_links.erase(at);
}

void StreamLinks::Connect(const SocketAddress& machine, Link& link)
{
    link.RetryAt = Clock::now() + m_limits.Retry;
    link.AttemptEnds = Clock::now() + m_limits.Connect;
    auto socket = std::make_shared<asio::ip::tcp::socket>(m_io);
    asio::error_code error;
    socket->open(asio::ip::tcp::v4(), error);
    if (!error && m_bindIp != 0)
        socket->bind({asio::ip::address_v4(m_bindIp), 0}, error);
    if (error)
        return OnAttemptFailed(machine, link);
    link.Connecting = socket;
    const asio::ip::tcp::endpoint to(asio::ip::address_v4(machine.Ip), machine.Port);
    socket->async_connect(to,
                          [this, machine, socket](asio::error_code failed) { OnConnected(machine, socket, failed); });
}

void StreamLinks::OnConnected(const SocketAddress& machine, const std::shared_ptr<asio::ip::tcp::socket>& socket,
                              asio::error_code error)
{
    const auto at = m_links.find(machine);
    if (at == m_links.end() || at->second.Connecting != socket)
        return; // given up meanwhile
    at->second.Connecting.reset();
    if (error)
        return OnAttemptFailed(machine, at->second);
    Attach(at->second, m_host.Adopt(std::move(*socket), machine));
}

void StreamLinks::Attach(Link& link, std::shared_ptr<StreamConnection> connection)
{
    link.Connection = std::move(connection);
    link.FailingSince.reset();
    link.OpenedByProbe = link.Waiting.empty();
    link.Probe = false;
    link.WaitingBytes = 0;
    for (Bytes& message : std::exchange(link.Waiting, {}))
        link.Connection->Send(std::move(message));
}

void StreamLinks::OnAttemptFailed(const SocketAddress& machine, Link& link)
{
    if (!link.FailingSince)
        link.FailingSince = Clock::now();
    if (auto incoming = m_host.IncomingFrom(machine))
        Attach(link, std::move(incoming));
}

void StreamLinks::OnEnd(const StreamConnection& connection)
{
    for (auto& [machine, link] : m_links) {
        if (link.Connection.get() != &connection)
            continue;
        std::deque<Bytes> unsent = link.Connection->TakeUnsent();
        unsent.insert(unsent.end(), std::make_move_iterator(link.Waiting.begin()),
                      std::make_move_iterator(link.Waiting.end()));
        link.Waiting = std::move(unsent);
        link.WaitingBytes = 0;
        for (const Bytes& message : link.Waiting)
            link.WaitingBytes += message.size();
        link.Connection.reset();
        // Some machines close a connection whenever they are done with it: one reopening shows that they live.
        link.Probe = !link.Once && !link.Closing && !link.OpenedByProbe;
        link.RetryAt = Clock::now();
    }
}

void StreamLinks::Abandon(Link& link)
{
    asio::error_code ignored;
    if (link.Connecting)
        link.Connecting->close(ignored);
    // A connection that the machine has opened is not this link's to close.
    if (link.Connection && link.Connection->Source().Opened.Port != 0)
        link.Connection->CloseWhenSent();
}

bool StreamLinks::IsOver(const Link& link, Clock::time_point now) const
{
    const bool idle = link.Waiting.empty() && (!link.Connection || link.Connection->QueuedBytes() == 0);
    if (link.Closing && idle)
        return true;
    return link.CloseAt && now >= *link.CloseAt;
}

void StreamLinks::Tick()
{
    const auto now = Clock::now();
    std::erase_if(m_failed, [&](const auto& one) { return now >= one.second; });
    std::vector<SocketAddress> failed;
    for (auto& [machine, link] : m_links) {
        if (link.Connecting && now >= link.AttemptEnds) {
            asio::error_code ignored;
            std::exchange(link.Connecting, nullptr)->close(ignored);
            OnAttemptFailed(machine, link);
        }
        const std::size_t queued = link.WaitingBytes + (link.Connection ? link.Connection->QueuedBytes() : 0);
        const bool unreachable = link.FailingSince && now - *link.FailingSince >= 2 * m_limits.Reconnect;
        if (queued > m_limits.MaxQueued || unreachable || (link.Once && link.FailingSince))
            failed.push_back(machine);
        else if (!link.Connection && !link.Connecting && (!link.Waiting.empty() || link.Probe) && now >= link.RetryAt)
            Connect(machine, link);
    }
    for (auto at = m_links.begin(); at != m_links.end();) {
        if (!IsOver(at->second, now)) {
            ++at;
            continue;
        }
        Abandon(at->second);
        at = m_links.erase(at);
    }
    constexpr std::size_t MaxRemembered = 256;
    for (const SocketAddress& machine : failed) {
        const auto at = m_links.find(machine);
        if (at == m_links.end())
            continue;
        if (at->second.Once && m_failed.size() < MaxRemembered)
            m_failed[machine] = now + m_limits.FailedPause;
        if (at->second.Connection)
            at->second.Connection->Close();
        Abandon(at->second);
        m_links.erase(at);
        m_host.OnLinkFailed(machine);
    }
}

bool StreamLinks::Congested() const
{
    constexpr std::chrono::milliseconds Stalled{500};
    const auto now = Clock::now();
    return std::ranges::any_of(m_links, [&](const auto& one) {
        const auto& connection = one.second.Connection;
        if (!connection || connection->QueuedBytes() <= m_limits.HighWater)
            return false;
        const auto idle = now - connection->LastProgress();
        return idle < Stalled || (idle < m_limits.Patience && connection->QueuedBytes() > m_limits.MaxQueued / 2);
    });
}
} // namespace corvane::directplay
