#include "net/sockets/PeerSockets.h"

#include <cerrno>
#include <random>

/// The ports that a peer takes: its own, and as a host those that enumerations go to.
namespace corvane::directplay {
#ifdef _WIN32
static constexpr int NoSuchAddress = WSAEADDRNOTAVAIL;
#else
static constexpr int NoSuchAddress = EADDRNOTAVAIL;
#endif

asio::error_code PeerSockets::OpenListener(Acceptor& acceptor, std::uint16_t port) const
{
    asio::error_code error;
    acceptor.Socket.open(asio::ip::tcp::v4(), error);
#ifndef _WIN32
    // Elsewhere this lets a second listener in; here it only ignores connections that are still dying.
    acceptor.Socket.set_option(asio::socket_base::reuse_address(true), error);
#endif
    acceptor.Socket.bind({asio::ip::address_v4(m_bindIp), port}, error);
    if (!error)
        acceptor.Socket.listen(asio::socket_base::max_listen_connections, error);
    if (error) {
        asio::error_code ignored;
        acceptor.Socket.close(ignored);
    }
    return error;
}

asio::error_code PeerSockets::OpenDatagrams(DatagramSocket& socket, std::uint32_t ip, std::uint16_t port, bool shared)
{
    asio::error_code error;
    socket.Socket.open(asio::ip::udp::v4(), error);
    socket.Socket.set_option(asio::socket_base::broadcast(true), error);
    if (shared)
        socket.Socket.set_option(asio::socket_base::reuse_address(true), error);
    socket.Socket.bind({asio::ip::address_v4(ip), port}, error);
    if (!error)
        socket.Socket.non_blocking(true, error);
    if (error) {
        asio::error_code ignored;
        socket.Socket.close(ignored);
    }
    return error;
}

/// Why none of the peer's own ports could be taken; error is the last port's.
Error PeerSockets::PortsFault(const char* protocol, asio::error_code error) const
{
    if (error.value() == NoSuchAddress)
        return Fail(IpText(m_bindIp), "is no address of this machine");
    const std::string range = std::to_string(m_options.FirstPort) + " to " + std::to_string(m_options.LastPort);
    const bool taken = error == asio::error::address_in_use;
    return Fail(IpText(m_bindIp), "no " + std::string(protocol) + " port from " + range +
                                      " can be opened: " + (taken ? "all are in use" : error.message()));
}

Result<void> PeerSockets::Open()
{
    m_streams = std::make_shared<Acceptor>(m_io, false);
    m_datagrams = std::make_shared<DatagramSocket>(m_io, false);
    std::uint32_t streamPort = m_options.FirstPort;
    asio::error_code error;
    while (streamPort <= m_options.LastPort &&
           (error = OpenListener(*m_streams, static_cast<std::uint16_t>(streamPort))))
        ++streamPort;
    if (error)
        return PortsFault("TCP", error);
    // Ports that firewalls let through hold for datagrams too. The stream's own number is as good as any.
    std::uint32_t datagramPort = streamPort;
    const std::uint32_t count = m_options.LastPort - m_options.FirstPort + 1U;
    std::uint32_t tried = 0;
    while (tried < count &&
           (error = OpenDatagrams(*m_datagrams, m_bindIp, static_cast<std::uint16_t>(datagramPort), false))) {
        datagramPort = m_options.FirstPort + (datagramPort - m_options.FirstPort + 1) % count;
        ++tried;
    }
    if (error)
        return PortsFault("UDP", error);
    PeerConfig config;
    config.Timers = m_options.Timers;
    config.StreamPort = static_cast<std::uint16_t>(streamPort);
    config.DatagramPort = static_cast<std::uint16_t>(datagramPort);
    config.PiecesByDatagram = m_options.PiecesByDatagram;
    std::random_device entropy;
    config.Seed = (std::uint64_t{entropy()} << 32) | entropy();
    m_machine = std::make_unique<PeerMachine>(config, *this);
    Accept(m_streams);
    Receive(m_datagrams);
    ScheduleTick();
    return {};
}

void PeerSockets::OpenEnumerationPorts()
{
    const SocketAddress address{m_bindIp, m_options.EnumerationPort};
    auto streams = std::make_shared<Acceptor>(m_io, true);
    auto datagrams = std::make_shared<DatagramSocket>(m_io, true);
    const asio::error_code noStreams = OpenListener(*streams, address.Port);
    const asio::error_code noDatagrams = OpenDatagrams(*datagrams, m_bindIp, address.Port, false);
    m_enumerationAddress = address;
    if (!noStreams)
        Accept(m_enumerationStreams = streams);
    if (!noDatagrams)
        Receive(m_enumerationDatagrams.emplace_back(datagrams));
    if (const asio::error_code error = noStreams ? noStreams : noDatagrams)
        m_enumerationAddress =
            Fail(AddressText(address),
                 "cannot be opened: " +
                     (error == asio::error::address_in_use ? "another host on this machine has it" : error.message()));
    if (m_bindIp == 0)
        return;
    // A socket of one address gets no broadcasts; one of the broadcast address does, where the system allows it.
    const std::uint32_t broadcast =
        IsLoopback(m_bindIp) ? 0x7FFFFFFF : ParseIp(m_options.BroadcastAddress).value_or(0xFFFFFFFF);
    auto broadcasts = std::make_shared<DatagramSocket>(m_io, true);
    if (!OpenDatagrams(*broadcasts, broadcast, address.Port, true))
        Receive(m_enumerationDatagrams.emplace_back(broadcasts));
}

void PeerSockets::CloseEnumerationPorts()
{
    asio::error_code ignored;
    if (m_enumerationStreams)
        m_enumerationStreams->Socket.close(ignored);
    for (const auto& socket : m_enumerationDatagrams)
        socket->Socket.close(ignored);
    m_enumerationStreams.reset();
    m_enumerationDatagrams.clear();
    m_enumerationAddress = Fail("enumeration", "this peer hosts no session");
}
} // namespace corvane::directplay
