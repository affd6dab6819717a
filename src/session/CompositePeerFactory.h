#pragma once

#include "session/ConnectionProvider.h"

#include <vector>

namespace corvane {
/// Makes peers that list every provider's connection type, in the order given, and become a peer of one provider when
/// InitializeConnection names its address. Every other operation before that fails.
///
/// The providers must outlive the factory and its peers.
class CompositePeerFactory final : public SessionPeerFactory {
public:
    explicit CompositePeerFactory(std::vector<ConnectionProvider*> providers) : m_providers(std::move(providers)) {}

    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

private:
    std::vector<ConnectionProvider*> m_providers;
};
} // namespace corvane
