#include "app/PracticeProvider.h"

#include "session/ForwardingPeer.h"

namespace corvane {
namespace {
/// A peer on the network under the practice session's own connection type.
class NetworkPracticePeer final : public ForwardingPeer {
public:
    using ForwardingPeer::ForwardingPeer;

    Result<void> InitializeConnection(std::string_view /*address*/) override
    {
        return ForwardingPeer::InitializeConnection(DirectPlayConnectionAddress);
    }
};
} // namespace

void PracticeProvider::ServeAt(std::string_view address)
{
    constexpr std::string_view EveryAddress = "0.0.0.0";
    m_onNetwork = !address.empty();
    m_network.Options.BindAddress = address;
    m_network.Options.HostAddress = address == EveryAddress ? "127.0.0.1" : address;
}

Result<std::unique_ptr<SessionPeer>> PracticeProvider::DirectPlayCreate()
{
    if (!m_onNetwork)
        return m_memory.DirectPlayCreate();
    auto peer = m_network.DirectPlayCreate();
    if (!peer)
        return peer;
    return std::unique_ptr<SessionPeer>(
        std::make_unique<NetworkPracticePeer>(std::shared_ptr<SessionPeer>(*std::move(peer))));
}
} // namespace corvane
