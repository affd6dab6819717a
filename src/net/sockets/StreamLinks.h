#pragma once

#include "net/sockets/StreamConnection.h"

#include <map>

namespace corvane::directplay {
/// How connections behave when they cannot be opened, break, or nobody reads what they carry.
struct LinkLimits {
    Millis Connect{5000};             ///< for one attempt
    Millis Retry{500};                ///< between attempts
    Millis Reconnect{5000};           ///< a machine is gone when it cannot be reached for this long, twice
    Millis StrangerIdle{5000};        ///< an answer's connection lives this long
    Millis Linger{1000};              ///< to send what waits when a connection is closed
    Millis FailedPause{10000};        ///< no answers to an address that could not be reached
    std::size_t MaxQueued = 16777216; ///< bytes waiting for one machine
    std::size_t HighWater = 2097152;  ///< bytes from which the sender had better wait
    Millis Patience{5000};            ///< how long a sender waits for one that has stopped reading
    std::size_t MaxStrangers = 32;    ///< answers' connections at a time
};

/// The one outgoing connection to each machine: opened on the first message, opened again when it breaks, replaced by
/// a connection that the machine itself has opened when its address cannot be reached.
class StreamLinks {
public:
    /// What the links need from the rest of the sockets.
    class Host {
    public:
        virtual ~Host() = default;
        virtual std::shared_ptr<StreamConnection> Adopt(asio::ip::tcp::socket socket, const SocketAddress& machine) = 0;
        /// A live connection that this machine has opened to us, or null.
        virtual std::shared_ptr<StreamConnection> IncomingFrom(const SocketAddress& machine) = 0;
        virtual void OnLinkFailed(const SocketAddress& machine) = 0;
    };

    StreamLinks(asio::io_context& io, std::uint32_t bindIp, const LinkLimits& limits, Host& host);

    void Send(const SocketAddress& machine, Bytes message);
    void SendOnce(const SocketAddress& machine, Bytes message);
    /// Sends what waits and closes.
    void Close(const SocketAddress& machine);
    /// Closes at once, connected or not.
    void Drop(const SocketAddress& machine);
    /// A connection that a link uses has ended.
    void OnEnd(const StreamConnection& connection);
    void Tick();

    [[nodiscard]] bool Empty() const noexcept { return m_links.empty(); }
    /// True while a machine that does read has a lot waiting for it, or one that has paused half of what it may.
    [[nodiscard]] bool Congested() const;

private:
    using Clock = std::chrono::steady_clock;
    struct Link {
        std::shared_ptr<StreamConnection> Connection;
        std::shared_ptr<asio::ip::tcp::socket> Connecting;
        std::deque<Bytes> Waiting;
        std::size_t WaitingBytes = 0;
        bool Once = false;
        bool Probe = false;                       ///< reopen although nothing waits, to see whether the machine lives
        bool OpenedByProbe = false;               ///< and nothing has been sent since
        std::optional<Clock::time_point> CloseAt; ///< at the latest
        bool Closing = false;
        Clock::time_point RetryAt;
        Clock::time_point AttemptEnds;
        std::optional<Clock::time_point> FailingSince;
    };

    Link& Find(const SocketAddress& machine);
    void Push(Link& link, Bytes message);
    void Connect(const SocketAddress& machine, Link& link);
    void OnConnected(const SocketAddress& machine, const std::shared_ptr<asio::ip::tcp::socket>& socket,
                     asio::error_code error);
    void OnAttemptFailed(const SocketAddress& machine, Link& link);
    void Attach(Link& link, std::shared_ptr<StreamConnection> connection);
    [[nodiscard]] bool IsOver(const Link& link, Clock::time_point now) const;
    static void Abandon(Link& link);

    asio::io_context& m_io;
    std::uint32_t m_bindIp;
    LinkLimits m_limits;
    Host& m_host;
    std::map<SocketAddress, Link> m_links;
    std::map<SocketAddress, Clock::time_point> m_failed; ///< strangers that could not be reached
};
} // namespace corvane::directplay
