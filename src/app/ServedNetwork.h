#pragma once

#include "net/DirectPlayPeer.h"

#include <memory>
#include <string_view>

namespace corvane {
/// The network as a place of this program's own sessions, which other machines can join: the host's peer and the one by
/// which the program joins its own session meet at an address of this machine.
class ServedNetwork final : public SessionPeerFactory {
public:
    /// options  of the peers; their addresses follow from ServeAt
    explicit ServedNetwork(DirectPlayOptions options = {});

    /// Peers made from now on are at an address of this machine; "0.0.0.0" stands for all of its addresses.
    void ServeAt(std::string_view address);
    /// A peer that takes any connection's address for its own.
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

private:
    DirectPlayProvider m_network;
};

/// Whether a session can be served at an address, by opening one there for a moment. An Error says what keeps it from
/// that: it is no address of this machine, or another host has the port.
Result<void> TryToServeAt(std::string_view address);
} // namespace corvane
