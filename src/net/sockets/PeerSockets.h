#pragma once

#include "net/sockets/DirectPlayOptions.h"
#include "net/sockets/MessageQueue.h"
#include "net/sockets/StreamLinks.h"

#include <asio/ip/udp.hpp>
#include <asio/steady_timer.hpp>

#include <atomic>

namespace corvane::directplay {
/// All sockets of a peer, and the state machine that they feed. Lives on the network thread.
class PeerSockets final : public PeerOutput, public StreamOwner, public StreamLinks::Host {
public:
    /// Told of what the program's thread must learn.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual void OnRequestDone(Result<WireId> result) = 0;
        /// Before a message enters the queue, and after anything that may have changed the session.
        virtual void OnChanged(PeerMachine& machine) = 0;
    };

    PeerSockets(asio::io_context& io, const DirectPlayOptions& options, MessageQueue& queue, Listener& listener);

    /// Takes the peer's own ports.
    Result<void> Open();
    [[nodiscard]] PeerMachine& Machine() noexcept { return *m_machine; }
    [[nodiscard]] Millis Now() const;
    /// True once nothing waits to be sent any more.
    [[nodiscard]] bool AllSent() const;
    [[nodiscard]] bool Congested() const { return m_links.Congested(); }
    /// Reads again from those whose messages have been taken from the queue.
    void ResumeReading();
    /// Where enumerations are answered, or why they are not.
    [[nodiscard]] const Result<SocketAddress>& EnumerationAddress() const noexcept { return m_enumerationAddress; }

    void SendStream(const SocketAddress& machine, Bytes message) override;
    void SendStreamOnce(const SocketAddress& machine, Bytes message) override;
    void SendBack(ConnectionId connection, Bytes message) override;
    void SendDatagram(const SocketAddress& to, Bytes message) override;
    void CloseStream(const SocketAddress& machine) override;
    void DropStream(const SocketAddress& machine) override;
    void OpenEnumerationPorts() override;
    void CloseEnumerationPorts() override;
    void Deliver(WireId machine, WireId from, WireId to, ByteSpan content) override;
    void RequestDone(Result<WireId> result) override { m_listener.OnRequestDone(std::move(result)); }

private:
    using Clock = std::chrono::steady_clock;
    struct DatagramSocket {
        DatagramSocket(asio::io_context& io, bool enumeration) : Socket(io), Enumeration(enumeration) {}
        asio::ip::udp::socket Socket;
        asio::ip::udp::endpoint From;
        std::array<std::uint8_t, 65536> Buffer{};
        bool Enumeration;
    };
    struct Acceptor {
        Acceptor(asio::io_context& io, bool enumeration) : Socket(io), Enumeration(enumeration) {}
        asio::ip::tcp::acceptor Socket;
        bool Enumeration;
    };

    void OnStreamMessage(StreamConnection& connection, ByteSpan message) override;
    void OnStreamRead(StreamConnection& connection) override;
    void OnStreamEnd(StreamConnection& connection, std::optional<DropReason> reason) override;
    std::shared_ptr<StreamConnection> Adopt(asio::ip::tcp::socket socket, const SocketAddress& machine) override;
    std::shared_ptr<StreamConnection> IncomingFrom(const SocketAddress& machine) override;
    void OnLinkFailed(const SocketAddress& machine) override;

    std::shared_ptr<StreamConnection> Register(asio::ip::tcp::socket socket, const SocketAddress& opened,
                                               bool enumeration);
    void Accept(const std::shared_ptr<Acceptor>& acceptor);
    void AcceptLater(const std::shared_ptr<Acceptor>& acceptor);
    void OnAccepted(asio::ip::tcp::socket socket, bool enumeration);
    bool MakeRoom(std::uint32_t ip);
    void DismissFormerMembers();
    void Receive(const std::shared_ptr<DatagramSocket>& socket);
    [[nodiscard]] asio::error_code OpenListener(Acceptor& acceptor, std::uint16_t port) const;
    static asio::error_code OpenDatagrams(DatagramSocket& socket, std::uint32_t ip, std::uint16_t port, bool shared);
    [[nodiscard]] Error PortsFault(const char* protocol, asio::error_code error) const;
    void ScheduleTick();
    void Tick();
    void CloseIdle();

    asio::io_context& m_io;
    DirectPlayOptions m_options;
    std::uint32_t m_bindIp;
    MessageQueue& m_queue;
    Listener& m_listener;
    Clock::time_point m_start;
    asio::steady_timer m_timer;
    std::shared_ptr<Acceptor> m_streams;
    std::shared_ptr<DatagramSocket> m_datagrams;
    std::shared_ptr<Acceptor> m_enumerationStreams;
    std::vector<std::shared_ptr<DatagramSocket>> m_enumerationDatagrams;
    Result<SocketAddress> m_enumerationAddress;
    std::map<ConnectionId, std::shared_ptr<StreamConnection>> m_connections;
    ConnectionId m_nextConnection = 1;
    Clock::time_point m_lastDismissal;
    StreamLinks m_links;
    std::unique_ptr<PeerMachine> m_machine;

    bool m_fromDatagram = false;         ///< what is being delivered may be dropped
    std::optional<WireId> m_overflowing; ///< the machine whose messages have just filled its share
    std::vector<std::pair<std::weak_ptr<StreamConnection>, WireId>> m_pausedStreams;
};
} // namespace corvane::directplay
