#include "session/CompositePeerFactory.h"

#include "session/ForwardingPeer.h"

namespace corvane {
namespace {
/// Its target is the chosen provider's peer.
class CompositePeer final : public ForwardingPeer {
public:
    explicit CompositePeer(std::vector<ConnectionProvider*> providers) : m_providers(std::move(providers)) {}

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override
    {
        std::vector<ConnectionEntry> entries;
        for (const ConnectionProvider* provider : m_providers)
            entries.push_back({provider->Name(), provider->Address()});
        return entries;
    }

    Result<void> InitializeConnection(std::string_view address) override
    {
        if (Target())
            return Fail("InitializeConnection", "a connection is initialized already");
        for (ConnectionProvider* provider : m_providers) {
            if (provider->Address() != address)
                continue;
            auto peer = provider->DirectPlayCreate();
            if (!peer)
                return peer.error();
            if (auto initialized = (*peer)->InitializeConnection(address); !initialized)
                return initialized;
            SetTarget(*std::move(peer));
            return {};
        }
        return Fail("InitializeConnection", "there is no connection type \"" + std::string(address) + "\"");
    }

private:
    std::vector<ConnectionProvider*> m_providers;
};
} // namespace

Result<std::unique_ptr<SessionPeer>> CompositePeerFactory::DirectPlayCreate()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<CompositePeer>(m_providers));
}
} // namespace corvane
