#pragma once

#include "net/wire/Protocol.h"

#include <functional>
#include <optional>
#include <string>

namespace corvane {
/// How a DirectPlay peer uses the network. The defaults are the protocol's.
struct DirectPlayOptions {
    std::string BindAddress; ///< of all sockets, such as "127.0.0.2"; empty: any
    std::uint16_t EnumerationPort = 47624;
    std::uint16_t FirstPort = 2300; ///< the peer takes its own ports from this range
    std::uint16_t LastPort = 2400;
    std::string HostAddress; ///< name or address that sessions are looked for at; empty: broadcast
    /// Asks the user for HostAddress, on the program's thread, when sessions are looked for and none is set; nothing
    /// leaves the operation, which then fails.
    std::function<std::optional<std::string>()> AskHostAddress;
    std::string BroadcastAddress = "255.255.255.255";
    std::string ApplicationGuid; ///< of sessions that this peer creates; empty: none
    /// A session that others cannot look for, because the enumeration port is taken, is not created. Otherwise machines
    /// that know it can still come in.
    bool MustBeFound = false;
    directplay::PeerTimers Timers;
    directplay::Millis Reconnect{5000}; ///< a machine is gone when it cannot be reached for this long, twice
    directplay::Millis Linger{1000};    ///< Close() takes no longer
    std::size_t QueueShare = 33554432;  ///< bytes that one machine's messages may take before it has to wait
    std::size_t MaxUnsent = 16777216;   ///< bytes that may wait for one machine before it counts as gone
    /// Large messages that are not guaranteed go as datagrams in pieces, not over the stream.
    bool PiecesByDatagram = false;
    /// Called on the program's thread about 20 times a second while an operation waits; false leaves the operation,
    /// which then fails. It must not use the peer.
    std::function<bool()> WhileWaiting;
};
} // namespace corvane
