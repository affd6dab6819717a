#include "net/sockets/PeerSockets.h"

#include <algorithm>
#include <utility>

namespace corvane::directplay {
// Accepted connections. Each member may have opened two: the one in use, and one whose end has not shown yet.
static constexpr std::size_t MaxStrangers = 64;
static constexpr std::size_t MaxStrangersPerSource = 16;
static constexpr std::size_t MaxMembers = 2 * MaxMachines;
static constexpr std::size_t MaxMembersPerSource = 2 * MaxMachinesPerSource;
static constexpr std::chrono::seconds StrangerPatience{30}; // for a whole message, and for the first of them

static SocketAddress AddressOf(const asio::ip::tcp::endpoint& endpoint)
{
    return {endpoint.address().is_v4() ? endpoint.address().to_v4().to_uint() : 0, endpoint.port()};
}

static LinkLimits LimitsOf(const DirectPlayOptions& options)
{
    LinkLimits limits;
    limits.Reconnect = options.Reconnect;
    limits.Retry = std::min(limits.Retry, std::max(options.Reconnect / 4, Millis{10}));
    limits.Linger = options.Linger;
    limits.MaxQueued = options.MaxUnsent;
    return limits;
}

PeerSockets::PeerSockets(asio::io_context& io, const DirectPlayOptions& options, MessageQueue& queue,
                         Listener& listener)
    : m_io(io),
      m_options(options),
      m_bindIp(ParseIp(options.BindAddress).value_or(0)),
      m_queue(queue),
      m_listener(listener),
      m_start(Clock::now()),
      m_timer(io),
      m_enumerationAddress(Fail("enumeration", "this peer hosts no session")),
      m_links(io, m_bindIp, LimitsOf(options), *this)
{
}

Millis PeerSockets::Now() const
{
    return std::chrono::duration_cast<Millis>(Clock::now() - m_start);
}

void PeerSockets::Accept(const std::shared_ptr<Acceptor>& acceptor)
{
    acceptor->Socket.async_accept([this, acceptor](asio::error_code error, asio::ip::tcp::socket socket) {
        if (!acceptor->Socket.is_open())
            return;
        if (error)
            return AcceptLater(acceptor);
        OnAccepted(std::move(socket), acceptor->Enumeration);
        Accept(acceptor);
    });
}

/// After a failure that may last, such as having no more descriptors.
void PeerSockets::AcceptLater(const std::shared_ptr<Acceptor>& acceptor)
{
    const auto timer = std::make_shared<asio::steady_timer>(m_io, std::chrono::milliseconds{100});
    timer->async_wait([this, acceptor, timer](asio::error_code) {
        if (acceptor->Socket.is_open())
            Accept(acceptor);
    });
}

void PeerSockets::OnAccepted(asio::ip::tcp::socket socket, bool enumeration)
{
    asio::error_code error;
    const SocketAddress remote = AddressOf(socket.remote_endpoint(error));
    if (error || !MakeRoom(remote.Ip))
        return;
    Register(std::move(socket), {}, enumeration)->Start();
}

/// Room for one more accepted connection: strangers give way to newcomers, members do not.
bool PeerSockets::MakeRoom(std::uint32_t ip)
{
    std::size_t strangers = 0;
    std::size_t strangersOfSource = 0;
    std::size_t members = 0;
    std::size_t membersOfSource = 0;
    std::shared_ptr<StreamConnection> oldest;
    for (const auto& [id, connection] : m_connections) {
        if (connection->IsClosed() || connection->Source().Opened.Port != 0)
            continue;
        const std::size_t sameSource = connection->Source().Remote.Ip == ip ? 1 : 0;
        (connection->IsMember ? members : strangers) += 1;
        (connection->IsMember ? membersOfSource : strangersOfSource) += sameSource;
        if (!connection->IsMember && !oldest)
            oldest = connection;
    }
    if (strangersOfSource >= MaxStrangersPerSource || membersOfSource >= MaxMembersPerSource || members >= MaxMembers)
        return false;
    if (strangers < MaxStrangers)
        return true;
    m_links.OnEnd(*oldest);
    oldest->Close();
    return true;
}

std::shared_ptr<StreamConnection> PeerSockets::Register(asio::ip::tcp::socket socket, const SocketAddress& opened,
                                                        bool enumeration)
{
    asio::error_code ignored;
    StreamSource source;
    source.Connection = m_nextConnection++;
    source.Remote = AddressOf(socket.remote_endpoint(ignored));
    source.LocalIp = AddressOf(socket.local_endpoint(ignored)).Ip;
    source.Opened = opened;
    source.Enumeration = enumeration;
    auto connection = std::make_shared<StreamConnection>(std::move(socket), source, *this);
    m_connections.emplace(source.Connection, connection);
    return connection;
}

std::shared_ptr<StreamConnection> PeerSockets::Adopt(asio::ip::tcp::socket socket, const SocketAddress& machine)
{
    auto connection = Register(std::move(socket), machine, false);
    connection->Start();
    return connection;
}

std::shared_ptr<StreamConnection> PeerSockets::IncomingFrom(const SocketAddress& machine)
{
    for (const auto& [id, connection] : m_connections) {
        const bool incoming = connection->Source().Opened.Port == 0 && !connection->Source().Enumeration;
        if (incoming && !connection->IsClosed() && connection->Source().Remote.Ip == machine.Ip &&
            connection->StatedPort == machine.Port)
            return connection;
    }
    return nullptr;
}

void PeerSockets::OnStreamMessage(StreamConnection& connection, ByteSpan message)
{
    const auto prefix = DecodePrefix(message);
    if (std::holds_alternative<Prefix>(prefix) && IsManagement(message))
        connection.StatedPort = std::get<Prefix>(prefix).Stated.Port;
    if (m_machine->OnStream(connection.Source(), message, Now()))
        connection.IsMember = true;
}

void PeerSockets::OnStreamRead(StreamConnection& connection)
{
    m_listener.OnChanged(*m_machine);
    if (const auto machine = std::exchange(m_overflowing, std::nullopt)) {
        connection.PauseReading();
        m_pausedStreams.emplace_back(connection.weak_from_this(), *machine);
    }
}

void PeerSockets::OnStreamEnd(StreamConnection& connection, std::optional<DropReason> reason)
{
    if (reason)
        m_machine->CountDrop(*reason);
    m_links.OnEnd(connection);
}

void PeerSockets::OnLinkFailed(const SocketAddress& machine)
{
    m_machine->OnStreamFailed(machine, Now());
    m_listener.OnChanged(*m_machine);
}

void PeerSockets::ResumeReading()
{
    std::erase_if(m_pausedStreams, [&](const auto& paused) {
        const auto connection = paused.first.lock();
        if (connection && !m_queue.HasRoom(paused.second))
            return false;
        if (connection)
            connection->ResumeReading();
        return true;
    });
}

void PeerSockets::Receive(const std::shared_ptr<DatagramSocket>& socket)
{
    socket->Socket.async_receive_from(
        asio::buffer(socket->Buffer), socket->From, [this, socket](asio::error_code error, std::size_t count) {
            if (!socket->Socket.is_open())
                return;
            if (!error) {
                const DatagramSource source{{socket->From.address().to_v4().to_uint(), socket->From.port()},
                                            socket->Enumeration};
                m_fromDatagram = true;
                m_machine->OnDatagram(source, ByteSpan(socket->Buffer).first(count), Now());
                m_fromDatagram = false;
                m_overflowing.reset();
                m_listener.OnChanged(*m_machine);
            }
            Receive(socket);
        });
}

void PeerSockets::SendStream(const SocketAddress& machine, Bytes message)
{
    m_links.Send(machine, std::move(message));
}

void PeerSockets::SendStreamOnce(const SocketAddress& machine, Bytes message)
{
    m_links.SendOnce(machine, std::move(message));
}

void PeerSockets::SendBack(ConnectionId connection, Bytes message)
{
    constexpr std::size_t MaxAnswers = 65536; // of a stranger that asks and does not read
    const auto at = m_connections.find(connection);
    if (at != m_connections.end() && at->second->QueuedBytes() < MaxAnswers)
        at->second->Send(std::move(message));
}

void PeerSockets::SendDatagram(const SocketAddress& to, Bytes message)
{
    asio::error_code lost; // as any datagram may be
    m_datagrams->Socket.send_to(asio::buffer(message), {asio::ip::address_v4(to.Ip), to.Port}, 0, lost);
}

void PeerSockets::CloseStream(const SocketAddress& machine)
{
    m_links.Close(machine);
}

void PeerSockets::DropStream(const SocketAddress& machine)
{
    m_links.Drop(machine);
}

void PeerSockets::Deliver(WireId machine, WireId from, WireId to, ByteSpan content)
{
    // The program asks for the sender's name when it meets the message: it must know the sender by then.
    m_listener.OnChanged(*m_machine);
    const bool own = machine == m_machine->OwnSystemPlayer();
    ReceivedMessage message{static_cast<PlayerId>(from), static_cast<PlayerId>(to),
                            Bytes(content.begin(), content.end())};
    if (!m_queue.Push(machine, std::move(message), !m_fromDatagram && !own))
        m_machine->CountDrop(DropReason::Flooding);
    else if (!own && m_queue.IsOver(machine))
        m_overflowing = machine;
}

void PeerSockets::ScheduleTick()
{
    constexpr Millis Period{20};
    m_timer.expires_after(Period);
    m_timer.async_wait([this](asio::error_code error) {
        if (error)
            return;
        Tick();
        ScheduleTick();
    });
}

void PeerSockets::Tick()
{
    m_machine->Tick(Now());
    m_links.Tick();
    CloseIdle();
    ResumeReading();
    m_listener.OnChanged(*m_machine);
}

/// Connections of machines that have left the session are strangers' again, and end when they stay idle.
void PeerSockets::DismissFormerMembers()
{
    for (const auto& [id, connection] : m_connections) {
        const StreamSource& source = connection->Source();
        if (!connection->IsMember || connection->StatedPort == 0 || source.Opened.Port != 0)
            continue;
        if (m_machine->Table().FindMachine(SocketAddress{source.Remote.Ip, connection->StatedPort}) == nullptr)
            connection->IsMember = false;
    }
}

void PeerSockets::CloseIdle()
{
    constexpr std::chrono::seconds DismissalPeriod{2};
    const auto now = Clock::now();
    if (now - m_lastDismissal >= DismissalPeriod) {
        m_lastDismissal = now;
        DismissFormerMembers();
    }
    for (const auto& [id, connection] : m_connections) {
        if (connection->IsClosed())
            continue;
        const auto unfinished = connection->UnfinishedSince();
        const bool slow = unfinished && now - *unfinished > StrangerPatience;
        const bool opened = connection->Source().Opened.Port != 0;
        const bool idle = !opened && !connection->IsMember && now - connection->LastRead() > StrangerPatience;
        const bool lingering = connection->IsClosing() && now - connection->LastProgress() > m_options.Linger;
        if (!slow && !idle && !lingering)
            continue;
        connection->Close();
        if (!lingering)
            m_links.OnEnd(*connection);
        if (slow)
            m_machine->CountDrop(DropReason::Truncated);
    }
    std::erase_if(m_connections, [&](const auto& entry) {
        if (entry.second->IsClosed())
            m_machine->OnStreamClosed(entry.first);
        return entry.second->IsClosed();
    });
}

bool PeerSockets::AllSent() const
{
    return m_links.Empty() && std::ranges::none_of(m_connections, [](const auto& entry) {
               return entry.second->IsClosing() && !entry.second->IsClosed();
           });
}
} // namespace corvane::directplay
