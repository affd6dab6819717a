#include "app/ServedNetwork.h"

#include "session/ForwardingPeer.h"

#include <utility>

namespace corvane {
namespace {
/// A peer on the network under its owner's own connection type.
class ServedPeer final : public ForwardingPeer {
public:
    using ForwardingPeer::ForwardingPeer;

    Result<void> InitializeConnection(std::string_view /*address*/) override
    {
        return ForwardingPeer::InitializeConnection(DirectPlayConnectionAddress);
    }
};
} // namespace

ServedNetwork::ServedNetwork(DirectPlayOptions options) : m_network(std::move(options))
{
    m_network.Options.MustBeFound = true;
}

void ServedNetwork::ServeAt(std::string_view address)
{
    constexpr std::string_view EveryAddress = "0.0.0.0";
    m_network.Options.BindAddress = address;
    m_network.Options.HostAddress = address == EveryAddress ? "127.0.0.1" : address;
}

Result<std::unique_ptr<SessionPeer>> ServedNetwork::DirectPlayCreate()
{
    auto peer = m_network.DirectPlayCreate();
    if (!peer)
        return peer;
    return std::unique_ptr<SessionPeer>(std::make_unique<ServedPeer>(std::shared_ptr<SessionPeer>(*std::move(peer))));
}

Result<void> TryToServeAt(std::string_view address)
{
    ServedNetwork network;
    network.ServeAt(address);
    const auto peer = network.DirectPlayCreate();
    if (!peer)
        return peer.error();
    if (Result<void> initialized = (*peer)->InitializeConnection({}); !initialized)
        return initialized;
    const SessionEntry session{.Name = "Corvane", .MaxPlayers = 1, .InstanceGuid = {}, .Flags = {}, .Password = {}};
    if (Result<void> opened = (*peer)->Open(session, OpenCreate); !opened)
        return opened;
    return (*peer)->Close();
}
} // namespace corvane
