#pragma once

#include "net/machine/PeerMachine.h"
#include "net/wire/StreamFramer.h"

#include <asio/ip/tcp.hpp>

#include <deque>
#include <memory>

namespace corvane::directplay {
class StreamConnection;

/// Told what happens on a connection; on the network thread.
class StreamOwner {
public:
    virtual ~StreamOwner() = default;
    virtual void OnStreamMessage(StreamConnection& connection, ByteSpan message) = 0;
    /// Bytes were read and all their messages handed over: the moment to pause reading.
    virtual void OnStreamRead(StreamConnection& connection) = 0;
    /// Once: the connection has ended, for whatever reason but Close().
    virtual void OnStreamEnd(StreamConnection& connection, std::optional<DropReason> reason) = 0;
};

/// One open TCP connection: cuts what arrives into messages, and sends messages in order, many in one write.
class StreamConnection : public std::enable_shared_from_this<StreamConnection> {
public:
    StreamConnection(asio::ip::tcp::socket socket, const StreamSource& source, StreamOwner& owner);

    void Start();
    void Send(Bytes message);
    /// Sends what waits, then says goodbye and ends with the other side. Nothing more is handed over.
    void CloseWhenSent();
    void Close();
    void PauseReading() { m_paused = true; }
    void ResumeReading();
    /// The messages whose sending has not been completed.
    std::deque<Bytes> TakeUnsent();

    [[nodiscard]] const StreamSource& Source() const noexcept { return m_source; }
    [[nodiscard]] std::size_t QueuedBytes() const noexcept { return m_queuedBytes; }
    [[nodiscard]] bool IsClosing() const noexcept { return m_closing; }
    [[nodiscard]] bool IsClosed() const noexcept { return m_closed; }
    /// When the unfinished message that has arrived began; nothing while there is none.
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> UnfinishedSince() const;
    [[nodiscard]] std::chrono::steady_clock::time_point LastProgress() const noexcept { return m_lastProgress; }
    [[nodiscard]] std::chrono::steady_clock::time_point LastRead() const noexcept { return m_lastRead; }

    bool IsMember = false;        ///< it has carried a message of a member
    std::uint16_t StatedPort = 0; ///< the stream port that the other end states in its messages

private:
    void Read();
    void OnRead(std::size_t count);
    void Write();
    void OnWritten(std::size_t count, bool failed);
    void End(std::optional<DropReason> reason);

    asio::ip::tcp::socket m_socket;
    StreamSource m_source;
    StreamOwner& m_owner;
    StreamFramer m_framer;
    std::array<std::uint8_t, 65536> m_buffer{};
    std::deque<Bytes> m_queue;
    std::size_t m_queuedBytes = 0;
    std::size_t m_inFlight = 0; ///< messages of the running write, at the queue's front
    bool m_reading = false;
    bool m_paused = false;
    bool m_closing = false;
    bool m_saidGoodbye = false;
    bool m_closed = false;
    std::chrono::steady_clock::time_point m_lastProgress;
    std::chrono::steady_clock::time_point m_lastRead;
    std::chrono::steady_clock::time_point m_messageStart;
};
} // namespace corvane::directplay
