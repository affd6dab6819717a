#pragma once

#include "core/Result.h"
#include "net/wire/WireRecords.h"

#include <optional>

namespace corvane::directplay {
/// Names a stream of the socket layer.
using ConnectionId = std::uint64_t;

/// Where a message on a stream came from.
struct StreamSource {
    ConnectionId Connection = 0;
    SocketAddress Remote;      ///< the other end of the connection
    std::uint32_t LocalIp = 0; ///< our own end
    SocketAddress Opened;      ///< the machine's announced address when we opened the connection; port 0 otherwise
    bool Enumeration = false;  ///< it came to the enumeration port
};

struct DatagramSource {
    SocketAddress Remote;
    bool Enumeration = false;
};

/// What the state machine asks of its surroundings. Nothing here may call back into the machine.
class PeerOutput {
public:
    virtual ~PeerOutput() = default;

    /// Guaranteed and in order, over the one connection that is kept to a machine's announced stream address.
    virtual void SendStream(const SocketAddress& machine, Bytes message) = 0;
    /// An answer to someone who is no member: no connection is kept for it, and none opened beyond a small number.
    virtual void SendStreamOnce(const SocketAddress& machine, Bytes message) = 0;
    /// Over a connection that is open already, if it still is.
    virtual void SendBack(ConnectionId connection, Bytes message) = 0;
    virtual void SendDatagram(const SocketAddress& to, Bytes message) = 0;
    /// Sends what waits for a machine and closes the connection to it.
    virtual void CloseStream(const SocketAddress& machine) = 0;
    /// Closes the connection to a machine that nothing more is to be said to, connected or not.
    virtual void DropStream(const SocketAddress& machine) = 0;
    /// This peer became a host, or ceased to be one.
    virtual void OpenEnumerationPorts() = 0;
    virtual void CloseEnumerationPorts() = 0;
    /// A message for the program. machine is the system player of the machine that sent it.
    virtual void Deliver(WireId machine, WireId from, WireId to, ByteSpan content) = 0;
    /// The request that the program waits for is done; the value is a new id, or 0.
    virtual void RequestDone(Result<WireId> result) = 0;
};

/// What a peer needs to know about its sockets, and its choices.
struct PeerConfig {
    PeerTimers Timers;
    std::uint16_t StreamPort = 0;   ///< of the own listener
    std::uint16_t DatagramPort = 0; ///< of the own datagram socket
    bool PiecesByDatagram = false;  ///< large messages that are not guaranteed: in pieces instead of over the stream
    std::uint64_t Seed = 0;         ///< of the random parts of new sessions
};
} // namespace corvane::directplay
